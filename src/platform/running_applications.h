#pragma once

#include "automation/object.h"

namespace tarncom32::platform {

/// The automation applications of this machine, by their class names ("Visio.Application").
class RunningApplications {
public:
    virtual ~RunningApplications() = default;
    /// The running instance. Raises 429 when none is running.
    virtual automation::ObjectRef attach(automation::StringView progId) = 0;
    /// A new instance. Raises 429 when the class is not there.
    virtual automation::ObjectRef start(automation::StringView progId) = 0;
};

/// Where there are none: both members raise 429.
RunningApplications& noApplications();

} // namespace tarncom32::platform
