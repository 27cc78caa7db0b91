#pragma once

#include "frame/published_library.h"

namespace tarncom32::com::testing {

/// The type library of the server TarnProbe, which has the class `Probe` and nothing else to create.
const frame::PublishedLibrary& probeLibrary();

} // namespace tarncom32::com::testing
