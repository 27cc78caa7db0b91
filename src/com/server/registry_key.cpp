#include "com/server/registry_key.h"

#include "automation/error.h"
#include "com/bridge/com_ptr.h"

namespace tarncom32::com {

using automation::String;
using automation::StringView;

namespace {

void checkStatus(LSTATUS status) {
    if (status != ERROR_SUCCESS)
        throw automation::Error::fromHresult(static_cast<std::int32_t>(HRESULT_FROM_WIN32(static_cast<DWORD>(status))));
}

} // namespace

RegistryKey RegistryKey::create(HKEY root, const String& path, REGSAM view) {
    RegistryKey key;
    checkStatus(RegCreateKeyExW(root, wide(path), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE | view,
                                nullptr, &key.key_, nullptr));
    return key;
}

RegistryKey RegistryKey::open(HKEY root, const String& path, REGSAM access) {
    RegistryKey key;
    if (RegOpenKeyExW(root, wide(path), 0, access, &key.key_) != ERROR_SUCCESS) return {};
    return key;
}

void RegistryKey::set(const String& name, StringView value) const {
    const String text(value);
    checkStatus(RegSetValueExW(key_, name.empty() ? nullptr : wide(name), 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(text.c_str()),
                               static_cast<DWORD>((text.size() + 1) * sizeof(char16_t))));
}

bool RegistryKey::hasSubkeys() const {
    DWORD count = 0;
    checkStatus(RegQueryInfoKeyW(key_, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr));
    return count > 0;
}

void removeKey(HKEY root, const String& path, REGSAM view) {
    // Emptied through its own handle first: deleting a tree by path knows no view.
    HKEY key = nullptr;
    const LSTATUS opened = RegOpenKeyExW(root, wide(path), 0, KEY_ALL_ACCESS | view, &key);
    if (opened == ERROR_FILE_NOT_FOUND) return;
    checkStatus(opened);
    const LSTATUS emptied = RegDeleteTreeW(key, nullptr);
    RegCloseKey(key);
    checkStatus(emptied);
    const LSTATUS removed = RegDeleteKeyExW(root, wide(path), view, 0);
    if (removed != ERROR_FILE_NOT_FOUND) checkStatus(removed);
}

} // namespace tarncom32::com
