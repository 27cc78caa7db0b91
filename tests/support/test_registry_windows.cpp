#include "platform/windows/windows_registry.h"
#include "support/test_registry.h"

#include <windows.h>

namespace tarncom32::tests {

struct TestRegistry::Parts {
    Parts() { removeTestKey(); }
    ~Parts() { removeTestKey(); }
    static void removeTestKey() {
        RegDeleteTreeW(HKEY_CURRENT_USER, reinterpret_cast<const wchar_t*>(testKey().c_str()));
    }
    platform::windows::WindowsRegistry registry;
};

TestRegistry::TestRegistry() = default;
TestRegistry::~TestRegistry() = default;

TestRegistry::Parts& TestRegistry::parts() {
    if (!parts_) parts_ = std::make_unique<Parts>();
    return *parts_;
}

std::unique_ptr<platform::RegistryKey> TestRegistry::open(std::int32_t root, std::string_view path,
                                                          platform::RegistryAccess access) {
    return parts().registry.open(root, path, access);
}

std::unique_ptr<platform::RegistryKey> TestRegistry::create(std::int32_t root, std::string_view path) {
    return parts().registry.create(root, path);
}

automation::String testKey() {
    return u"Software\\TarnCom32 Tests " + automation::decimalText(static_cast<long long>(GetCurrentProcessId()));
}

} // namespace tarncom32::tests
