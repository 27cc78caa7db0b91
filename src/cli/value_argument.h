#pragma once

#include "automation/variant.h"

#include <string_view>

namespace tarncom32::cli {

/// The value that an argument of the command line stands for. An argument is text, which late binding converts to
/// what the member wants; a prefix or a word gives a value of another type:
///   int:N         a whole number of 32 bits
///   num:N         a number ("num:0.5", "num:1e3")
///   bool:B        true or false, or a whole number of 16 bits that is kept as it is ("bool:1" is neither)
///   json:J        the value of a JSON text; a list is an array from 0, an object a collection with its keys
///   text:T        T, where that would read as one of the others
///   nothing       no object
///   empty         no value
/// Raises a UsageError for a value that its prefix does not fit. Malformed UTF-8 becomes U+FFFD.
automation::Variant argumentValue(std::string_view argument);

} // namespace tarncom32::cli
