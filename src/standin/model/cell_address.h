#pragma once

#include "standin/model/section_kinds.h"

#include <optional>

namespace tarncom32::standin {

/// Where a cell is in a sheet.
struct CellAddress {
    const SectionKind* section = nullptr; ///< null for a cell outside sections
    String row;                           ///< a row's name, universal or as the caller spelt it; empty outside sections
    String cell;                          ///< "PinX", or "Value" in a row

    /// As cells are called: "PinX", "User.Version", "Prop.Cost.Label". The first cell of a row goes by the row's name.
    String name() const;
};

/// Reads a cell's name; nullopt for one that no cell can have. "User.Version" and "User.Version.Value" are the same.
std::optional<CellAddress> parseCellName(StringView name);

} // namespace tarncom32::standin
