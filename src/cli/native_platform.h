#pragma once

#include "platform/platform.h"
#include "platform/portable/sqlite_registry.h"
#include "platform/portable/windows_1252.h"

namespace tarncom32::cli {

/// The surroundings of the library in this program: message boxes and applications of the program's own choosing, the
/// Western code page, and the user's registry file.
class NativePlatform {
public:
    /// Both arguments must outlive this object.
    NativePlatform(platform::MessageBox& messageBox, platform::RunningApplications& applications)
        : platform_{messageBox, applications, codePage_, registry_} {}
    NativePlatform(const NativePlatform&) = delete;
    NativePlatform& operator=(const NativePlatform&) = delete;

    operator platform::Platform&() { return platform_; }

private:
    platform::portable::Windows1252 codePage_;
    platform::portable::SqliteRegistry registry_{platform::portable::SqliteRegistry::defaultFile(), codePage_};
    platform::Platform platform_;
};

} // namespace tarncom32::cli
