#include "com/server/server.h"
#include "probe/probe.h"
#include "probe/probe_library.h"

namespace tarncom32::com {

const Server& thisServer() {
    using testing::Probe;
    const frame::PublishedLibrary& library = testing::probeLibrary();
    static const Server server{library.name, library.help, library.guid, {{&Probe::describe(), u"TarnProbe.Probe", [] {
                                                                               return automation::make<Probe>();
                                                                           }}}};
    return server;
}

} // namespace tarncom32::com
