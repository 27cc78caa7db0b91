#include "automation/convert.h"
#include "automation/decimal_digits.h"
#include "automation/default_value.h"
#include "automation/error.h"

#include <array>

namespace tarncom32::automation {

namespace {

// A value whose objects have been replaced by their default members.
class Operand {
public:
    explicit Operand(const Variant& value) : value_(&value) {
        if (const auto* object = value.as<ObjectRef>()) value_ = &(own_ = defaultValue(*object));
    }
    Operand(const Operand&) = delete;
    Operand& operator=(const Operand&) = delete;
    const Variant& operator*() const { return *value_; }

private:
    Variant own_;
    const Variant* value_;
};

VariantType commonType(VariantType left, VariantType right) {
    using enum VariantType;
    constexpr std::array kStrongestFirst = {Decimal, Single, Double, Date, Currency, UnsignedLongLong};
    for (const VariantType type : kStrongestFirst)
        if (left == type || right == type) return type == Date ? Double : type == UnsignedLongLong ? Decimal : type;
    return LongLong;
}

std::partial_ordering compareAs(VariantType type, const Variant& left, const Variant& right) {
    switch (type) {
    case VariantType::Decimal:
        return compareDigits(digitsOf(toDecimal(left)), digitsOf(toDecimal(right)));
    case VariantType::Single:
        return toSingle(left) <=> toSingle(right);
    case VariantType::Double:
        return toDouble(left) <=> toDouble(right);
    case VariantType::Currency:
        return toCurrency(left).tenThousandths <=> toCurrency(right).tenThousandths;
    default:
        return static_cast<std::int64_t>(changeType(left, type).as<OtherInteger>()->bits) <=>
               static_cast<std::int64_t>(changeType(right, type).as<OtherInteger>()->bits);
    }
}

std::partial_ordering compareNumbers(const Variant& left, const Variant& right) {
    if (left.as<std::int32_t>() && right.as<std::int32_t>())
        return *left.as<std::int32_t>() <=> *right.as<std::int32_t>();
    const VariantType type = commonType(left.type(), right.type());
    try {
        return compareAs(type, left, right);
    } catch (const Error& error) {
        if (error.number() != errors::Overflow || type == VariantType::Double) throw;
        return compareAs(VariantType::Double, left, right);
    }
}

bool isIncomparable(const Variant& value) {
    return value.isArray() || value.as<Record>();
}

} // namespace

std::partial_ordering compare(const Variant& leftValue, const Variant& rightValue) {
    const Operand leftOperand(leftValue), rightOperand(rightValue);
    const Variant& left = *leftOperand;
    const Variant& right = *rightOperand;
    const auto* leftText = left.as<String>();
    const auto* rightText = right.as<String>();
    if (leftText && rightText) return *leftText <=> *rightText;

    if (isIncomparable(left) || isIncomparable(right)) throw Error(errors::TypeMismatch);
    if (left.as<ErrorValue>() && right.as<ErrorValue>()) return std::partial_ordering::equivalent;
    if (left.as<ErrorValue>() || right.as<ErrorValue>()) throw Error(errors::TypeMismatch);
    if (left.as<Null>() || right.as<Null>()) return std::partial_ordering::unordered;

    if (leftText) return right.isEmpty() ? *leftText <=> String() : std::partial_ordering::greater;
    if (rightText) return left.isEmpty() ? String() <=> *rightText : std::partial_ordering::less;
    return compareNumbers(left, right);
}

} // namespace tarncom32::automation
