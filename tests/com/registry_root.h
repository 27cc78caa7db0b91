#pragma once

#include <windows.h>

#include <string>

namespace tarncom32::com::testing {

/// A value, the default one where no name is given; "-" when there is no such key.
inline std::wstring valueAt(HKEY root, const std::wstring& path, REGSAM view = 0, const wchar_t* name = nullptr) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS) return L"-";
    wchar_t text[2048] = L"";
    DWORD size = sizeof text;
    RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    return text;
}

/// Another key in place of one of the registry's roots, for this process: from `begin` to the end of the scope.
class PrivateRoot {
public:
    PrivateRoot(HKEY root, const wchar_t* name) : root_(root), name_(std::wstring(L"Software\\") + name) {
        RegCreateKeyExW(HKEY_CURRENT_USER, name_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
        RegCreateKeyExW(key_, L"Software\\Classes\\CLSID", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &classes_, nullptr);
    }
    PrivateRoot(const PrivateRoot&) = delete;
    ~PrivateRoot() {
        RegOverridePredefKey(root_, nullptr);
        RegCloseKey(classes_);
        RegDeleteTreeW(key_, nullptr);
        RegCloseKey(key_);
        RegDeleteKeyW(HKEY_CURRENT_USER, name_.c_str());
    }
    LSTATUS begin() const { return RegOverridePredefKey(root_, key_); }
    /// The key in which all classes' ids stand.
    HKEY classes() const { return classes_; }
    std::wstring value(const std::wstring& path) const { return valueAt(key_, L"Software\\Classes\\" + path); }

private:
    HKEY root_;
    std::wstring name_;
    HKEY key_ = nullptr;
    HKEY classes_ = nullptr;
};

} // namespace tarncom32::com::testing
