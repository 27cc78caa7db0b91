#pragma once

#include "library/catalogue.h"

namespace tarncom32::cli {

/// What "CLASS.MEMBER" on the command line names.
struct MemberPath {
    const library::CatalogueEntry* entry = nullptr;
    const automation::ClassInfo* info = nullptr; ///< null for a class that is not built
    automation::String member{};                 ///< as written; empty when only the class is named
};

/// Reads "CLASS" or "CLASS.MEMBER", in any letter case, with or without "TarnCom32." in front. Raises a UsageError,
/// with near names in it, for a class that the catalogue does not have and for a member that a built class does not
/// have.
MemberPath resolvePath(std::string_view text);

/// Every line of the class's table that bears the member's name: one for a method, one for each accessor of a property.
std::vector<const automation::MemberInfo*> membersNamed(const automation::ClassInfo& info, automation::StringView name);

} // namespace tarncom32::cli
