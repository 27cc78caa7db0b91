#pragma once

#include "cli/value_json.h"
#include "platform/code_page.h"
#include "platform/registry.h"

#include <optional>

namespace tarncom32::cli {

/// More bytes than any name or data has: for reading the whole of one.
inline constexpr std::size_t kAll = std::size_t{1} << 40;

/// "REG_SZ" and so on; "REG_17" for a type without a name.
std::string typeName(std::uint32_t type);

/// A value's data for reading, in UTF-8: texts up to the NUL at their end, numbers in decimal, lists of texts with " |
/// " in between, everything else as hexadecimal bytes.
std::string readableData(const platform::CodePage& codePage, const platform::RegistryValue& value);

/// The same for programs: a text, a number, a list of texts, or a text of hexadecimal bytes.
Json jsonOfData(const platform::CodePage& codePage, const platform::RegistryValue& value);

/// The data that `text` (UTF-8) writes for a value of the type `name` ("REG_SZ", "REG_EXPAND_SZ", "REG_DWORD",
/// "REG_QWORD", "REG_BINARY"). Raises UsageError when it does not.
platform::RegistryValue parseData(const platform::CodePage& codePage, const std::string& name, const std::string& text);

/// A 32- or 64-bit number; nullopt when the value is none, or is stored in a wrong number of bytes.
std::optional<std::uint64_t> numberOf(const platform::RegistryValue& value);

} // namespace tarncom32::cli
