#pragma once

#include "automation/guid.h"

/// What identifies the library's type library.
namespace tarncom32::library {

inline constexpr automation::Guid kTypeLibraryId =
    automation::operator""_guid("902d63e7-23e1-477a-ab37-9ec6d8441d4b", 36);
inline constexpr automation::StringView kTypeLibraryHelp = u"TarnCom32 1.0 component library for Visio add-ins";

} // namespace tarncom32::library
