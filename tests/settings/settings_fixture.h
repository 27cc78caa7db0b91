#pragma once

#include "faulty_registry.h"
#include "settings/registry_operations.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

namespace tarncom32::settings {

inline constexpr std::int32_t kRoot = platform::registry_root::kCurrentUser;

/// A test over this system's registry, where `key_` is a path of its own.
class SettingsTest : public testing::Test {
protected:
    /// The number of the error that `call` raises; 0 when it raises none.
    template <class F>
    static std::int32_t errorOf(F&& call) {
        try {
            call();
        } catch (const automation::Error& error) {
            return error.number();
        }
        return 0;
    }
    /// The description of that error.
    template <class F>
    static automation::String textOf(F&& call) {
        try {
            call();
        } catch (const automation::Error& error) {
            return error.description();
        }
        return {};
    }

    /// Stores a value as it is, past the operations.
    void store(std::string_view name, std::string_view bytes, std::uint32_t type = platform::registry_type::kString) {
        real_.create(kRoot, platform_.codePage.encode(key_))->write(name, type, bytes);
    }
    /// The bytes of a value; "(none)" when it is missing.
    std::string stored(std::string_view name) {
        const auto key = real_.open(kRoot, platform_.codePage.encode(key_), platform::RegistryAccess::Read);
        platform::RegistryValue value;
        if (!key || key->read(name, 100000, value) != platform::RegistryRead::Done) return "(none)";
        return value.bytes;
    }

    automation::String key_ = tests::testKey() + u"\\Product\\Default";
    tests::TestPlatform surroundings_;
    platform::Registry& real_ = surroundings_.registry;
    FaultyRegistry registry_{real_};
    platform::Platform platform_ = tests::withRegistry(surroundings_.platform, registry_);
    RegistryOperations operations_{platform_};
};

} // namespace tarncom32::settings
