#pragma once

#include "platform/code_page.h"
#include "platform/file_ports.h"
#include "platform/message_box.h"
#include "platform/registry.h"
#include "platform/running_applications.h"

namespace tarncom32::platform {

/// What the library needs of the system that it runs on, a port each. A platform is made with the names of the ports
/// that it has, in this order; behind each of the others stands what its header has for a platform without it:
///
///     platform::Platform platform{.messageBox = terminal, .registry = store};
///
/// Objects keep a reference: the platform and its ports must outlive all of them.
struct Platform {
    MsgBox& messageBox = noMessageBox();
    RunningApplications& applications = noApplications();
    const CodePage& codePage = westernCodePage();
    Registry& registry = noRegistry();
    FilePorts files{};
};

} // namespace tarncom32::platform
