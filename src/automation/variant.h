#pragma once

#include "automation/boolean.h"
#include "automation/object.h"
#include "automation/record.h"
#include "automation/string.h"

#include <cstdint>
#include <memory>
#include <type_traits>
#include <variant>

namespace tarncom32::automation {

class Array;

/// The type of a value, numbered as automation numbers them (`VarType` of a script).
enum class VariantType : std::uint16_t {
    Empty = 0,
    Null = 1,
    Integer = 2, ///< 16 bits, signed
    Long = 3,    ///< 32 bits, signed
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Object = 9,
    Error = 10,
    Boolean = 11,
    Variant = 12,
    Unknown = 13, ///< an object reference that offers no late binding
    Decimal = 14,
    SignedByte = 16,
    Byte = 17,
    UnsignedInteger = 18, ///< 16 bits
    UnsignedLong = 19,    ///< 32 bits
    LongLong = 20,
    UnsignedLongLong = 21,
    Record = 36,
    Array = 0x2000, ///< set together with the type of the elements
};

/// Automation's Null: a value that is known to be no value.
struct Null {
    friend constexpr bool operator==(Null, Null) = default;
};

/// A fixed-point number with four decimal places.
struct Currency {
    std::int64_t tenThousandths = 0;
    friend constexpr bool operator==(Currency, Currency) = default;
};

/// Days since 30 December 1899; the fraction is the time of day.
struct Date {
    double days = 0;
    friend constexpr bool operator==(Date, Date) = default;
};

/// A decimal number: a 96-bit whole number divided by ten to the power of `scale` (0 to 28).
struct Decimal {
    std::uint32_t high = 0;
    std::uint64_t low = 0;
    std::uint8_t scale = 0;
    bool negative = false;
    constexpr bool isZero() const { return high == 0 && low == 0; }
    friend constexpr bool operator==(Decimal, Decimal) = default;
};

/// An error value (an HRESULT); the one below stands for an argument that the caller left out.
struct ErrorValue {
    std::int32_t code = 0;
    friend constexpr bool operator==(ErrorValue, ErrorValue) = default;
};
inline constexpr ErrorValue kMissing{static_cast<std::int32_t>(0x80020004)};

/// A whole number of a type that the host languages do not have; `type` says which, `bits` holds it, a narrower
/// signed one with its sign extended.
struct OtherInteger {
    VariantType type = VariantType::LongLong;
    std::uint64_t bits = 0;
    friend constexpr bool operator==(OtherInteger, OtherInteger) = default;
};

/// Owns an array and copies it whole.
class ArrayBox {
public:
    explicit ArrayBox(Array array);
    ArrayBox(const ArrayBox& other);
    ArrayBox(ArrayBox&& other) noexcept;
    ArrayBox& operator=(ArrayBox other) noexcept;
    ~ArrayBox();
    Array& operator*() const noexcept { return *array_; }
    friend bool operator==(const ArrayBox& left, const ArrayBox& right);

private:
    std::unique_ptr<Array> array_;
};

/// The automation value: any of the types above, an object reference, or an array. Values are copied whole, arrays
/// included; object references share their object.
class Variant {
public:
    Variant() noexcept = default;
    Variant(Null value) noexcept : value_(value) {}
    Variant(std::uint8_t value) noexcept : value_(value) {}
    Variant(std::int16_t value) noexcept : value_(value) {}
    Variant(std::int32_t value) noexcept : value_(value) {}
    Variant(float value) noexcept : value_(value) {}
    Variant(double value) noexcept : value_(value) {}
    Variant(Currency value) noexcept : value_(value) {}
    Variant(Date value) noexcept : value_(value) {}
    Variant(Decimal value) noexcept : value_(value) {}
    Variant(ErrorValue value) noexcept : value_(value) {}
    Variant(OtherInteger value) noexcept : value_(value) {}
    Variant(Record value) noexcept : value_(std::move(value)) {}
    Variant(Boolean value) noexcept : value_(value) {}
    Variant(bool value) noexcept : value_(Boolean(value)) {}
    Variant(String value) noexcept : value_(std::move(value)) {}
    Variant(StringView value) : value_(String(value)) {}
    Variant(const char16_t* value) : value_(String(value)) {}
    template <class T>
    requires std::is_base_of_v<Object, T> Variant(const Ref<T>& value)
    noexcept : value_(ObjectRef(value)) {}
    Variant(ObjectRef&& value) noexcept : value_(std::move(value)) {}
    Variant(Array value);
    /// An enumeration member travels as its 32-bit value.
    template <class E>
    requires std::is_enum_v<E> Variant(E value)
    noexcept : value_(static_cast<std::int32_t>(value)) {}

    Variant(const Variant&) = default;
    Variant& operator=(const Variant&) = default;
    /// A value that was moved from is Empty.
    Variant(Variant&& other) noexcept : value_(std::move(other.value_)) { other.value_.emplace<0>(); }
    Variant& operator=(Variant&& other) noexcept {
        if (this == &other) return *this;
        // What was held goes last: `other` may be an element of it, and the end of an object may come back to this.
        [[maybe_unused]] const Value before = std::exchange(value_, std::exchange(other.value_, {}));
        return *this;
    }
    ~Variant() = default;

    /// The type; for an array `VariantType::Array` together with the type of its elements.
    VariantType type() const noexcept;

    bool isEmpty() const noexcept { return value_.index() == 0; }
    bool isMissing() const noexcept {
        const auto* error = std::get_if<ErrorValue>(&value_);
        return error && *error == kMissing;
    }
    bool isArray() const noexcept { return std::holds_alternative<ArrayBox>(value_); }
    bool isObject() const noexcept { return std::holds_alternative<ObjectRef>(value_); }

    /// The value if it is held as exactly a `T`, else null: no conversion.
    template <class T>
    T* as() noexcept {
        if constexpr (std::is_same_v<T, Array>) {
            auto* box = std::get_if<ArrayBox>(&value_);
            return box ? &**box : nullptr;
        } else {
            return std::get_if<T>(&value_);
        }
    }
    template <class T>
    const T* as() const noexcept {
        return const_cast<Variant*>(this)->as<T>();
    }

    /// Same type and same value; objects by identity, arrays element by element.
    friend bool operator==(const Variant&, const Variant&) = default;

private:
    using Value = std::variant<std::monostate, Null, std::uint8_t, std::int16_t, std::int32_t, float, double, Currency,
                               Date, Decimal, ErrorValue, OtherInteger, Record, Boolean, String, ObjectRef, ArrayBox>;

    Value value_;
};

} // namespace tarncom32::automation

#include "automation/object_calls.h"
