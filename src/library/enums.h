#pragma once

#include "automation/class_info.h"

namespace tarncom32::library {

/// The class `Enums`, which carries the public enumerations in the type library: it has no members and no instances.
const automation::ClassInfo& describeEnums();

} // namespace tarncom32::library
