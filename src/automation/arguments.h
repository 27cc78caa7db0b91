#pragma once

// How an argument becomes a C++ parameter, and what the member writes becomes the caller's again. One `Slot` a
// parameter: it converts when it is made and writes back when it goes, also when the member raises, because a caller's
// by-reference variable holds whatever was assigned to it before the failure.

#include "automation/class_info.h"
#include "automation/convert.h"

namespace tarncom32::automation::detail {

/// The argument for `parameter`: the caller's, or the default where it is left out. Raises 449 where it must not be.
inline const Variant& argumentOrDefault(const ParameterInfo& parameter, const Variant* argument) {
    if (argument && !argument->isMissing()) return *argument;
    if (!parameter.optional) throw Error(errors::ArgumentNotOptional);
    return parameter.defaultValue;
}

/// A flag keeps the bits of a whole number, because members tell -1 from other numbers; everything else converts.
inline Boolean toFlag(const Variant& value) {
    if (const auto* flag = value.as<Boolean>()) return *flag;
    if (const auto* number = value.as<std::int16_t>()) return Boolean::fromBits(*number);
    if (const auto* number = value.as<std::int32_t>(); number && *number >= -32768 && *number <= 32767)
        return Boolean::fromBits(static_cast<std::int16_t>(*number));
    if (const auto* number = value.as<std::uint8_t>()) return Boolean::fromBits(*number);
    return toBoolean(value);
}

/// `value` as a `T`; a missing value is the type's empty one.
template <class T>
T fromVariant(const Variant& value) {
    if constexpr (std::is_same_v<T, Variant>) {
        return value;
    } else {
        if (value.isMissing()) return T{};
        if constexpr (std::is_same_v<T, String>)
            return toText(value);
        else if constexpr (std::is_same_v<T, Boolean>)
            return toFlag(value);
        else if constexpr (std::is_same_v<T, std::uint8_t>)
            return toByte(value);
        else if constexpr (std::is_same_v<T, std::int16_t>)
            return toInteger(value);
        else if constexpr (std::is_same_v<T, std::int32_t>)
            return toLong(value);
        else if constexpr (std::is_same_v<T, float>)
            return toSingle(value);
        else if constexpr (std::is_same_v<T, double>)
            return toDouble(value);
        else if constexpr (std::is_same_v<T, Currency>)
            return toCurrency(value);
        else if constexpr (std::is_same_v<T, Date>)
            return toDate(value);
        else if constexpr (std::is_same_v<T, ObjectRef>)
            return toObject(value);
        else if constexpr (std::is_enum_v<T>)
            return static_cast<T>(toLong(value));
        else {
            // An object of one of the library's own classes.
            using C = typename T::element_type;
            const ObjectRef object = toObject(value);
            if (object && object->classInfo() != &C::describe()) throw Error(errors::TypeMismatch);
            return T(static_cast<C*>(object.get()));
        }
    }
}

/// By value.
template <class P>
class Slot {
public:
    Slot(const ParameterInfo& parameter, Variant* argument)
        : value_(fromVariant<P>(argumentOrDefault(parameter, argument))) {}
    const P& get() const { return value_; }

private:
    P value_;
};

/// Text that the member only reads: the caller's own where it is text already.
template <>
class Slot<StringView> {
public:
    Slot(const ParameterInfo& parameter, Variant* argument) {
        const Variant& value = argumentOrDefault(parameter, argument);
        if (const auto* text = value.as<String>()) {
            view_ = *text;
        } else {
            converted_ = fromVariant<String>(value);
            view_ = converted_;
        }
    }
    Slot(const Slot&) = delete;
    StringView get() const { return view_; }

private:
    String converted_;
    StringView view_;
};

template <>
class Slot<const Variant&> {
public:
    Slot(const ParameterInfo& parameter, Variant* argument) : value_(argumentOrDefault(parameter, argument)) {}
    const Variant& get() const { return value_; }

private:
    const Variant& value_;
};

/// A variant by reference: the caller's own.
template <>
class Slot<Variant&> {
public:
    Slot(const ParameterInfo& parameter, Variant* argument) {
        const Variant& value = argumentOrDefault(parameter, argument);
        target_ = argument && &value == argument ? argument : &(own_ = value);
    }
    Slot(const Slot&) = delete;
    Variant& get() { return *target_; }

private:
    Variant own_;
    Variant* target_;
};

/// By reference: a value of the parameter's type for the time of the call, then the caller's again.
template <class T>
class Slot<T&> {
public:
    Slot(const ParameterInfo& parameter, Variant* argument) {
        const Variant& value = argumentOrDefault(parameter, argument);
        if (parameter.direction != Direction::Out) value_ = fromVariant<T>(value);
        if (argument && &value == argument) target_ = argument;
    }
    Slot(const Slot&) = delete;
    ~Slot() {
        if (target_) *target_ = Variant(std::move(value_));
    }
    T& get() { return value_; }

private:
    T value_{};
    Variant* target_ = nullptr;
};

/// An array: the caller's own, in place. An argument without an array (Empty) becomes an array without bounds.
template <VariantType Element>
class Slot<ArrayRef<Element>> {
public:
    Slot(const ParameterInfo& parameter, Variant* argument) : own_(Array(Element)) {
        const Variant& value = argumentOrDefault(parameter, argument);
        const bool callers = argument && &value == argument;
        Variant& target = callers && (parameter.isByReference() || fits(value)) ? *argument : (own_ = value);
        if (target.isEmpty() || target.isMissing()) target = Array(Element);
        if (!target.isArray()) throw Error(errors::TypeMismatch);
        if (!fits(target)) target = changeType(target, kArrayType);
        array_ = target.as<Array>();
    }
    Slot(const Slot&) = delete;
    ArrayRef<Element> get() { return *array_; }

private:
    static constexpr auto kArrayType =
        static_cast<VariantType>(static_cast<unsigned>(VariantType::Array) | static_cast<unsigned>(Element));

    static bool fits(const Variant& value) {
        const Array* array = value.as<Array>();
        return array && (Element == VariantType::Variant || array->elementType() == Element);
    }

    Variant own_;
    Array* array_;
};

} // namespace tarncom32::automation::detail
