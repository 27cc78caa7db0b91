#pragma once

// How an argument of a late-bound call becomes a C++ parameter, and what the member writes becomes the caller's again.
// One `Slot` a parameter: it converts when it is made and writes back when it goes, also when the member raises,
// because a caller's by-reference variable holds whatever was assigned to it before the failure. A variable that the
// member did not write stays as it is, of its own type.

#include "automation/class_info.h"
#include "automation/convert.h"
#include "automation/error.h"

#include <optional>
#include <tuple>

namespace tarncom32::automation {

/// An argument of a late-bound call: a value, the caller's own or made for the call; for a text that is only read
/// perhaps just the text; or nothing where it is left out.
class LateArgument {
public:
    constexpr LateArgument() noexcept = default;
    explicit constexpr LateArgument(Variant& value) noexcept : value_(&value) {}
    /// For parameters of type String that are not by reference; a null text is the empty one.
    explicit constexpr LateArgument(StringView text) noexcept
        : text_(text.data() ? text : StringView(u"", std::size_t{0})) {}

    bool isMissing() const noexcept { return value_ ? value_->isMissing() : !text_.data(); }
    /// Null where the argument is not just a text.
    const StringView* text() const noexcept { return text_.data() ? &text_ : nullptr; }
    /// Null where it is left out, or just a text.
    Variant* value() const noexcept { return value_; }

    /// Notes that the value was, or may have been, written.
    void setWritten() noexcept { written_ = true; }
    bool isWritten() const noexcept { return written_; }

private:
    Variant* value_ = nullptr;
    StringView text_;
    bool written_ = false;
};

} // namespace tarncom32::automation

namespace tarncom32::automation::detail {

/// What an omitted argument stands for. Raises 449 where it must not be left out.
inline const Variant& defaultOf(const ParameterInfo& parameter) {
    if (!parameter.optional) throw Error(errors::ArgumentNotOptional);
    return parameter.defaultValue;
}

/// The argument for `parameter`, or the default where it is left out.
inline const Variant& argumentOrDefault(const ParameterInfo& parameter, const LateArgument& argument) {
    return argument.isMissing() ? defaultOf(parameter) : *argument.value();
}

/// `value` as a flag: only True and -1, in whatever type they come, become exactly True, because members tell these
/// from other numbers. Any number but 0 and -1 is another one still: itself where it is whole and has 16 bits, else 1.
Boolean toFlag(const Variant& value);

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

/// The value of a by-reference parameter for the time of a call, and whether the member has written it.
template <class T>
class Written {
public:
    /// `read` gives the caller's value; `isExact` says that the caller's variable holds a `T` already. A parameter that
    /// is only written (`Direction::Out`) takes whatever the variable holds, and a variable of another type counts as
    /// written, because what it held means nothing to the member.
    template <class Read>
    Written(Direction direction, bool isExact, Read&& read) : hadOther_(direction == Direction::Out && !isExact) {
        try {
            value = read();
        } catch (const Error&) {
            if (direction != Direction::Out) throw;
        }
        before_ = value;
    }

    /// Whether it is not what it was: what was written again as it stood counts as not written.
    bool isWritten() const { return hadOther_ || value != before_; }

