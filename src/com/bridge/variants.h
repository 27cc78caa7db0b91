#pragma once

#include "automation/array.h"
#include "com/bridge/com_ptr.h"

/// VARIANT and SAFEARRAY to and from the library's own values.
namespace tarncom32::com {

/// The value that `value` holds or refers to. Raises 13 for a null reference and for an array of several dimensions,
/// 458 for a type that automation does not have.
automation::Variant fromVariant(const VARIANT& value);

/// Gives `target`, which holds nothing, a value. An array without bounds becomes a null array; memory that runs out
/// leaves VT_EMPTY.
void initVariant(VARIANT& target, automation::Variant&& value) noexcept;

/// Replaces what `target` holds, or what it refers to; there the value takes the type of the variable referred to.
/// An array of the same size and type is filled where it stands. DISP_E_TYPEMISMATCH and the like leave the target.
HRESULT assignVariant(VARIANT& target, automation::Variant&& value) noexcept;

/// The array; one without bounds for null. Raises 13 for several dimensions, and for another element type than
/// `element` unless that is `Variant`.
automation::Array fromSafeArray(SAFEARRAY* array, automation::VariantType element);

/// Puts `value` into `target`: in place where size and element type agree, else as a new array that replaces the old
/// one. DISP_E_ARRAYISLOCKED when the old one cannot go, or its size is fixed.
HRESULT assignSafeArray(SAFEARRAY*& target, const automation::Array& value) noexcept;

} // namespace tarncom32::com
