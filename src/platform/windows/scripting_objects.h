#pragma once

#include "platform/file_system_objects.h"
#include "platform/running_applications.h"

namespace tarncom32::platform::windows {

/// The system's own Scripting.FileSystemObject.
class ScriptingObjects final : public FileSystemObjects {
public:
    /// `applications` makes the objects, and must outlive this one.
    explicit ScriptingObjects(RunningApplications& applications) : applications_(applications) {}
    automation::ObjectRef create() override { return applications_.start(u"Scripting.FileSystemObject"); }

private:
    RunningApplications& applications_;
};

} // namespace tarncom32::platform::windows
