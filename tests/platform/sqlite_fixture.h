#pragma once

#include "automation/error.h"
#include "platform/portable/sqlite_registry.h"
#include "platform/portable/windows_1252.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>

namespace tarncom32::platform::portable {

inline constexpr std::int32_t kRoot = registry_root::kCurrentUser;
inline constexpr std::size_t kNoLimit = std::size_t{1} << 30;

class SqliteRegistryTest : public testing::Test {
protected:
    /// The error that `call` raises, as its number and description; 0 when it raises none.
    static std::pair<std::int32_t, std::string> errorOf(const std::function<void()>& call) {
        try {
            call();
        } catch (const automation::Error& error) {
            return {error.number(), error.what()};
        }
        return {0, ""};
    }
    static std::string contentsOf(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void writeFile(std::string_view contents) const {
        std::ofstream(file_, std::ios::binary | std::ios::trunc)
            .write(contents.data(), static_cast<std::streamsize>(contents.size()));
    }

    std::unique_ptr<RegistryKey> create(std::string_view path) { return registry_.create(kRoot, path); }
    std::unique_ptr<RegistryKey> open(std::string_view path, RegistryAccess access = RegistryAccess::Full) {
        return registry_.open(kRoot, path, access);
    }
    /// The bytes of a value; "(none)" when it is missing.
    static std::string bytesOf(RegistryKey& key, std::string_view name) {
        RegistryValue value;
        return key.read(name, kNoLimit, value) == RegistryRead::Done ? value.bytes : "(none)";
    }
    /// The names of a key's values, in order.
    static std::vector<std::string> namesIn(RegistryKey& key) {
        std::vector<std::string> names;
        RegistryValue value;
        for (std::uint32_t i = 0; key.valueAt(i, kNoLimit, kNoLimit, value) == RegistryRead::Done; ++i)
            names.push_back(value.name);
        return names;
    }

    tests::TemporaryFolder folder_;
    std::filesystem::path file_ = folder_.path() / "data" / "registry.sqlite";
    Windows1252 codePage_;
    SqliteRegistry registry_{file_, codePage_};
};

} // namespace tarncom32::platform::portable
