#pragma once

#include "automation/string.h"

#include <filesystem>
#include <optional>

namespace tarncom32::platform::portable {

/// Where the drives of automation's paths are: `Z:\` is the root of the file system, `C:\` a folder of its own. Between
/// the two forms a path keeps its spelling, case included.
class DriveMap {
public:
    /// `driveC` is the folder that `C:\` is, an absolute path; it is made when a path on it is first used. Empty: there
    /// is no drive C.
    explicit DriveMap(std::filesystem::path driveC) : driveC_(std::move(driveC)) {}

    /// The file that `path` names. Without a drive it is found from the current folder, or from the root when it starts
    /// with a separator; "/" separates as well, so that the system's own paths can be given; a "\\?\" in front is
    /// skipped. Nothing for the empty path, another drive, a network path and a path with a NUL.
    std::optional<std::filesystem::path> toNative(automation::StringView path) const;

    /// The path of a file as automation writes it: on drive C where it is inside its folder, else on drive Z.
    automation::String toAutomation(const std::filesystem::path& path) const;

private:
    std::filesystem::path driveC_;
};

} // namespace tarncom32::platform::portable
