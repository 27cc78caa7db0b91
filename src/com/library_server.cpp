#include "com/bridge/applications.h"
#include "com/server/server.h"
#include "library/catalogue.h"
#include "platform/windows/system_code_page.h"
#include "platform/windows/system_message_box.h"
#include "platform/windows/user_locale.h"
#include "platform/windows/windows_files.h"
#include "platform/windows/windows_registry.h"

namespace tarncom32::com {

namespace {

/// What every object that the DLL makes gets.
struct WindowsPlatform {
    platform::windows::SystemMessageBox messageBox;
    ComApplications applications;
    platform::windows::SystemCodePage codePage;
    platform::windows::WindowsRegistry registry;
    platform::windows::WindowsFiles files{applications, codePage};
    platform::Platform platform{.messageBox = messageBox,
                                .applications = applications,
                                .codePage = codePage,
                                .registry = registry,
                                .files = files.ports()};
};

platform::Platform& windowsPlatform() {
    static WindowsPlatform windows;
    return windows.platform;
}

Server makeServer() {
    platform::windows::useUserLocale();
    const frame::PublishedLibrary& published = library::publishedLibrary();
    Server server{published.name, published.help, published.guid, {}};
    for (const frame::PublishedClass& one : published.classes) {
        const library::CatalogueEntry& entry = *library::findClass(one.info->name);
        server.classes.push_back({one.info, entry.progId(), {}});
        if (entry.create) server.classes.back().create = [create = entry.create] { return create(windowsPlatform()); };
    }
    return server;
}

} // namespace

const Server& thisServer() {
    static const Server server = makeServer();
    return server;
}

} // namespace tarncom32::com
