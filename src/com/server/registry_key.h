#pragma once

#include "automation/string.h"

#include <windows.h>

#include <utility>

namespace tarncom32::com {

/// An open key of the registry. Members that fail raise the system's error, unless they say otherwise.
class RegistryKey {
public:
    RegistryKey() noexcept = default;
    RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    RegistryKey& operator=(RegistryKey&& other) noexcept {
        std::swap(key_, other.key_);
        return *this;
    }
    ~RegistryKey() {
        if (key_) RegCloseKey(key_);
    }

    /// The key `path` below `root`, made where it is not there. `view` is 0, KEY_WOW64_32KEY or KEY_WOW64_64KEY.
    static RegistryKey create(HKEY root, const automation::String& path, REGSAM view);
    /// An empty one when there is no such key or it may not be read.
    static RegistryKey open(HKEY root, const automation::String& path, REGSAM access);

    explicit operator bool() const noexcept { return key_ != nullptr; }
    /// Sets a text; the empty name is the key's default value.
    void set(const automation::String& name, automation::StringView value) const;
    bool hasSubkeys() const;

private:
    HKEY key_ = nullptr;
};

/// Removes the key and all below it; nothing happens when it is not there.
void removeKey(HKEY root, const automation::String& path, REGSAM view);

} // namespace tarncom32::com
