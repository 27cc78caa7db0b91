#pragma once

#include "platform/file_ports.h"
#include "platform/windows/scripting_objects.h"
#include "platform/windows/system_file_dialog.h"
#include "platform/windows/windows_file_status.h"
#include "platform/windows/windows_folders.h"
#include "platform/windows/windows_path_calls.h"

namespace tarncom32::platform::windows {

/// The file ports of Windows.
class WindowsFiles {
public:
    /// Both arguments must outlive this object.
    WindowsFiles(RunningApplications& applications, const CodePage& codePage)
        : objects_(applications), status_(codePage), dialog_(codePage) {}
    WindowsFiles(const WindowsFiles&) = delete;

    FilePorts ports() { return {objects_, status_, folders_, pathCalls_, dialog_}; }

private:
    ScriptingObjects objects_;
    WindowsFileStatus status_;
    WindowsFolders folders_;
    WindowsPathCalls pathCalls_;
    SystemFileDialog dialog_;
};

} // namespace tarncom32::platform::windows
