#pragma once

namespace tarncom32::platform::windows {

/// Makes the user's regional settings those of the library's conversions.
void useUserLocale();

} // namespace tarncom32::platform::windows
