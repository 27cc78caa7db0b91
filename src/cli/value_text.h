#pragma once

#include "automation/variant.h"

namespace tarncom32::cli {

/// A value for reading, in UTF-8: text as it is, numbers, Booleans and dates as automation writes them, arrays and
/// collections as a JSON list on one line, an object that is no collection as the name of its class, and "Nothing",
/// "Empty" or "Null" where there is no value.
std::string readableText(const automation::Variant& value);

} // namespace tarncom32::cli
