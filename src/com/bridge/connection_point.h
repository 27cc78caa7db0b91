#pragma once

#include "automation/events.h"
#include "com/bridge/com_ptr.h"

#include <ocidl.h>

/// The outgoing side of our objects: one connection point each, for the class's source interface.
namespace tarncom32::com {

/// The connection point of `object`, whose events and source interface it must have; counted, null without memory.
IConnectionPoint* newConnectionPoint(IConnectionPointContainer* container, automation::Object& object) noexcept;

/// The walk over the object's only connection point.
HRESULT enumerateConnectionPoints(IConnectionPointContainer* container, automation::Object& object,
                                  IEnumConnectionPoints** points) noexcept;

} // namespace tarncom32::com