    T value{};

private:
    T before_{};
    bool hadOther_;
};

/// By value.
template <class P>
class Slot {
public:
    Slot(const ParameterInfo& parameter, const LateArgument& argument)
        : value_(fromVariant<P>(argumentOrDefault(parameter, argument))) {}
    const P& get() const { return value_; }

private:
    P value_;
};

template <>
class Slot<String> {
public:
    Slot(const ParameterInfo& parameter, const LateArgument& argument)
        : value_(argument.text() ? String(*argument.text()) : toText(argumentOrDefault(parameter, argument))) {}
    const String& get() const { return value_; }

private:
    String value_;
};

/// Text that the member only reads: the caller's own where it is text already.
template <>
class Slot<StringView> {
public:
    Slot(const ParameterInfo& parameter, const LateArgument& argument) {
        if (argument.text()) {
            view_ = *argument.text();
            return;
        }
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
    Slot(const ParameterInfo& parameter, const LateArgument& argument)
        : value_(argumentOrDefault(parameter, argument)) {}
    const Variant& get() const { return value_; }

private:
    const Variant& value_;
};

/// A variant by reference: the caller's own.
template <>
class Slot<Variant&> {
public:
    Slot(const ParameterInfo& parameter, LateArgument& argument) {
        if (argument.isMissing()) {
            own_ = defaultOf(parameter);
            target_ = &own_;
        } else {
            target_ = argument.value();
            argument.setWritten();
        }
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
    Slot(const ParameterInfo& parameter, LateArgument& argument)
        : value_(parameter.direction, isExact(argument),
                 [&] { return fromVariant<T>(argumentOrDefault(parameter, argument)); }),
          argument_(argument.isMissing() ? nullptr : &argument) {}
    Slot(const Slot&) = delete;
    ~Slot() {
        if (!argument_ || !value_.isWritten()) return;
        *argument_->value() = Variant(std::move(value_.value));
        argument_->setWritten();
    }
    T& get() { return value_.value; }

private:
    static bool isExact(const LateArgument& argument) {
        if (argument.isMissing()) return true;
        if constexpr (std::is_enum_v<T>)
            return argument.value()->template as<std::int32_t>() != nullptr;
        else if constexpr (std::is_convertible_v<T, ObjectRef>)
            return argument.value()->isObject();
        else
            return argument.value()->template as<T>() != nullptr;
    }

    Written<T> value_;
    LateArgument* argument_; ///< null where it is left out
};

/// A record: always the caller's own, where it stands.
template <PublishedRecord R>
class Slot<R&> {
public:
    Slot(const ParameterInfo& parameter, const LateArgument& argument) {
        const auto* record = argumentOrDefault(parameter, argument).template as<Record>();
        if (record) fields_ = record->as<R>();
        if (!fields_) throw Error(errors::TypeMismatch);
    }
    R& get() { return *fields_; }

private:
    R* fields_ = nullptr;
};

/// An array: the caller's own, in place, where it has the wanted type of elements. Another one is converted for the
/// time of the call, and an argument without an array (Empty) becomes an array without bounds; the caller's is replaced
/// if the member changes that. An array that is only written starts without bounds whatever the caller has.
template <VariantType Element>
class Slot<ArrayRef<Element>> {
public:
    Slot(const ParameterInfo& parameter, LateArgument& argument) {
        const Variant& value = argumentOrDefault(parameter, argument);
        if (!value.isArray() && !value.isEmpty() && !value.isMissing()) throw Error(errors::TypeMismatch);
        const bool isCallers = !argument.isMissing();
        if (isCallers && parameter.direction != Direction::Out && fits(value)) {
            array_ = argument.value()->as<Array>();
            if (parameter.isByReference()) argument.setWritten();
            return;
        }
        own_ = parameter.direction == Direction::Out ? Variant(Array(Element)) : converted(value);
        array_ = own_.as<Array>();
        if (isCallers && parameter.isByReference()) target_ = &argument;
        if (target_ && parameter.direction == Direction::InOut) before_ = own_;
    }
    Slot(const Slot&) = delete;
    ~Slot() {
        if (!target_ || (before_.isEmpty() ? !array_->hasBounds() : own_ == before_)) return;
        *target_->value() = std::move(own_);
        target_->setWritten();
    }
    ArrayRef<Element> get() { return *array_; }

private:
    static bool fits(const Variant& value) {
        const Array* array = value.as<Array>();
        return array && (Element == VariantType::Variant || array->elementType() == Element);
    }
    static Variant converted(const Variant& value) {
        if (!value.isArray()) return Array(Element);
        return fits(value) ? value
                           : changeType(value, static_cast<VariantType>(static_cast<unsigned>(VariantType::Array) |
                                                                        static_cast<unsigned>(Element)));
    }

    Variant own_;
    Variant before_; ///< Empty for an array that is only written
    Array* array_ = nullptr;
    LateArgument* target_ = nullptr; ///< where `own_` goes if it is changed
};

/// The arguments of a call, made from the first to the last.
template <class Indices, class... A>
class Pack;
template <std::size_t I, class A>
struct PackLeaf {
    A argument;
};
template <std::size_t... I, class... A>
class Pack<std::index_sequence<I...>, A...> : PackLeaf<I, A>... {
public:
    /// `make.operator()<I, A>()` gives the argument at the 0-based place I.
    template <class Make>
    explicit Pack([[maybe_unused]] Make&& make) : PackLeaf<I, A>{make.template operator()<I, A>()}... {}

    /// Calls `call` with what the arguments hold.
    template <class F>
    decltype(auto) apply(F&& call) {
        return std::forward<F>(call)(static_cast<PackLeaf<I, A>&>(*this).argument.get()...);
    }
    /// Calls `visit` with each argument.
    template <class F>
    void forEach([[maybe_unused]] F&& visit) {
        (visit(static_cast<PackLeaf<I, A>&>(*this).argument), ...);
    }
};

} // namespace tarncom32::automation::detail
