#pragma once

#include <string>
#include <string_view>

/// Text as automation keeps it: counted UTF-16. Members take views and return
/// owning strings; an empty string and a missing string are the same.
namespace tarncom32::automation {

using String = std::u16string;
using StringView = std::u16string_view;

/// `text` as UTF-8. Unpaired surrogates become U+FFFD.
std::string toUtf8(StringView text);

/// `text`, read as UTF-8. Malformed bytes become U+FFFD.
String fromUtf8(std::string_view text);

/// Equality without regard to the case of the 26 Latin letters, the rule by
/// which member names, class names and enumeration names are found.
bool equalsIgnoreCase(StringView left, StringView right) noexcept;

/// `text` with every character of the basic plane in upper case by Unicode's
/// simple one-to-one mapping; other characters stay. Keys of collections,
/// names in the portable registry and comparisons without regard to case rest
/// on it.
String toUpper(StringView text);

/// `text` without leading and trailing spaces (U+0020 only).
StringView trim(StringView text) noexcept;

/// `value` in decimal, with a leading minus sign when negative.
String decimalText(long long value);

} // namespace tarncom32::automation
