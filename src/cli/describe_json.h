#pragma once

#include "cli/commands.h"
#include "cli/member_path.h"
#include "cli/value_json.h"
#include "frame/enumerations.h"

/// The description of the catalogue for programs.
namespace tarncom32::cli {

/// "in", "in/out" or "out".
std::string directionText(automation::Direction direction);

/// "method", "get", "let" or "set".
std::string kindText(automation::MemberKind kind);

/// `name`, `kind`, `dispid`, `result` (a type, null for none), `help` and `parameters`, each with `name`, `type`,
/// `direction`, `optional` and `default` (null for none). A property with several accessors is described by its first
/// one, and has all of them under `accessors`. `members` is not empty.
Json jsonOfMember(const std::vector<const automation::MemberInfo*>& members);

/// `name`, `kind`, `progId`, `built`, `help`, and for a built class `clsid`, `iid`, `members` and `events`.
Json jsonOfClass(const MemberPath& path);

/// `name`, `help` and `members`, each with `name`, `value` and `help`.
Json jsonOfEnumeration(const frame::EnumerationInfo& enumeration);

/// Writes indented lines.
void printJson(const Output& output, const Json& json);

} // namespace tarncom32::cli
