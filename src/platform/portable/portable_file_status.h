#pragma once

#include "platform/file_status.h"
#include "platform/portable/drive_map.h"

namespace tarncom32::platform::portable {

/// Files of the native file system. A file is read-only when its owner may not write to it.
class PortableFileStatus final : public FileStatus {
public:
    explicit PortableFileStatus(const DriveMap& drives) : drives_(drives) {}

    std::uint32_t attributes(automation::StringView path) override;
    /// Another holder of the file is seen by its lock (either kind), and without one where the system lends files to
    /// one holder at a time, which it does to a file's owner and to root.
    void openExclusively(automation::StringView path) override;

private:
    const DriveMap& drives_;
};

} // namespace tarncom32::platform::portable
