#pragma once

#include "automation/string.h"

#include <cstdint>

namespace tarncom32::platform {

/// Folders that the system knows by their meaning. Paths come without a separator at the end, a drive's root
/// excepted.
class Folders {
public:
    virtual ~Folders() = default;
    /// The folder with that special-folder number of the shell; empty when there is none.
    virtual automation::String special(std::int32_t number) = 0;
    /// The folder in which this library is installed.
    virtual automation::String ownFolder() = 0;
};

} // namespace tarncom32::platform
