#pragma once

#include "automation/object.h"
#include "com/bridge/com_ptr.h"

namespace tarncom32::com {

/// The enumerator as IEnumVARIANT, counted.
IEnumVARIANT* exportEnumerator(std::unique_ptr<automation::Enumerator> items);

} // namespace tarncom32::com
