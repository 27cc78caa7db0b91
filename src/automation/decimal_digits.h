#pragma once

#include "automation/variant.h"

#include <compare>
#include <string>

namespace tarncom32::automation {

/// A decimal number of any length, exactly: what texts, Decimals and Currencies have in common. Every conversion
/// between two of them passes through it, so that nothing is lost on the way through a double.
struct DecimalDigits {
    bool negative = false;
    std::string digits; ///< '0' to '9' without leading zeros; empty for zero
    int exponent = 0;   ///< the number is `digits`, read as a whole number, times ten to this power

    bool isZero() const { return digits.empty(); }
};

DecimalDigits digitsOf(Currency value);
DecimalDigits digitsOf(Decimal value);
/// `value`, which must be finite, rounded to `precision` significant digits.
DecimalDigits digitsOf(double value, int precision);

/// The nearest double. Raises 6 when the number is too large; one that is too small gives 0.
double toDouble(const DecimalDigits& value);

/// The nearest Decimal, with as many decimal places as it needs and fit. Raises 6 when the whole part does not fit.
Decimal toDecimal(const DecimalDigits& value);

/// `value` times ten to the power of `places`, rounded to a whole number, a half to the even neighbour. Raise 6 when
/// the result does not fit.
std::int64_t toScaledSigned(const DecimalDigits& value, int places);
std::uint64_t toScaledUnsigned(const DecimalDigits& value, int places);

/// The number without an exponent, `decimalSeparator` before the fraction, no zeros at its end: "-1234.5", "0.01".
String plainText(const DecimalDigits& value, char16_t decimalSeparator);

/// The order of two numbers.
std::partial_ordering compareDigits(const DecimalDigits& left, const DecimalDigits& right);

} // namespace tarncom32::automation
