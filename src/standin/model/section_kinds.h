#pragma once

#include "standin/forward.h"

#include <cstdint>
#include <span>

namespace tarncom32::standin {

/// A section whose rows have names.
struct SectionKind {
    std::int16_t index;                  ///< Visio's section constant: 242 for user cells ...
    StringView fileName;                 ///< its name in files: "Property"
    StringView prefix;                   ///< its name in cell names: "Prop"
    std::span<const StringView> columns; ///< the cells of a row; the first is the one that the row's name alone means
};

/// The section of a constant, of a prefix of a cell name (without regard to case); null when it has no named rows or
/// is not kept here.
const SectionKind* sectionOf(std::int16_t index);
const SectionKind* sectionOf(StringView prefix);

/// Whether every shape (page, document) has the cell, written down anywhere or not.
bool isStandardCell(StringView name, bool page);

} // namespace tarncom32::standin
