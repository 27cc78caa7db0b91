#include "platform/portable/sqlite_registry.h"
#include "platform/portable/windows_1252.h"
#include "support/temporary_folder.h"
#include "support/test_registry.h"

namespace tarncom32::tests {

struct TestRegistry::Parts {
    TemporaryFolder folder;
    platform::portable::Windows1252 codePage;
    platform::portable::SqliteRegistry registry{folder.path() / "registry.sqlite", codePage};
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
    return u"Software\\TarnCom32 Tests";
}

} // namespace tarncom32::tests
