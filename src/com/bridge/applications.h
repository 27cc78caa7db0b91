#pragma once

#include "platform/running_applications.h"

namespace tarncom32::com {

/// The machine's automation applications: the Running Object Table and COM's own creation. It stands here, above the
/// other ports, because it makes objects of the library out of foreign ones.
class ComApplications final : public platform::RunningApplications {
public:
    automation::ObjectRef attach(automation::StringView progId) override;
    automation::ObjectRef start(automation::StringView progId) override;
};

} // namespace tarncom32::com
