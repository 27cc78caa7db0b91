#pragma once

#include "automation/error.h"

#include <filesystem>

namespace tarncom32::platform::portable {

/// The host's error for the system's error number `code` (an errno) from opening or writing the file `path`: 53 or,
/// when its folder is missing too, 76 for a file that is not there; 58 for one that is; 70 where permission is denied;
/// 61 for a full disk; 52 for a name that cannot be; 57 for the rest.
automation::Error fileError(int code, const std::filesystem::path& path);

} // namespace tarncom32::platform::portable
