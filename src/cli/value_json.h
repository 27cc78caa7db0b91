#pragma once

#include "automation/variant.h"

#include <nlohmann/json_fwd.hpp>

namespace tarncom32::cli {

using Json = nlohmann::ordered_json;

/// A value as JSON. Booleans are true (whatever bits are set) or false; numbers are numbers; a date is ISO text
/// ("2024-05-01T12:30:00"); arrays and the items of a collection are lists; Nothing, Empty and Null are null; an object
/// that is no collection is the name of its class, and so is a collection inside itself; an error value is "Error" and
/// its number.
Json jsonOf(const automation::Variant& value);

/// Text as JSON; unpaired surrogates become U+FFFD.
Json jsonText(automation::StringView text);

/// The value of a JSON text: whole numbers of 32 bits and other numbers, text, true and false; null is Empty; a list is
/// an array of variants from 0; an object is a collection with its keys. Raises a UsageError that says where the text
/// goes wrong.
automation::Variant valueOfJson(std::string_view text);

/// JSON as text in UTF-8, on one line, or in indented lines.
std::string compactText(const Json& json);
std::string indentedText(const Json& json);

} // namespace tarncom32::cli
