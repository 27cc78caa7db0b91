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

/// A surrounding without applications: both members raise 429.
class NoApplications final : public RunningApplications {
public:
    automation::ObjectRef attach(automation::StringView progId) override;
    automation::ObjectRef start(automation::StringView progId) override;
};

} // namespace tarncom32::platform
