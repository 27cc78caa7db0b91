#include "platform/windows/windows_folders.h"

#include <shlobj.h>
#include <windows.h>

#include <memory>

namespace tarncom32::platform::windows {

using automation::String;
using automation::StringView;

namespace {

struct FreeTaskMemory {
    void operator()(void* memory) const { CoTaskMemFree(memory); }
};

} // namespace

String folderOf(StringView modulePath) {
    const std::size_t separator = modulePath.rfind(u'\\');
    if (separator == StringView::npos) return {};
    String folder(modulePath.substr(0, separator));
    // Of a drive's root the separator is a part: "C:" alone is the drive's current folder.
    if (folder.ends_with(u':')) folder.push_back(u'\\');
    return folder;
}

String WindowsFolders::special(std::int32_t number) {
    PIDLIST_ABSOLUTE location = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, number, &location) != S_OK) return {};
    const std::unique_ptr<ITEMIDLIST, FreeTaskMemory> owner(location);
    wchar_t path[MAX_PATH] = L"";
    if (SHGetPathFromIDListW(location, path) != TRUE) return {};
    return String(reinterpret_cast<const char16_t*>(path));
}

String WindowsFolders::ownFolder() {
    HMODULE module = nullptr;
    static const wchar_t anchor = 0; // any address in this module
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, &anchor,
                       &module);
    for (String path(MAX_PATH, u'\0');; path.resize(path.size() * 2)) {
        const DWORD length =
            GetModuleFileNameW(module, reinterpret_cast<wchar_t*>(path.data()), static_cast<DWORD>(path.size()));
        if (length == 0 || path.size() > 0x10000) return {};
        if (length == path.size()) continue; // cut off
        path.resize(length);
        return folderOf(path);
    }
}

} // namespace tarncom32::platform::windows
