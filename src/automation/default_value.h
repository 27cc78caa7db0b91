#pragma once

#include "automation/variant.h"

namespace tarncom32::automation {

/// The value of the object's default member, and of that value's when it is an object in turn. Raises 91 for Nothing
/// and whatever the member raises; 13 when the objects lead on and on.
Variant defaultValue(const ObjectRef& object);

} // namespace tarncom32::automation
