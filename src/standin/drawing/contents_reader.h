#pragma once

#include "standin/drawing/drawing_file.h"
#include "standin/drawing/xml_part.h"

namespace tarncom32::standin::drawing {

/// What the readers of one drawing's parts fill together.
struct Building {
    Arena& arena;
    TextPool& pool;
    const Limits& limits;
    std::size_t shapeCount = 0; ///< shapes read so far, in all parts
};

/// Appends to a list that is being collected. What lies in such lists counts against the drawing's memory as well, so
/// that a sheet of endless rows is noticed before its end. Raises ArenaFull then.
template <typename T>
void push(std::vector<T>& list, T item, const Building& building) {
    if (list.size() >= building.arena.available() / sizeof(T)) throw ArenaFull{};
    list.push_back(item);
}

/// Takes an attribute that any sheet can have (names, unique id, styles). False when the name is none of them.
bool readSheetAttribute(XmlPart& xml, Building& building, Sheet& sheet, std::string_view name, std::string_view value);

/// Reads the current element's cells and sections into `sheet`. The attributes are the caller's.
void readSheet(XmlPart& xml, Building& building, Sheet& sheet);

/// Reads the shapes of a page or master part, whose root element is current, and finishes the part.
[[nodiscard]] Contents readContents(XmlPart& xml, Building& building);

/// True for the texts that stand for true in a Boolean attribute.
[[nodiscard]] bool isTrue(std::string_view value) noexcept;

} // namespace tarncom32::standin::drawing
