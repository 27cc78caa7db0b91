#pragma once

#include "standin/model/cell_address.h"
#include "standin/model/name_index.h"
#include "standin/model/shape_node.h"

namespace tarncom32::standin {

/// How far a look-up goes.
enum class Reach : std::uint8_t {
    LocalOnly, ///< what the sheet itself has
    Inherited, ///< and what it inherits from its master
};

/// A cell that exists.
struct FoundCell {
    CellAddress address;                    ///< with the row's universal name
    const drawing::Cell* formula = nullptr; ///< where its formula is written; null when it never was
    const drawing::Cell* value = nullptr;   ///< where its value is: a sheet may keep the result of an inherited formula
    bool local = false;                     ///< its formula is the sheet's own
};

/// The cell of `node` at an address, through the masters. A row that exists has all its cells, written or not. Rows are
/// found by their universal names and, for `NameKind::Local`, by their local ones. Nullopt when there is none.
std::optional<FoundCell> findCell(const ShapeNode& node, const CellAddress& address, NameKind names, Reach reach);

bool sectionExists(const ShapeNode& node, const SectionKind& section, Reach reach);

/// The rows of a section by universal name: inherited ones in the master's order, then the sheet's own.
std::vector<String> rowNames(const ShapeNode& node, const SectionKind& section);

/// The sheet's own cell, made where it is not there yet; the row likewise.
drawing::Cell& ownCell(ShapeNode& node, const CellAddress& address, drawing::TextPool& pool);
/// Makes an own, empty section where there is none.
void ownSection(ShapeNode& node, const SectionKind& section, drawing::TextPool& pool);
/// Makes an own row, where there is none, in an own section.
void ownRow(ShapeNode& node, const SectionKind& section, StringView row, drawing::TextPool& pool);

} // namespace tarncom32::standin
