#include "standin/file_name.h"

#include <algorithm>

namespace tarncom32::standin {

namespace fs = std::filesystem;

// By way of UTF-8: from and to UTF-16 the paths of the standard library fail where a text or a name is ill-formed.

fs::path pathOf(StringView fileName) {
    std::string path = automation::toUtf8(fileName);
    if (path.size() >= 3 && (path[0] == 'Z' || path[0] == 'z') && path[1] == ':' && path[2] == '\\') {
        path.erase(0, 2);
        std::ranges::replace(path, '\\', '/');
    }
    return fs::path(std::u8string(path.begin(), path.end()));
}

String fileNameOf(const fs::path& path) {
    const std::u8string name = path.u8string();
    return automation::fromUtf8(std::string(name.begin(), name.end()));
}

} // namespace tarncom32::standin
