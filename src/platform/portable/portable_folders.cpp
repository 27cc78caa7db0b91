#include "platform/portable/portable_folders.h"

#include "platform/portable/user_folders.h"

#include <dlfcn.h>

namespace tarncom32::platform::portable {

namespace fs = std::filesystem;
using automation::String;

namespace {

// `below` in `folder`, unless there is no such folder.
fs::path inside(const fs::path& folder, const char* below) {
    return folder.empty() ? folder : folder / below;
}

// By the shell's numbers.
fs::path specialFolder(std::int32_t number) {
    switch (number) {
    case 0:  // the desktop
    case 16: // the folder behind it, which is the same one here
        return userDirectory("DESKTOP", "Desktop");
    case 2:  // the programs of the start menu
    case 11: // the start menu
        return inside(dataFolder(), "applications");
    case 5: // documents
        return userDirectory("DOCUMENTS", "Documents");
    case 7: // started at log-on
        return inside(configFolder(), "autostart");
    case 20: // fonts
        return inside(dataFolder(), "fonts");
    case 21: // templates for new files
        return userDirectory("TEMPLATES", "Templates");
    case 26: // data of applications
        return configFolder();
    case 32: // temporary Internet files
        return cacheFolder();
    default:
        return {};
    }
}

String withoutSeparatorAtEnd(String path) {
    if (path.size() > 3 && path.back() == u'\\') path.pop_back();
    return path;
}

} // namespace

String PortableFolders::special(std::int32_t number) {
    const fs::path folder = specialFolder(number);
    return folder.empty() ? String() : withoutSeparatorAtEnd(drives_.toAutomation(folder));
}

String PortableFolders::ownFolder() {
    Dl_info info{};
    static const char anchor = 0;
    std::error_code failure;
    fs::path file;
    if (dladdr(&anchor, &info) != 0 && info.dli_fname) file = fs::canonical(info.dli_fname, failure);
    // A program's own name is what it was started by, which need not be a path.
    if (file.empty() || failure) file = fs::canonical("/proc/self/exe", failure);
    return failure ? String() : drives_.toAutomation(file.parent_path());
}

} // namespace tarncom32::platform::portable
