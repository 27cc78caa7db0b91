#include "com/bridge/exported_object.h"
#include "com/bridge/failure.h"
#include "com/server/server.h"
#include "platform/windows/user_locale.h"
#include "standin/application.h"
#include "standin/published_library.h"

#include <memory>

namespace tarncom32::com {

namespace {

namespace fs = std::filesystem;

/// An application's entry in the list of running applications, as long as this lives.
class ActiveEntry {
public:
    /// Weak: the entry alone does not keep the application running behind everybody's back.
    ActiveEntry(IUnknown* application, REFCLSID clsid) {
        const HRESULT result = RegisterActiveObject(application, clsid, ACTIVEOBJECT_WEAK, &entry_);
        if (FAILED(result)) throw automation::Error::fromHresult(static_cast<std::int32_t>(result));
    }
    ActiveEntry(const ActiveEntry&) = delete;
    ActiveEntry& operator=(const ActiveEntry&) = delete;
    ~ActiveEntry() { remove(); }

    void remove() {
        if (entry_) RevokeActiveObject(std::exchange(entry_, 0), nullptr);
    }

private:
    DWORD entry_ = 0;
};

/// File names are the system's own here.
fs::path locate(automation::StringView fileName) {
    return {std::wstring(fileName.begin(), fileName.end())};
}

/// A new application, which others can attach to until it quits.
automation::ObjectRef start() {
    const auto application = standin::startApplication({.locate = &locate});
    ComPtr<IDispatch> exported;
    *exported.put() = exportObject(application);
    const auto entry = std::make_shared<ActiveEntry>(exported.get(), toGuid(standin::Application::describe().clsid));
    application->onQuit = [entry] { entry->remove(); };
    return application;
}

Server makeServer() {
    platform::windows::useUserLocale();
    const frame::PublishedLibrary& published = standin::publishedLibrary();
    Server server{published.name, published.help, published.guid, {}};
    for (const frame::PublishedClass& one : published.classes)
        server.classes.push_back({one.info, {}, {}});
    ServerClass& application = server.classes.front();
    application.progId = automation::String(published.name) + u".Application";
    application.create = &start;
    return server;
}

} // namespace

const Server& thisServer() {
    static const Server server = makeServer();
    return server;
}

} // namespace tarncom32::com
