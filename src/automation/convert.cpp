#include "automation/convert.h"

#include "automation/date_text.h"
#include "automation/default_value.h"
#include "automation/error.h"
#include "automation/locale.h"
#include "automation/number_text.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace tarncom32::automation {

namespace {

constexpr int kDoublePrecision = 15;
constexpr int kSinglePrecision = 7;

template <class... Cases>
struct Overloads : Cases... {
    using Cases::operator()...;
};
// clang 14 does not deduce an aggregate's arguments by itself.
template <class... Cases>
Overloads(Cases...) -> Overloads<Cases...>;

/// A value read as a number, kept as exactly as it came.
using AnyNumber = std::variant<std::int64_t, std::uint64_t, float, double, Currency, Decimal, NumberSpelling>;

AnyNumber numberIn(StringView text) {
    auto number = spelledNumber(text);
    if (!number) throw Error(errors::TypeMismatch);
    return std::move(*number);
}

AnyNumber numberOf(const Variant& value) {
    switch (value.type()) {
    case VariantType::Empty:
        return std::int64_t{0};
    case VariantType::Null:
        throw Error(errors::InvalidUseOfNull);
    case VariantType::Byte:
        return std::int64_t{*value.as<std::uint8_t>()};
    case VariantType::Integer:
        return std::int64_t{*value.as<std::int16_t>()};
    case VariantType::Long:
        return std::int64_t{*value.as<std::int32_t>()};
    case VariantType::Boolean:
        return std::int64_t{value.as<Boolean>()->value};
    case VariantType::Single:
        return *value.as<float>();
    case VariantType::Double:
        return *value.as<double>();
    case VariantType::Date:
        return value.as<Date>()->days;
    case VariantType::Currency:
        return *value.as<Currency>();
    case VariantType::Decimal:
        return *value.as<Decimal>();
    case VariantType::String:
        return numberIn(*value.as<String>());
    case VariantType::Object:
        return numberOf(defaultValue(*value.as<ObjectRef>()));
    case VariantType::SignedByte:
        return std::int64_t{static_cast<std::int8_t>(value.as<OtherInteger>()->bits)};
    case VariantType::UnsignedInteger:
        return std::int64_t{static_cast<std::uint16_t>(value.as<OtherInteger>()->bits)};
    case VariantType::UnsignedLong:
        return std::int64_t{static_cast<std::uint32_t>(value.as<OtherInteger>()->bits)};
    case VariantType::LongLong:
        return static_cast<std::int64_t>(value.as<OtherInteger>()->bits);
    case VariantType::UnsignedLongLong:
        return value.as<OtherInteger>()->bits;
    default:
        throw Error(errors::TypeMismatch);
    }
}

double roundHalfToEven(double number) {
    const double below = std::floor(number);
    const double part = number - below;
    if (part != 0.5) return part < 0.5 ? below : below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <class Int>
Int roundTo(double number) {
    const double rounded = roundHalfToEven(number);
    // The limit above the largest value is a power of two and so exact, which the largest value itself need not be.
    const double above = std::ldexp(1.0, std::numeric_limits<Int>::digits);
    if (!(rounded >= static_cast<double>(std::numeric_limits<Int>::min()) && rounded < above))
        throw Error(errors::Overflow);
    return static_cast<Int>(rounded);
}

template <class Int, class Wide>
Int narrow(Wide number) {
    if (!std::in_range<Int>(number)) throw Error(errors::Overflow);
    return static_cast<Int>(number);
}

template <class Int>
Int roundTo(const DecimalDigits& number) {
    if constexpr (std::is_signed_v<Int>) return narrow<Int>(toScaledSigned(number, 0));
    return narrow<Int>(toScaledUnsigned(number, 0));
}

template <class Int>
Int roundTo(const NumberSpelling& number) {
    if (!number.bits) return roundTo<Int>(number.decimal);
    return static_cast<Int>(narrow<std::make_unsigned_t<Int>>(*number.bits));
}

template <class Int>
Int toWhole(const Variant& value) {
    // All 16 bits are taken over, cut or extended to the width: True is 255 as a byte.
    if (const auto* flag = value.as<Boolean>()) return static_cast<Int>(flag->value);
    if (const auto* object = value.as<ObjectRef>()) return toWhole<Int>(defaultValue(*object));
    const Overloads whole{
        [](std::int64_t number) { return narrow<Int>(number); },
        [](std::uint64_t number) { return narrow<Int>(number); },
        [](float number) { return roundTo<Int>(static_cast<double>(number)); },
        [](double number) { return roundTo<Int>(number); },
        [](Currency number) { return roundTo<Int>(digitsOf(number)); },
        [](Decimal number) { return roundTo<Int>(digitsOf(number)); },
        [](const NumberSpelling& number) { return roundTo<Int>(number); },
    };
    return std::visit(whole, numberOf(value));
}

OtherInteger toOtherInteger(const Variant& value, VariantType type) {
    switch (type) {
    case VariantType::SignedByte:
        return {type, static_cast<std::uint64_t>(std::int64_t{toWhole<std::int8_t>(value)})};
    case VariantType::UnsignedInteger:
        return {type, toWhole<std::uint16_t>(value)};
    case VariantType::UnsignedLong:
        return {type, toWhole<std::uint32_t>(value)};
    case VariantType::LongLong:
        return {type, static_cast<std::uint64_t>(toWhole<std::int64_t>(value))};
    default:
        return {type, toWhole<std::uint64_t>(value)};
    }
}

double doubleOf(const NumberSpelling& number) {
    return number.bits ? static_cast<double>(*number.bits) : toDouble(number.decimal);
}

DecimalDigits digitsOfReal(double number, int precision) {
    if (!std::isfinite(number)) throw Error(errors::Overflow);
    return digitsOf(number, precision);
}

DecimalDigits digitsOfWhole(std::uint64_t magnitude, bool negative) {
    DecimalDigits digits{negative, {}, 0};
    if (magnitude != 0) digits.digits = std::to_string(magnitude);
    return digits;
}

/// The value in decimal; a real one as far as its digits mean something.
DecimalDigits decimalOf(const Variant& value) {
    const Overloads digits{
        [](std::int64_t number) {
            const auto bits = static_cast<std::uint64_t>(number);
            return digitsOfWhole(number < 0 ? 0 - bits : bits, number < 0);
        },
        [](std::uint64_t number) { return digitsOfWhole(number, false); },
        [](float number) { return digitsOfReal(static_cast<double>(number), kSinglePrecision); },
        [](double number) { return digitsOfReal(number, kDoublePrecision); },
        [](Currency number) { return digitsOf(number); },
        [](Decimal number) { return digitsOf(number); },
        [](const NumberSpelling& number) { return number.bits ? digitsOfWhole(*number.bits, false) : number.decimal; },
    };
    return std::visit(digits, numberOf(value));
}

} // namespace

std::uint8_t toByte(const Variant& value) {
    if (const auto* same = value.as<std::uint8_t>()) return *same;
    return toWhole<std::uint8_t>(value);
}

std::int16_t toInteger(const Variant& value) {
    if (const auto* same = value.as<std::int16_t>()) return *same;
    return toWhole<std::int16_t>(value);
}

std::int32_t toLong(const Variant& value) {
    if (const auto* same = value.as<std::int32_t>()) return *same;
    if (const auto* narrower = value.as<std::int16_t>()) return *narrower;
    return toWhole<std::int32_t>(value);
}

double toDouble(const Variant& value) {
    if (const auto* same = value.as<double>()) return *same;
    const Overloads real{
        [](auto number) { return static_cast<double>(number); },
        [](Currency number) { return static_cast<double>(number.tenThousandths) / 10000; },
        [](Decimal number) { return toDouble(digitsOf(number)); },
        [](const NumberSpelling& number) { return doubleOf(number); },
    };
    return std::visit(real, numberOf(value));
}

float toSingle(const Variant& value) {
    if (const auto* same = value.as<float>()) return *same;
    const double number = toDouble(value);
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max())) throw Error(errors::Overflow);
    return static_cast<float>(number);
}

