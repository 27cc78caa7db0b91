#pragma once

#include "platform/file_ports.h"
#include "platform/portable/file_system_object.h"
#include "platform/portable/portable_file_status.h"
#include "platform/portable/portable_folders.h"
#include "platform/portable/portable_path_calls.h"
#include "platform/portable/terminal_file_dialog.h"
#include "platform/portable/user_folders.h"

#include <iostream>

namespace tarncom32::platform::portable {

/// The file ports of a native program: the user's own files, and dialogs on the terminal.
class PortableFiles {
public:
    /// `codePage` must outlive this object.
    explicit PortableFiles(const CodePage& codePage)
        : drives_(driveCFolder()), objects_(drives_, codePage), status_(drives_), folders_(drives_),
          pathCalls_(drives_, codePage), dialog_(drives_, std::cin, std::cerr) {}
    PortableFiles(const PortableFiles&) = delete;

    FilePorts ports() { return {objects_, status_, folders_, pathCalls_, dialog_}; }
    const DriveMap& drives() const { return drives_; }

private:
    DriveMap drives_;
    PortableFileSystemObjects objects_;
    PortableFileStatus status_;
    PortableFolders folders_;
    PortablePathCalls pathCalls_;
    TerminalFileDialog dialog_;
};

} // namespace tarncom32::platform::portable
