#include "platform/portable/user_folders.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace tarncom32::platform::portable {

namespace fs = std::filesystem;

namespace {

fs::path fromEnvironment(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value == '/' ? fs::path(value) : fs::path();
}

fs::path inHome(std::string_view below) {
    const fs::path home = homeFolder();
    return home.empty() ? home : home / below;
}

fs::path environmentOrHome(const char* variable, std::string_view below) {
    const fs::path named = fromEnvironment(variable);
    return named.empty() ? inHome(below) : named;
}

// What stands between the quotes of a line, with a backslash before the characters that the shell treats specially.
std::string unquoted(std::string_view line, std::size_t quote) {
    std::string text;
    for (std::size_t i = quote + 1; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size()) ++i;
        text.push_back(line[i]);
    }
    return text;
}

} // namespace

fs::path homeFolder() {
    if (fs::path home = fromEnvironment("HOME"); !home.empty()) return home;
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 16384> buffer{};
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found || !found->pw_dir) return {};
    const fs::path home = found->pw_dir;
    return home.is_absolute() ? home : fs::path();
}

fs::path dataFolder() {
    return environmentOrHome("XDG_DATA_HOME", ".local/share");
}
fs::path configFolder() {
    return environmentOrHome("XDG_CONFIG_HOME", ".config");
}
fs::path cacheFolder() {
    return environmentOrHome("XDG_CACHE_HOME", ".cache");
}
fs::path temporaryFolder() {
    const fs::path named = fromEnvironment("TMPDIR");
    return named.empty() ? fs::path("/tmp") : named;
}

fs::path userDirectory(std::string_view name, std::string_view fallback) {
    const std::string key = "XDG_" + std::string(name) + "_DIR=\"";
    std::ifstream file(configFolder() / "user-dirs.dirs");
    fs::path found;
    for (std::string line; std::getline(file, line);) {
        const std::size_t start = line.find_first_not_of(" \t");
        if (start == std::string::npos || line.compare(start, key.size(), key) != 0) continue;
        const std::string value = unquoted(line, start + key.size() - 1);
        if (value == "$HOME" || value == "$HOME/")
            found = homeFolder();
        else if (value.starts_with("$HOME/"))
            found = inHome(value.substr(6));
        else if (value.starts_with('/'))
            found = value;
    }
    return found.empty() ? inHome(fallback) : found;
}

fs::path driveCFolder() {
    const fs::path data = dataFolder();
    return data.empty() ? data : data / "tarncom32" / "drive_c";
}

} // namespace tarncom32::platform::portable
