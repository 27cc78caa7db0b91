#pragma once

#include "automation/decimal_digits.h"
#include "automation/string.h"

#include <optional>

namespace tarncom32::automation {

/// Whether `c` is one of the ten digits that numbers and dates are written with.
constexpr bool isDigit(char16_t c) noexcept {
    return c >= u'0' && c <= u'9';
}

/// A number as a text spells it. Hexadecimal and octal texts name a bit pattern, whose sign depends on the width of
/// the type that takes it: "&HFFFF" is -1 for 16 bits and 65535 for 32.
struct NumberSpelling {
    DecimalDigits decimal;
    std::optional<std::uint64_t> bits; ///< set for "&H" and "&O" texts; `decimal` is then unused
};

/// The number in the whole of `text` by the rules of `locale()`: blanks around it, a sign before or after it or
/// parentheses for a negative number, the currency symbol before or after it, grouping, a fraction, an exponent with
/// E or D, or &H or &O and digits. Nothing when the text is anything else. Raises 6 for more than 64 bits after &H
/// or &O.
std::optional<NumberSpelling> spelledNumber(StringView text);

/// `value` with up to `precision` significant digits (15 for a double, 7 for a single), with an exponent of at least
/// two digits when the number is 10^precision or more or less than 0.0001: "0.5", "1E+15", "1.5E-05".
String realText(double value, int precision);

} // namespace tarncom32::automation
