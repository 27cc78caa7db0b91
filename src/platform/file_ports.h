#pragma once

#include "platform/file_dialog.h"
#include "platform/file_status.h"
#include "platform/file_system_objects.h"
#include "platform/folders.h"
#include "platform/path_calls.h"

namespace tarncom32::platform {

/// The ports of files and folders.
struct FilePorts {
    FileSystemObjects& objects;
    FileStatus& status;
    Folders& folders;
    PathCalls& pathCalls;
    FileDialog& dialog;
};

} // namespace tarncom32::platform
