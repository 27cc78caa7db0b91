#pragma once

#include "platform/no_files.h"

namespace tarncom32::platform {

/// The ports of files and folders. One that is not named has no files.
struct FilePorts {
    FileSystemObjects& objects = noFiles();
    FileStatus& status = noFiles();
    Folders& folders = noFiles();
    PathCalls& pathCalls = noFiles();
    FileDialog& dialog = noFiles();
};

inline FilePorts NoFiles::ports() {
    return {*this, *this, *this, *this, *this};
}

} // namespace tarncom32::platform
