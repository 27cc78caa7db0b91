#pragma once

#include "platform/platform.h"
#include "platform/portable/portable_files.h"
#include "platform/portable/sqlite_registry.h"
#include "platform/portable/terminal_message_box.h"
#include "platform/portable/windows_1252.h"

namespace tarncom32::platform::portable {

/// The platform of a native program: messages and file dialogs on the terminal, the user's files and registry file,
/// the Western code page, and no applications but those that the program brings. Nothing is opened before it is needed.
///
///     platform::portable::PortablePlatform platform;
///     library::Library library(platform);
class PortablePlatform {
public:
    PortablePlatform() : PortablePlatform(terminal_) {}

    /// With message boxes, and maybe applications, of the program's own, which must outlive this object. A
    /// `standin::Host` as the applications lets the library find the stand-in where it looks for a running Visio.
    explicit PortablePlatform(MsgBox& messageBox, RunningApplications& applications = noApplications())
        : platform_{.messageBox = messageBox,
                    .applications = applications,
                    .codePage = codePage_,
                    .registry = registry_,
                    .files = files_.ports()} {}
    PortablePlatform(const PortablePlatform&) = delete;
    PortablePlatform& operator=(const PortablePlatform&) = delete;

    operator Platform&() { return platform_; }

private:
    TerminalMessageBox terminal_;
    Windows1252 codePage_;
    SqliteRegistry registry_{SqliteRegistry::defaultFile(), codePage_};
    PortableFiles files_{codePage_};
    Platform platform_;
};

} // namespace tarncom32::platform::portable
