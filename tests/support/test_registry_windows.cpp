#include "platform/windows/windows_registry.h"
#include "support/test_registry.h"

#include <windows.h>

namespace tarncom32::tests {

std::shared_ptr<platform::Registry> testRegistry() {
    const auto removeTestKey = [] {
        RegDeleteTreeW(HKEY_CURRENT_USER, reinterpret_cast<const wchar_t*>(testKey().c_str()));
    };
    removeTestKey();
    return {new platform::windows::WindowsRegistry, [=](platform::Registry* registry) {
                delete registry;
                removeTestKey();
            }};
}

automation::String testKey() {
    return u"Software\\TarnCom32 Tests " + automation::decimalText(static_cast<long long>(GetCurrentProcessId()));
}

} // namespace tarncom32::tests
