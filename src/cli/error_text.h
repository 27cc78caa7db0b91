#pragma once

#include "automation/error.h"

#include <string>

namespace tarncom32::cli {

/// "error 6: Overflow", on one line. The number of a foreign object's error is written as systems write it,
/// "error 0x86DB089B: ...".
std::string errorText(const automation::Error& error);

} // namespace tarncom32::cli
