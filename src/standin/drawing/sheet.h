#pragma once

#include "standin/drawing/text_pool.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace tarncom32::standin::drawing {

/// Stands for an id, index or reference that the file does not give.
inline constexpr std::uint32_t noId = 0xFFFFFFFFu;

/// A cell as the file has it; attributes that are not there are absent texts.
struct Cell {
    Text name;    ///< universal name without its section: "PinX", or "Value" in a row
    Text value;   ///< V, the last result: a number in internal units, or plain text
    Text unit;    ///< U: "IN", "STR", "BOOL" ...
    Text formula; ///< F without "="; "Inh" inherited, "No Formula" deleted locally, absent for a constant
    Text error;   ///< E, the error's text; `value` is then the last good one
};

/// A row of a section.
struct Row {
    Text name;                   ///< N, the universal name ("Row_1" in User.Row_1); absent in rows without names
    Text localName;              ///< LocalName; absent when it is the universal one
    Text type;                   ///< T: "LineTo", "MoveTo" ... in geometry
    std::uint32_t index = noId;  ///< IX
    bool deleted = false;        ///< Del: the row is inherited and was deleted here
    std::span<const Cell> cells; ///< in file order
};

/// A section of a sheet.
struct Section {
    Text name;                   ///< N as the file has it: "User", "Property", "Actions", "Geometry" ...
    std::uint32_t index = noId;  ///< IX, in sections that come several times
    bool deleted = false;        ///< Del: the section is inherited and was deleted here
    std::span<const Cell> cells; ///< cells of the section itself, as NoFill in geometry
    std::span<const Row> rows;   ///< in file order
};

/// What the document, a style, a page, a master and a shape have alike: names, styles, cells and sections. Nothing is
/// inherited here: what is absent is not in this element of the file.
struct Sheet {
    Text name;                         ///< local name
    Text nameU;                        ///< universal name
    Text uniqueId;                     ///< "{...}"
    std::uint32_t lineStyle = noId;    ///< the id of a StyleSheet, not its position
    std::uint32_t fillStyle = noId;    ///< likewise
    std::uint32_t textStyle = noId;    ///< likewise
    bool customName = false;           ///< the local name was given by somebody, it is not Visio's default
    bool customNameU = false;          ///< likewise the universal name
    std::span<const Cell> cells;       ///< cells outside sections, in file order
    std::span<const Section> sections; ///< in file order
};

} // namespace tarncom32::standin::drawing
