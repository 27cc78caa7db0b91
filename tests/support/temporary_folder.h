#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarncom32::tests {

/// A folder of its own that goes, with all that is in it, at the end of the scope.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// Writes a file below it, with the folders that lead there; gives its path.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes = {}) const;
    /// What is in a file below it; nothing when there is none.
    std::string read(const std::filesystem::path& name) const;

private:
    std::filesystem::path path_;
};

} // namespace tarncom32::tests
