#include "platform/portable/component_names.h"

namespace tarncom32::platform::portable {

using automation::StringView;

StringView lastComponent(StringView path) {
    if (path.size() >= 2 && path[1] == u':') path.remove_prefix(2);
    while (path.ends_with(u'\\'))
        path.remove_suffix(1);
    const std::size_t separator = path.rfind(u'\\');
    return separator == StringView::npos ? path : path.substr(separator + 1);
}

StringView extensionOf(StringView path) {
    const StringView name = lastComponent(path);
    const std::size_t dot = name.rfind(u'.');
    return dot == StringView::npos ? StringView() : name.substr(dot + 1);
}

} // namespace tarncom32::platform::portable
