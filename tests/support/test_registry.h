#pragma once

#include "automation/string.h"
#include "platform/registry.h"

namespace tarncom32::tests {

/// The registry that the library has on this system: natively a store of its own in a temporary folder, on Windows the
/// system's, where `testKey()` and all below it go at the end. Nothing is made before it is used.
class TestRegistry final : public platform::Registry {
public:
    TestRegistry();
    ~TestRegistry() override;

    std::unique_ptr<platform::RegistryKey> open(std::int32_t root, std::string_view path,
                                                platform::RegistryAccess access) override;
    std::unique_ptr<platform::RegistryKey> create(std::int32_t root, std::string_view path) override;

private:
    struct Parts;
    Parts& parts();
    std::unique_ptr<Parts> parts_;
};

/// A key of the current user that belongs to this process, and that no test has to create first.
automation::String testKey();

} // namespace tarncom32::tests
