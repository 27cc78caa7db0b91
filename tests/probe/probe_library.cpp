#include "probe/probe_library.h"

#include "probe/probe.h"

namespace tarncom32::com::testing {

const frame::PublishedLibrary& probeLibrary() {
    static const frame::PublishedLibrary library{u"TarnProbe",
                                                 u"TarnProbe 1.0 server of the tests",
                                                 "bb6330e3-1253-417e-91bf-cbf7ce05f4fd"_guid,
                                                 frame::enumerations(),
                                                 frame::records(),
                                                 {{&Probe::describe(), frame::Instancing::Creatable}}};
    return library;
}

} // namespace tarncom32::com::testing