Currency toCurrency(const Variant& value) {
    if (const auto* same = value.as<Currency>()) return *same;
    // A real number is scaled as it is, so that none of its digits beyond the fifteenth is lost.
    if (value.as<float>() || value.as<double>() || value.as<Date>()) {
        // Stored, since the 32-bit processor's registers hold more digits and would see no half where there is one.
        const volatile double scaled = toDouble(value) * 10000;
        return {roundTo<std::int64_t>(scaled)};
    }
    return {toScaledSigned(decimalOf(value), 4)};
}

Decimal toDecimal(const Variant& value) {
    if (const auto* same = value.as<Decimal>()) return *same;
    return toDecimal(decimalOf(value));
}

Date toDate(const Variant& value) {
    if (const auto* same = value.as<Date>()) return *same;
    if (const auto* object = value.as<ObjectRef>()) return toDate(defaultValue(*object));
    if (const auto* text = value.as<String>())
        if (const auto date = spelledDate(*text)) return *date;
    const double days = toDouble(value);
    if (!isDateInRange(days)) throw Error(errors::Overflow);
    return {days};
}

Boolean toBoolean(const Variant& value) {
    if (const auto* same = value.as<Boolean>()) return *same;
    if (const auto* text = value.as<String>()) {
        if (equalsIgnoreCase(*text, u"True") || *text == u"#TRUE#") return true;
        if (equalsIgnoreCase(*text, u"False") || *text == u"#FALSE#") return false;
    }
    if (const auto* object = value.as<ObjectRef>()) return toBoolean(defaultValue(*object));
    const Overloads truth{
        [](auto number) { return number != 0; },
        [](Currency number) { return number.tenThousandths != 0; },
        [](Decimal number) { return !number.isZero(); },
        [](const NumberSpelling& number) { return doubleOf(number) != 0; },
    };
    return std::visit(truth, numberOf(value));
}

