#pragma once

#include "automation/array.h"
#include "automation/vtable.h"
#include "com/bridge/com_ptr.h"

/// VARIANT and SAFEARRAY to and from the library's own values.
namespace tarncom32::com {

/// The system's view of a VARIANT, and the core's, which can be read as any type.
inline VARIANT& asVariant(automation::vtable::Value& value) noexcept {
    return reinterpret_cast<VARIANT&>(value);
}
inline const VARIANT& asVariant(const automation::vtable::Value& value) noexcept {
    return reinterpret_cast<const VARIANT&>(value);
}

/// The value that `value` holds or refers to. Raises 13 for a null reference and for an array of several dimensions,
/// 458 for a type that automation does not have, for a reference to a reference, and for arrays that are nested in
/// themselves or deeper than `automation::kDeepestNesting`.
automation::Variant fromVariant(const VARIANT& value);

/// The record that `value` holds or refers to, where it stands: good for as long as `value` is. Raises 13 for what is
/// no record.
automation::Record recordIn(const VARIANT& value);

/// The text that `value` holds itself, where it stands; false for anything else. A variable that it refers to may be
/// given another text by whoever the member calls, and does not count.
bool textIn(const VARIANT& value, automation::StringView& text) noexcept;

/// Gives `target`, whatever it holds, a value. An array without bounds becomes a null array. Throws `std::bad_alloc`,
/// and raises 458 for a record that this system does not know; `target` is VT_EMPTY then.
void toVariant(VARIANT& target, automation::Variant&& value);

/// The array; one without bounds for null. Raises 13 for several dimensions, and for another element type than
/// `element` unless that is `Variant`; for its elements as `fromVariant` does.
automation::Array fromSafeArray(SAFEARRAY* array, automation::VariantType element);

// ---- What goes back to callers: converted first, then put in place by a step that cannot fail. ----

using automation::vtable::Assignment;

/// Prepares the replacement of what `target` holds, or of what it refers to: there the value takes the type of the
/// variable referred to. A value that reads the same stays. An array of the same size and type takes the elements where
/// it stands. Raises 13, 6 and the like for what cannot be converted, 10 for an array that is fixed or locked.
void prepareAssignment(Assignment& assignment, VARIANT& target, automation::Variant&& value);
void prepareAssignment(Assignment& assignment, SAFEARRAY*& target, automation::Array&& value);
/// Exchanges the value with what is in its place.
void commit(Assignment& assignment) noexcept;

/// A new array; null for one without bounds.
SAFEARRAY* newSafeArray(automation::Array&& value);

} // namespace tarncom32::com
