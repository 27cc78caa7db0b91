#include "standin/drawing/names.h"

namespace tarncom32::standin::drawing {

namespace {

std::u16string withId(std::u16string_view stem, std::uint32_t id) {
    std::u16string name(stem);
    name.push_back(u'.');
    for (const char digit : std::to_string(id))
        name.push_back(static_cast<char16_t>(digit));
    return name;
}

} // namespace

std::u16string nameId(std::uint32_t id) {
    return withId(u"Sheet", id);
}

std::u16string defaultName(std::uint32_t id, std::u16string_view masterName) {
    return masterName.empty() ? nameId(id) : withId(masterName, id);
}

std::u16string_view withoutFinalBreak(std::u16string_view text) noexcept {
    if (text.ends_with(u'\n')) text.remove_suffix(1);
    if (text.ends_with(u'\r')) text.remove_suffix(1);
    return text;
}

} // namespace tarncom32::standin::drawing