String toText(const Variant& value) {
    switch (value.type()) {
    case VariantType::String:
        return *value.as<String>();
    case VariantType::Empty:
        return {};
    case VariantType::Boolean:
        return value.as<Boolean>()->isNonZero() ? u"True" : u"False";
    case VariantType::Date:
        return dateText(*value.as<Date>());
    case VariantType::Object:
        return toText(defaultValue(*value.as<ObjectRef>()));
    default:
        break;
    }
    const Overloads text{
        [](std::int64_t number) { return decimalText(number); },
        [](float number) { return realText(static_cast<double>(number), kSinglePrecision); },
        [](double number) { return realText(number, kDoublePrecision); },
        [&value](const auto&) { return plainText(decimalOf(value), locale().decimalSeparator); },
    };
    return std::visit(text, numberOf(value));
}

ObjectRef toObject(const Variant& value) {
    if (const auto* object = value.as<ObjectRef>()) return *object;
    if (value.isEmpty()) return {};
    throw Error(errors::TypeMismatch);
}

Variant changeType(const Variant& value, VariantType type) {
    if (value.type() == type || type == VariantType::Variant) return value;
    switch (type) {
    case VariantType::Byte:
        return toByte(value);
    case VariantType::Integer:
        return toInteger(value);
    case VariantType::Long:
        return toLong(value);
    case VariantType::Single:
        return toSingle(value);
    case VariantType::Double:
        return toDouble(value);
    case VariantType::Currency:
        return toCurrency(value);
    case VariantType::Date:
        return toDate(value);
    case VariantType::String:
        return toText(value);
    case VariantType::Object:
    case VariantType::Unknown:
        return toObject(value);
    case VariantType::Boolean:
        return toBoolean(value);
    case VariantType::Decimal:
        return toDecimal(value);
    case VariantType::SignedByte:
    case VariantType::UnsignedInteger:
    case VariantType::UnsignedLong:
    case VariantType::LongLong:
    case VariantType::UnsignedLongLong:
        return toOtherInteger(value, type);
    default:
        break;
    }
    const auto bits = static_cast<unsigned>(type);
    const auto* array = value.as<Array>();
    if (!array || !(bits & static_cast<unsigned>(VariantType::Array))) throw Error(errors::TypeMismatch);
    const auto element = static_cast<VariantType>(bits & ~static_cast<unsigned>(VariantType::Array));
    if (!array->hasBounds()) return Array(element);
    std::vector<Variant> items;
    items.reserve(array->size());
    for (const Variant& item : array->items())
        items.push_back(changeType(item, element));
    return Array(element, array->lowerBound(), std::move(items));
}

double parseNumber(StringView text) {
    const auto number = spelledNumber(text);
    if (!number) throw Error(errors::TypeMismatch);
    return doubleOf(*number);
}

bool isNumeric(const Variant& value) {
    if (value.type() == VariantType::Date) return false;
    if (const auto* text = value.as<String>()) return spelledNumber(*text).has_value();
    try {
        if (const auto* object = value.as<ObjectRef>()) return isNumeric(defaultValue(*object));
        toDouble(value);
        return true;
    } catch (const Error&) {
        return false;
    }
}

std::int16_t roundToInteger(double number) {
    return roundTo<std::int16_t>(number);
}

} // namespace tarncom32::automation
