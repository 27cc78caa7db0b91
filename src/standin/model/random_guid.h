#pragma once

#include "automation/guid.h"

namespace tarncom32::standin {

/// A new random GUID (version 4).
automation::Guid randomGuid();

} // namespace tarncom32::standin
