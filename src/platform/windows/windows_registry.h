#pragma once

#include "platform/registry.h"

namespace tarncom32::platform::windows {

/// The system's registry, through its 8-bit calls: texts cross in the system's code page, and paths and root keys as
/// they are given. A read that fails for whatever reason is an absent value.
class WindowsRegistry final : public Registry {
public:
    std::unique_ptr<RegistryKey> open(std::int32_t root, std::string_view path, RegistryAccess access) override;
    std::unique_ptr<RegistryKey> create(std::int32_t root, std::string_view path) override;
};

} // namespace tarncom32::platform::windows
