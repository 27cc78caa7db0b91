#include "automation/decimal_digits.h"

#include "automation/error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <optional>
#include <system_error>

namespace tarncom32::automation {

namespace {

constexpr int kMaxScale = 28;         // decimal places of a Decimal
constexpr std::size_t kMaxWhole = 29; // digits of the largest 96-bit number

// A 96-bit number, lowest part first: 32-bit targets have no wider integer to calculate with.
using Limbs = std::array<std::uint32_t, 3>;

void stripTrailingZeros(DecimalDigits& value) {
    while (!value.digits.empty() && value.digits.back() == '0') {
        value.digits.pop_back();
        ++value.exponent;
    }
}

std::string wholeText(Limbs limbs) {
    std::string reversed;
    while (limbs != Limbs{}) {
        std::uint64_t remainder = 0;
        for (std::size_t i = limbs.size(); i-- > 0;) {
            const std::uint64_t part = (remainder << 32) | limbs[i];
            limbs[i] = static_cast<std::uint32_t>(part / 10);
            remainder = part % 10;
        }
        reversed.push_back(static_cast<char>('0' + remainder));
    }
    std::reverse(reversed.begin(), reversed.end());
    return reversed;
}

std::optional<Limbs> limbsOf(const std::string& digits) {
    if (digits.size() > kMaxWhole) return std::nullopt;
    Limbs limbs{};
    for (const char digit : digits) {
        std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
        for (std::uint32_t& limb : limbs) {
            carry += static_cast<std::uint64_t>(limb) * 10;
            limb = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        if (carry) return std::nullopt;
    }
    return limbs;
}

bool roundsUp(std::string_view kept, std::string_view dropped) {
    if (dropped.front() != '5') return dropped.front() > '5';
    if (dropped.find_first_not_of('0', 1) != std::string_view::npos) return true;
    return !kept.empty() && (kept.back() - '0') % 2 != 0;
}

void increment(std::string& digits) {
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
    digits.insert(digits.begin(), '1');
}

// The magnitude of `value` times ten to the power of `places` as a whole number, a half rounded to even.
std::string scaledMagnitude(const DecimalDigits& value, int places) {
    if (value.isZero()) return {};
    const int shift = value.exponent + places;
    if (shift >= 0) {
        // No caller holds more than 29 digits, so what is longer need not be written out.
        if (static_cast<std::size_t>(shift) > kMaxWhole) throw Error(errors::Overflow);
        return value.digits + std::string(static_cast<std::size_t>(shift), '0');
    }
    const auto drop = static_cast<std::size_t>(-shift);
    if (drop > value.digits.size()) return {};
    std::string kept = value.digits.substr(0, value.digits.size() - drop);
    if (roundsUp(kept, std::string_view(value.digits).substr(kept.size()))) increment(kept);
    return kept;
}

// Digits before the decimal point; zero or less for a number below 1.
std::int64_t wholeDigits(const DecimalDigits& value) {
    return static_cast<std::int64_t>(value.digits.size()) + value.exponent;
}

std::partial_ordering compareMagnitudes(const DecimalDigits& left, const DecimalDigits& right) {
    if (left.isZero() || right.isZero()) return !left.isZero() <=> !right.isZero();
    if (wholeDigits(left) != wholeDigits(right)) return wholeDigits(left) <=> wholeDigits(right);
    // Both start at the same place, so their texts compare as the numbers do once trailing zeros are gone.
    DecimalDigits first = left, second = right;
    stripTrailingZeros(first);
    stripTrailingZeros(second);
    return first.digits.compare(second.digits) <=> 0;
}

} // namespace

DecimalDigits digitsOf(Currency value) {
    DecimalDigits result{value.tenThousandths < 0, {}, -4};
    const auto bits = static_cast<std::uint64_t>(value.tenThousandths);
    if (bits != 0) result.digits = std::to_string(result.negative ? 0 - bits : bits);
    stripTrailingZeros(result);
    return result;
}

DecimalDigits digitsOf(Decimal value) {
    DecimalDigits result{value.negative, {}, -static_cast<int>(value.scale)};
    result.digits =
        wholeText({static_cast<std::uint32_t>(value.low), static_cast<std::uint32_t>(value.low >> 32), value.high});
    stripTrailingZeros(result);
    return result;
}

DecimalDigits digitsOf(double value, int precision) {
    DecimalDigits result;
    if (value == 0) return result;
    char text[48];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, precision - 1).ptr;
    const std::string_view view(text, static_cast<std::size_t>(end - text));
    const std::size_t mark = view.find('e');
    result.negative = value < 0;
    for (const char c : view.substr(0, mark))
        if (c >= '0' && c <= '9') result.digits.push_back(c);
    result.exponent = std::atoi(std::string(view.substr(mark + 1)).c_str()) - (precision - 1);
    stripTrailingZeros(result);
    return result;
}

double toDouble(const DecimalDigits& value) {
    if (value.isZero()) return 0;
    const std::string text = value.digits + 'e' + std::to_string(value.exponent);
    double result = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), result).ec == std::errc::result_out_of_range) {
        if (wholeDigits(value) > 0) throw Error(errors::Overflow);
        return 0;
    }
    return value.negative ? -result : result;
}

