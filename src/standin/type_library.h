#pragma once

#include "automation/class_info.h"

#include <span>

/// What the stand-in publishes under COM.
namespace tarncom32::standin {

/// The name of the type library, and before ".Application" the ProgID.
inline constexpr automation::StringView kTypeLibraryName = u"TarnVisioStandIn";
inline constexpr automation::StringView kTypeLibraryHelp = u"TarnVisioStandIn 1.0 stand-in for Visio";
inline constexpr automation::Guid kTypeLibraryId =
    automation::operator""_guid("36371234-1b89-4c17-96c4-a6ed6f80a966", 36);

/// Every class of the object model. The first is the application, the only one that can be created.
std::span<const automation::ClassInfo* const> publishedClasses();

} // namespace tarncom32::standin
