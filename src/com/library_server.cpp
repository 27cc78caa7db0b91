#include "com/bridge/applications.h"
#include "com/server/server.h"
#include "frame/report.h"
#include "library/library.h"
#include "library/type_library.h"
#include "platform/windows/system_code_page.h"
#include "platform/windows/system_message_box.h"
#include "platform/windows/user_locale.h"
#include "platform/windows/windows_files.h"
#include "platform/windows/windows_registry.h"

namespace tarncom32::com {

namespace {

/// The surroundings of every object that the DLL makes.
struct WindowsSurroundings {
    platform::windows::SystemMessageBox messageBox;
    ComApplications applications;
    platform::windows::SystemCodePage codePage;
    platform::windows::WindowsRegistry registry;
    platform::windows::WindowsFiles files{applications, codePage};
    platform::Platform platform{messageBox, applications, codePage, registry, files.ports()};
};

platform::Platform& windowsPlatform() {
    static WindowsSurroundings surroundings;
    return surroundings.platform;
}

Server makeServer() {
    platform::windows::useUserLocale();
    Server server{frame::kLibraryName, library::kTypeLibraryHelp, library::kTypeLibraryId, {}};
    for (const library::BuiltClass& built : library::builtClasses()) {
        const automation::ClassInfo& info = built.describe();
        if (built.create)
            server.classes.push_back({&info, frame::findClass(info.name)->progId(),
                                      [create = built.create] { return create(windowsPlatform()); }});
        else
            server.classes.push_back({&info, {}, {}});
    }
    return server;
}

} // namespace

const Server& thisServer() {
    static const Server server = makeServer();
    return server;
}

} // namespace tarncom32::com
