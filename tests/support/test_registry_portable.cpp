#include "platform/portable/sqlite_registry.h"
#include "platform/portable/windows_1252.h"
#include "support/temporary_folder.h"
#include "support/test_registry.h"

namespace tarncom32::tests {

std::shared_ptr<platform::Registry> testRegistry() {
    struct Parts {
        TemporaryFolder folder;
        platform::portable::Windows1252 codePage;
        platform::portable::SqliteRegistry registry{folder.path() / "registry.sqlite", codePage};
    };
    const auto parts = std::make_shared<Parts>();
    return {parts, &parts->registry};
}

automation::String testKey() {
    return u"Software\\TarnCom32 Tests";
}

} // namespace tarncom32::tests
