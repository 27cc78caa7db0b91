#pragma once

#include "settings/registry_operations.h"
#include "support/error_of.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

namespace tarncom32::settings {

using tests::errorOf;
using tests::failureOf;

inline constexpr std::int32_t kRoot = platform::registry_root::kCurrentUser;

/// A registry that passes everything on to another one, counts the keys that are open, and fails as told.
class FaultyRegistry final : public platform::Registry {
public:
    explicit FaultyRegistry(platform::Registry& real) : real_(real) {}

    bool readOnly = false;       ///< refuses full access
    bool refusesWrites = false;  ///< writing, creating and deleting fail, as on a full disk
    int callsBeforeFailure = -1; ///< that many calls succeed, all later ones fail; -1: none fails
    int openKeys = 0;

    std::unique_ptr<platform::RegistryKey> open(std::int32_t root, std::string_view path,
                                                platform::RegistryAccess access) override {
        countDown();
        if (readOnly && access == platform::RegistryAccess::Full) return nullptr;
        return wrap(real_.open(root, path, access));
    }
    std::unique_ptr<platform::RegistryKey> create(std::int32_t root, std::string_view path) override {
        beforeWriting();
        return wrap(real_.create(root, path));
    }

private:
    class Key final : public platform::RegistryKey {
    public:
        Key(FaultyRegistry& registry, std::unique_ptr<platform::RegistryKey> real)
            : registry_(registry), real_(std::move(real)) {
            ++registry_.openKeys;
        }
        ~Key() override { --registry_.openKeys; }

        platform::RegistryRead read(std::string_view name, std::size_t dataLimit,
                                    platform::RegistryValue& value) override {
            registry_.countDown();
            return real_->read(name, dataLimit, value);
        }
        platform::RegistryRead valueAt(std::uint32_t index, std::size_t nameLimit, std::size_t dataLimit,
                                       platform::RegistryValue& value) override {
            registry_.countDown();
            return real_->valueAt(index, nameLimit, dataLimit, value);
        }
        bool subkeyAt(std::uint32_t index, std::string& name) override { return real_->subkeyAt(index, name); }
        void write(std::string_view name, std::uint32_t type, std::string_view bytes) override {
            registry_.beforeWriting();
            real_->write(name, type, bytes);
        }
        bool deleteValue(std::string_view name) override { return real_->deleteValue(name); }
        bool deleteSubkey(std::string_view path) override {
            registry_.beforeWriting();
            return real_->deleteSubkey(path);
        }

    private:
        FaultyRegistry& registry_;
        std::unique_ptr<platform::RegistryKey> real_;
    };

    std::unique_ptr<platform::RegistryKey> wrap(std::unique_ptr<platform::RegistryKey> key) {
        return key ? std::make_unique<Key>(*this, std::move(key)) : nullptr;
    }
    void countDown() {
        if (callsBeforeFailure == 0) throw platform::UnreadableStore(u"unreadable");
        if (callsBeforeFailure > 0) --callsBeforeFailure;
    }
    void beforeWriting() {
        countDown();
        if (refusesWrites) throw automation::Error(automation::errors::DiskFull);
    }

    platform::Registry& real_;
};

/// A test over this system's registry, where `key_` is a path of its own.
class SettingsTest : public testing::Test {
protected:
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
    tests::TestPlatform fakes_;
    platform::Registry& real_ = *fakes_.registry;
    FaultyRegistry registry_{real_};
    platform::Platform platform_{.messageBox = fakes_.messageBox, .registry = registry_};
    RegistryOperations operations_{platform_};
};

} // namespace tarncom32::settings