Decimal toDecimal(const DecimalDigits& number) {
    DecimalDigits value = number;
    stripTrailingZeros(value);
    for (int scale = std::clamp(-value.exponent, 0, kMaxScale); scale >= 0; --scale) {
        // Too many digits before the point for this scale: no need to write them out.
        if (wholeDigits(value) + scale > static_cast<std::int64_t>(kMaxWhole)) continue;
        const auto limbs = limbsOf(scaledMagnitude(value, scale));
        if (!limbs) continue;
        const Limbs& parts = *limbs;
        Decimal result;
        result.high = parts[2];
        result.low = (static_cast<std::uint64_t>(parts[1]) << 32) | parts[0];
        result.scale = result.isZero() ? std::uint8_t{0} : static_cast<std::uint8_t>(scale);
        result.negative = value.negative && !result.isZero();
        return result;
    }
    throw Error(errors::Overflow);
}

std::uint64_t toScaledUnsigned(const DecimalDigits& value, int places) {
    const std::string digits = scaledMagnitude(value, places);
    std::uint64_t magnitude = 0;
    if (digits.empty()) return magnitude;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), magnitude).ec != std::errc{} || value.negative)
        throw Error(errors::Overflow);
    return magnitude;
}

std::int64_t toScaledSigned(const DecimalDigits& value, int places) {
    std::string digits = scaledMagnitude(value, places);
    if (value.negative) digits.insert(digits.begin(), '-');
    std::int64_t result = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), result).ec == std::errc::result_out_of_range)
        throw Error(errors::Overflow);
    return result;
}

String plainText(const DecimalDigits& value, char16_t decimalSeparator) {
    if (value.isZero()) return u"0";
    DecimalDigits shortest = value;
    stripTrailingZeros(shortest);
    String text = value.negative ? u"-" : u"";
    const std::int64_t whole = wholeDigits(shortest);
    if (whole <= 0) text.push_back(u'0');
    const auto split = static_cast<std::size_t>(std::clamp<std::int64_t>(whole, 0, std::ssize(shortest.digits)));
    text.append(shortest.digits.begin(), shortest.digits.begin() + static_cast<std::ptrdiff_t>(split));
    if (whole > 0) text.append(static_cast<std::size_t>(whole) - split, u'0');
    if (split == shortest.digits.size()) return text;
    text.push_back(decimalSeparator);
    if (whole < 0) text.append(static_cast<std::size_t>(-whole), u'0');
    text.append(shortest.digits.begin() + static_cast<std::ptrdiff_t>(split), shortest.digits.end());
    return text;
}

std::partial_ordering compareDigits(const DecimalDigits& left, const DecimalDigits& right) {
    const bool leftBelow = left.negative && !left.isZero();
    const bool rightBelow = right.negative && !right.isZero();
    if (leftBelow != rightBelow) return rightBelow <=> leftBelow;
    return leftBelow ? compareMagnitudes(right, left) : compareMagnitudes(left, right);
}

} // namespace tarncom32::automation
