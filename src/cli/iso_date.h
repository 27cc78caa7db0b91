#pragma once

#include "automation/variant.h"

#include <string>

namespace tarncom32::cli {

/// "2024-05-01T12:30:00", with milliseconds where there are any. Outside automation's calendar (the years 100 to 9999)
/// the number of days since 30 December 1899.
std::string isoText(automation::Date date);

} // namespace tarncom32::cli
