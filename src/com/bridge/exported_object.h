#pragma once

#include "automation/object.h"
#include "com/bridge/com_ptr.h"

/// Our objects as COM callers see them.
namespace tarncom32::com {

/// The object's IDispatch, counted; null for Nothing. It is the same pointer as long as anybody holds it, and at the
/// same time that of the class's own dual interface; for an object from outside it is the object itself, and null too
/// when that has no late binding. Throws `std::bad_alloc`.
IDispatch* exportObject(const automation::ObjectRef& object);

/// The same for those who ask for no more than IUnknown, which every object has.
IUnknown* exportUnknown(const automation::ObjectRef& object);

/// The object whose identity (what it gives for IUnknown) this is; null when it is none that this module exports.
automation::Object* ownObjectBehind(IUnknown* identity) noexcept;

} // namespace tarncom32::com
