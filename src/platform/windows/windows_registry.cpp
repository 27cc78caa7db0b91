#include "platform/windows/windows_registry.h"

#include "automation/error.h"

#include <windows.h>

#include <type_traits>
#include <vector>

namespace tarncom32::platform::windows {

namespace {

struct CloseKey {
    void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};
using UniqueKey = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

/// What the system says of a failure.
automation::Error failure(LSTATUS status) {
    char16_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(status), 0, reinterpret_cast<wchar_t*>(text), 512, nullptr);
    while (length > 0 && text[length - 1] <= u' ')
        --length;
    return {automation::errors::PathFileAccess, u"The registry could not be read or written (" +
                                                    automation::decimalText(status) + u"): " +
                                                    automation::String(text, length)};
}

/// The root that a number stands for; handles are sign-extended where they are wider than the number.
HKEY rootKey(std::int32_t root) {
    return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG_PTR>(root)));
}

const BYTE* bytesOf(std::string_view text) {
    return reinterpret_cast<const BYTE*>(text.data());
}

class WindowsKey final : public RegistryKey {
public:
    explicit WindowsKey(UniqueKey key) : key_(std::move(key)) {}

    RegistryRead read(std::string_view name, std::size_t dataLimit, RegistryValue& value) override {
        value.name = name;
        value.bytes.resize(dataLimit);
        auto size = static_cast<DWORD>(dataLimit);
        DWORD type = 0;
        const LSTATUS status = RegQueryValueExA(key_.get(), value.name.c_str(), nullptr, &type,
                                                reinterpret_cast<BYTE*>(value.bytes.data()), &size);
        return finish(status, type, size, value);
    }

    RegistryRead valueAt(std::uint32_t index, std::size_t nameLimit, std::size_t dataLimit,
                         RegistryValue& value) override {
        value.name.resize(nameLimit);
        value.bytes.resize(dataLimit);
        auto nameSize = static_cast<DWORD>(nameLimit);
        auto size = static_cast<DWORD>(dataLimit);
        DWORD type = 0;
        const LSTATUS status = RegEnumValueA(key_.get(), index, value.name.data(), &nameSize, nullptr, &type,
                                             reinterpret_cast<BYTE*>(value.bytes.data()), &size);
        if (status == ERROR_SUCCESS) value.name.resize(nameSize);
        return finish(status, type, size, value);
    }

    bool subkeyAt(std::uint32_t index, std::string& name) override {
        name.resize(1024);
        auto size = static_cast<DWORD>(name.size());
        if (RegEnumKeyExA(key_.get(), index, name.data(), &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            return false;
        name.resize(size);
        return true;
    }

    void write(std::string_view name, std::uint32_t type, std::string_view bytes) override {
        // Of a text that ends without a zero byte the call looks at the byte behind it, so there is one.
        const std::string terminated(bytes);
        const LSTATUS status = RegSetValueExA(key_.get(), std::string(name).c_str(), 0, type, bytesOf(terminated),
                                              static_cast<DWORD>(bytes.size()));
        if (status != ERROR_SUCCESS) throw failure(status);
    }

    bool deleteValue(std::string_view name) override {
        return RegDeleteValueA(key_.get(), std::string(name).c_str()) == ERROR_SUCCESS;
    }

    bool deleteSubkey(std::string_view path) override {
        return RegDeleteKeyA(key_.get(), std::string(path).c_str()) == ERROR_SUCCESS;
    }

private:
    static RegistryRead finish(LSTATUS status, DWORD type, DWORD size, RegistryValue& value) {
        if (status == ERROR_MORE_DATA) return RegistryRead::TooBig;
        if (status != ERROR_SUCCESS) return RegistryRead::Absent;
        value.type = type;
        value.bytes.resize(size);
        return RegistryRead::Done;
    }

    UniqueKey key_;
};

} // namespace

std::unique_ptr<RegistryKey> WindowsRegistry::open(std::int32_t root, std::string_view path, RegistryAccess access) {
    HKEY key = nullptr;
    const REGSAM rights = access == RegistryAccess::Full ? KEY_ALL_ACCESS : KEY_READ;
    if (RegOpenKeyExA(rootKey(root), std::string(path).c_str(), 0, rights, &key) != ERROR_SUCCESS) return nullptr;
    return std::make_unique<WindowsKey>(UniqueKey(key));
}

std::unique_ptr<RegistryKey> WindowsRegistry::create(std::int32_t root, std::string_view path) {
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExA(rootKey(root), std::string(path).c_str(), 0, nullptr,
                                           REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS) throw failure(status);
    return std::make_unique<WindowsKey>(UniqueKey(key));
}

} // namespace tarncom32::platform::windows
