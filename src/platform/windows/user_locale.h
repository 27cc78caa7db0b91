#pragma once

#include "automation/locale.h"

#include <cstdint>

namespace tarncom32::platform::windows {

/// The regional settings of the system's locale `lcid` (an LCID), with the changes that the user made to them.
automation::Locale localeOf(std::uint32_t lcid);

/// Makes the user's regional settings those of the library's conversions.
void useUserLocale();

} // namespace tarncom32::platform::windows
