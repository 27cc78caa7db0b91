#pragma once

#include <absl/strings/string_view.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The jobs of the delimited-text members done in other ways: by the loop over UTF-16 that one writes by hand, and by
/// Abseil over the same text as UTF-8. They take well-formed input only: delimiters that are there, fields that are
/// numbers.
namespace tarncom32::bench {

namespace loop {

std::size_t countFields(std::u16string_view text, char16_t delimiter);
std::vector<std::u16string> split(std::u16string_view text, char16_t delimiter);
std::u16string before(std::u16string_view text, char16_t delimiter);
std::u16string behindLast(std::u16string_view text, char16_t delimiter);
std::u16string between(std::u16string_view text, std::u16string_view start, std::u16string_view end);
std::u16string beforeNth(std::u16string_view text, char16_t delimiter, int n);
std::u16string replaceNth(std::u16string_view text, char16_t delimiter, std::u16string_view value, int n);
std::u16string withoutNumber(std::u16string_view list, int number, char16_t delimiter);
std::u16string without(std::u16string_view text, std::u16string_view sought);
std::u16string clean(std::u16string_view text);
std::u16string reverse(std::u16string_view text);
/// The number of keys in a map made of "key!value;key!value".
std::size_t map(std::u16string_view stream);

} // namespace loop

namespace abseil {

std::size_t countFields(absl::string_view text, char delimiter);
std::vector<std::string> split(absl::string_view text, char delimiter);
std::string before(absl::string_view text, char delimiter);
std::string behindLast(absl::string_view text, char delimiter);
std::string between(absl::string_view text, absl::string_view start, absl::string_view end);
std::string beforeNth(absl::string_view text, char delimiter, int n);
std::string replaceNth(absl::string_view text, char delimiter, absl::string_view value, int n);
std::string withoutNumber(absl::string_view list, int number, char delimiter);
std::string without(absl::string_view text, absl::string_view sought);
std::string clean(absl::string_view text);
std::size_t map(absl::string_view stream);

} // namespace abseil

} // namespace tarncom32::bench
