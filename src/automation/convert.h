#pragma once

#include "automation/array.h"
#include "automation/variant.h"

#include <compare>

/// OLE Automation's conversions, in one place. Each raises 13 (type mismatch) when the value has no reading of the
/// wanted type, 6 (overflow) when it does not fit, and 94 (invalid use of Null) for Null. Empty reads as 0, "", false
/// or Nothing. Text is read and numbers are written by the rules of `locale()`; numbers round half to even. An object
/// reads as the value of its default member; Nothing raises 91.
namespace tarncom32::automation {

std::uint8_t toByte(const Variant& value);
std::int16_t toInteger(const Variant& value);
std::int32_t toLong(const Variant& value);
float toSingle(const Variant& value);
double toDouble(const Variant& value);
Currency toCurrency(const Variant& value);
Date toDate(const Variant& value);
Decimal toDecimal(const Variant& value);
/// Any number but 0 is true (-1); "True" and "False" without regard to case, and the texts "#TRUE#" and "#FALSE#", are
/// read, any other text as a number. A Boolean stays as it is, bits other than -1 and 0 included: automation converts
/// nothing there.
Boolean toBoolean(const Variant& value);
/// Booleans are written "True" and "False" (any bit set is "True"), a double with up to 15 significant digits, a
/// single with up to 7, in either case as 1E+15 or 1.5E-05 when it is very large or small; dates as the locale has
/// them.
String toText(const Variant& value);
/// The object that the value refers to, Nothing for Empty. Raises 13 for any other value.
ObjectRef toObject(const Variant& value);

/// `value` as the type `type`, an array element by element to the element type that `type` names beside
/// `VariantType::Array`. Raises 13 when only one of them is an array. `VariantType::Variant` takes any value.
Variant changeType(const Variant& value, VariantType type);

/// The number that a number parser of automation finds in the whole of `text`. Raises 13 when there is none.
double parseNumber(StringView text);

/// Whether `value` is a number, Empty, a Boolean, or a text that reads as a number (`IsNumeric` of the hosts): a date,
/// Null, an error, an array, Nothing and an object whose default member fails are not.
bool isNumeric(const Variant& value);

/// The number at the start of `text`, as far as it reads (`Val` of the hosts): blanks, tabs and line feeds are
/// skipped wherever they stand, the point is the decimal separator whatever the locale, &H and &O prefix hexadecimal
/// and octal numbers, and a text without a number gives 0.
double leadingNumber(StringView text);

/// `number` rounded to a whole one, a half to the even neighbour. Raises 6 when the result does not fit.
std::int16_t roundToInteger(double number);

/// The order of two values as automation's own comparison (`VarCmp`) gives it, on which the hosts' operators rest:
/// numbers, dates and Booleans by value, texts by character code, a number before any text whatever it spells, Empty
/// as 0 or "". A Decimal compares as Decimals, else a single with 7 digits, else doubles, else Currency; where that
/// overflows, as doubles. Unordered when either is Null. Two errors are equal; an error against anything else, an array
/// or a record raises 13.
std::partial_ordering compare(const Variant& left, const Variant& right);

} // namespace tarncom32::automation
