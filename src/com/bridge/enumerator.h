#pragma once

#include "automation/object.h"
#include "com/bridge/com_ptr.h"

namespace tarncom32::com {

/// The walk as IEnumVARIANT, counted.
IEnumVARIANT* exportEnumerator(std::unique_ptr<automation::Enumerator> walk);

} // namespace tarncom32::com
