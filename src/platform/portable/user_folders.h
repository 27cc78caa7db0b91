#pragma once

#include <filesystem>
#include <string_view>

/// The folders of the user, by the rules of the XDG base directories and user directories. An empty path says that
/// there is none. A variable of the environment that holds no absolute path is ignored.
namespace tarncom32::platform::portable {

/// HOME, else what the user database says.
std::filesystem::path homeFolder();
/// XDG_DATA_HOME, else ~/.local/share.
std::filesystem::path dataFolder();
/// XDG_CONFIG_HOME, else ~/.config.
std::filesystem::path configFolder();
/// XDG_CACHE_HOME, else ~/.cache.
std::filesystem::path cacheFolder();
/// TMPDIR, else /tmp.
std::filesystem::path temporaryFolder();

/// The folder that the user's user-dirs.dirs gives for `name` ("DESKTOP", "DOCUMENTS", ...); without such a line
/// `fallback` in the home folder.
std::filesystem::path userDirectory(std::string_view name, std::string_view fallback);

/// The folder that is drive C: tarncom32/drive_c in the data folder.
std::filesystem::path driveCFolder();

} // namespace tarncom32::platform::portable
