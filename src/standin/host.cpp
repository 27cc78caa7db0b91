#include "standin/host.h"

#include "automation/take_out.h"

#include <algorithm>

namespace tarncom32::standin {

namespace {

void requireClass(StringView progId) {
    for (const StringView known : {StringView(u"Visio.Application"), StringView(u"TarnVisioStandIn.Application")}) {
        if (!automation::equalsIgnoreCase(progId.substr(0, known.size()), known)) continue;
        const StringView version = progId.substr(known.size());
        if (version.empty()) return;
        if (version.size() > 1 && version.find_first_not_of(u"0123456789", 1) == StringView::npos &&
            version.front() == u'.')
            return;
    }
    throw Error(automation::errors::CannotCreateObject);
}

} // namespace

Host::~Host() {
    while (!running_.empty())
        running_.front()->quit();
}

ObjectRef Host::attach(StringView progId) {
    requireClass(progId);
    if (running_.empty()) throw Error(automation::errors::CannotCreateObject);
    return running_.front();
}

ObjectRef Host::start(StringView progId) {
    requireClass(progId);
    return startApplication();
}

Ref<Application> Host::startApplication(ApplicationOptions options) {
    Ref<Application> application = standin::startApplication(std::move(options));
    Application* const started = application.get();
    application->onQuit = [this, started] {
        const auto found = std::ranges::find(running_, started, &Ref<Application>::get);
        if (found != running_.end()) const Ref<Application> gone = automation::takeOut(running_, found);
    };
    running_.push_back(application);
    return application;
}

} // namespace tarncom32::standin
