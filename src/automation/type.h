#pragma once

#include "automation/array.h"

namespace tarncom32::automation {

/// The published name of an enumeration: what the function `publishedName` that stands beside its declaration says.
template <class E>
inline constexpr StringView kEnumerationName = publishedName(E{});

/// The declared type of a parameter or a result.
struct Type {
    VariantType type = VariantType::Empty; ///< of an array: the type of its elements. Empty: no result
    bool isArray = false;
    StringView name; ///< of an enumeration, of a record, or of the class of an object; empty otherwise

    friend bool operator==(const Type&, const Type&) = default;
};

/// The type as a Visual Basic declaration writes it: "String", "Variant()", "eCOLORS"; "" for no result.
String typeText(const Type& type);

namespace detail {

template <class T>
struct TypeOf;
template <VariantType V>
struct PlainType {
    static constexpr Type value{V, false, {}};
};
template <>
struct TypeOf<void> : PlainType<VariantType::Empty> {};
template <>
struct TypeOf<StringView> : PlainType<VariantType::String> {};
template <>
struct TypeOf<String> : PlainType<VariantType::String> {};
template <>
struct TypeOf<Boolean> : PlainType<VariantType::Boolean> {};
template <>
struct TypeOf<std::uint8_t> : PlainType<VariantType::Byte> {};
template <>
struct TypeOf<std::int16_t> : PlainType<VariantType::Integer> {};
template <>
struct TypeOf<std::int32_t> : PlainType<VariantType::Long> {};
template <>
struct TypeOf<float> : PlainType<VariantType::Single> {};
template <>
struct TypeOf<double> : PlainType<VariantType::Double> {};
template <>
struct TypeOf<Currency> : PlainType<VariantType::Currency> {};
template <>
struct TypeOf<Date> : PlainType<VariantType::Date> {};
template <>
struct TypeOf<Variant> : PlainType<VariantType::Variant> {};
template <>
struct TypeOf<ObjectRef> : PlainType<VariantType::Object> {};
template <>
struct TypeOf<std::unique_ptr<Enumerator>> : PlainType<VariantType::Unknown> {};
template <>
struct TypeOf<Array> {
    static constexpr Type value{VariantType::Variant, true, {}};
};
template <VariantType E>
struct TypeOf<ArrayRef<E>> {
    static constexpr Type value{E, true, {}};
};
template <class T>
struct TypeOf<Ref<T>> {
    static constexpr Type value{VariantType::Object, false, T::kClassName};
};
template <PublishedRecord R>
struct TypeOf<R> {
    static constexpr Type value{VariantType::Record, false, R::kRecord.name};
};
template <class E>
requires std::is_enum_v<E>
struct TypeOf<E> {
    static constexpr Type value{VariantType::Long, false, kEnumerationName<E>};
};

} // namespace detail

template <class T>
inline constexpr Type kTypeOf = detail::TypeOf<std::remove_cvref_t<T>>::value;

} // namespace tarncom32::automation
