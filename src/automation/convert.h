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
/// Converts as automation does: any number but 0 is true (-1); "True" and "False" without regard to case, and the
/// texts "#TRUE#" and "#FALSE#"; else text is read as a number.
Boolean toBoolean(const Variant& value);
/// Booleans are written "True" and "False", numbers in their shortest form that reads back.
String toText(const Variant& value);
/// The object that the value refers to, Nothing for Empty. Raises 13 for any other value.
ObjectRef toObject(const Variant& value);

/// `value` as the type `type`, an array element by element.
Variant changeType(const Variant& value, VariantType type);

/// The number that a number parser of automation finds in the whole of `text`. Raises 13 when there is none.
double parseNumber(StringView text);

/// The number at the start of `text`, as far as it reads (`Val` of the hosts): blanks, tabs and line feeds are
/// skipped wherever they stand, the point is the decimal separator whatever the locale, &H and &O prefix hexadecimal
/// and octal numbers, and a text without a number gives 0.
double leadingNumber(StringView text);

/// `number` rounded to a whole one, a half to the even neighbour. Raise 6 when the result does not fit.
std::int16_t roundToInteger(double number);
std::int32_t roundToLong(double number);

/// The order of two values as the hosts' comparison operators give it: numbers by value, texts by character code, a
/// number against a text that is held in a variant before the text, Empty as 0 or "". Unordered when either is Null.
std::partial_ordering compare(const Variant& left, const Variant& right);

} // namespace tarncom32::automation
