#include "platform/portable/file_filters.h"

namespace tarncom32::platform::portable {

using automation::String;
using automation::StringView;

namespace {

// The text up to the separator, which goes from `rest` with it.
StringView takePiece(StringView& rest, char16_t separator) {
    const std::size_t end = rest.find(separator);
    const StringView piece = rest.substr(0, end);
    rest = end == StringView::npos ? StringView() : rest.substr(end + 1);
    return piece;
}

// Both are in upper case. Linear in the name for each star: after a mismatch the last star takes one more character.
bool matches(StringView pattern, StringView name) {
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = StringView::npos;
    std::size_t starName = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            starName = n;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != StringView::npos) {
            p = star + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == StringView::npos;
}

} // namespace

std::vector<FileFilter> filtersIn(StringView text) {
    std::vector<FileFilter> filters;
    while (!text.empty()) {
        const StringView description = takePiece(text, u'\0');
        const StringView patterns = takePiece(text, u'\0');
        if (description.empty() || patterns.empty()) break;
        filters.push_back({String(description), String(patterns)});
    }
    return filters;
}

bool fits(StringView patterns, StringView name) {
    if (patterns.empty()) return true;
    const String folded = automation::toUpper(name);
    while (!patterns.empty()) {
        const StringView pattern = automation::trim(takePiece(patterns, u';'));
        if (pattern == u"*.*" || matches(automation::toUpper(pattern), folded)) return true;
    }
    return false;
}

String extensionNamed(StringView defaultExtension) {
    StringView name = automation::trim(takePiece(defaultExtension, u';'));
    if (name.starts_with(u'*')) name.remove_prefix(1);
    if (name.starts_with(u'.')) name.remove_prefix(1);
    return name.empty() || name.find_first_of(u"*?\\/:") != StringView::npos ? String() : u"." + String(name);
}

} // namespace tarncom32::platform::portable
