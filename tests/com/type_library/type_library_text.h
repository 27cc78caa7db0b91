#pragma once

#include "automation/guid.h"

namespace tarncom32::com::testing {

/// The registered type library of that identifier, version 1.0, in the words of the checked-in contracts. Raises
/// `std::runtime_error` when it cannot be read.
std::string typeLibraryText(const automation::Guid& guid);

} // namespace tarncom32::com::testing
