#pragma once

#include "platform/code_page.h"
#include "platform/file_ports.h"
#include "platform/message_box.h"
#include "platform/registry.h"
#include "platform/running_applications.h"

namespace tarncom32::platform {

/// What the library needs from its surroundings. Objects keep a reference: it must outlive all of them.
struct Platform {
    MessageBox& messageBox;
    RunningApplications& applications;
    const CodePage& codePage;
    Registry& registry;
    FilePorts files;
};

} // namespace tarncom32::platform
