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

std::u16string nameOf(const DrawingFile& file, const Shape& shape, Text own, Text other, Text Master::*masterName) {
    if (!own.empty()) return std::u16string(own.view());
    if (!other.empty()) return std::u16string(other.view());
    const Master* master = file.master(shape.master);
    return defaultName(shape.id, master == nullptr ? std::u16string_view{} : (master->*masterName).view());
}

} // namespace

std::u16string nameId(std::uint32_t id) {
    return withId(u"Sheet", id);
}

std::u16string defaultName(std::uint32_t id, std::u16string_view masterName) {
    return masterName.empty() ? nameId(id) : withId(masterName, id);
}

std::u16string localName(const DrawingFile& file, const Shape& shape) {
    return nameOf(file, shape, shape.sheet.name, shape.sheet.nameU, &Master::name);
}

std::u16string universalName(const DrawingFile& file, const Shape& shape) {
    return nameOf(file, shape, shape.sheet.nameU, shape.sheet.name, &Master::nameU);
}

Prototype prototypeOf(const DrawingFile& file, const Shape& shape, const Master* enclosing) {
    if (const Master* own = file.master(shape.master); own != nullptr) return {own->top(), own};
    if (enclosing == nullptr || shape.masterShape == noId) return {nullptr, enclosing};
    const Shape* found = enclosing->contents.find(shape.masterShape);
    return {found, enclosing};
}

std::u16string_view withoutFinalBreak(std::u16string_view text) noexcept {
    if (text.ends_with(u'\n')) text.remove_suffix(1);
    if (text.ends_with(u'\r')) text.remove_suffix(1);
    return text;
}

} // namespace tarncom32::standin::drawing
