#pragma once

#include "automation/class_info.h"

#include <array>
#include <tuple>

namespace tarncom32::automation {

namespace member {

/// For a table's line: the parameters, counted from 1, that compiled callers pass by reference though the member only
/// reads them.
template <class... Numbers>
consteval std::uint32_t byReference(Numbers... parameters) {
    return ((1u << (parameters - 1)) | ...);
}

} // namespace member

namespace detail {

/// What a pointer to a C++ member tells of it.
template <class M>
struct MemberTraits;
template <class C, class R, class... P>
struct MemberTraits<R (C::*)(P...)> {
    using Class = C;
    using Result = R;
    using Parameters = std::tuple<P...>;
    static constexpr std::size_t kCount = sizeof...(P);
    static constexpr std::array<Type, sizeof...(P)> kTypes{kTypeOf<P>...};
    /// Whether each parameter is one that a member can write to.
    static constexpr std::array<bool, sizeof...(P)> kWritable{
        (std::is_lvalue_reference_v<P> && !std::is_const_v<std::remove_reference_t<P>>)...};
    /// A bit set for each text that the member only reads.
    static constexpr std::uint32_t kTextBits = [] {
        std::uint32_t bits = 0;
        [[maybe_unused]] std::uint32_t bit = 1;
        ((bits |= std::is_same_v<P, StringView> || std::is_same_v<P, const String&> ? bit : 0, bit <<= 1), ...);
        return bits;
    }();
};
template <class C, class R, class... P>
struct MemberTraits<R (C::*)(P...) const> : MemberTraits<R (C::*)(P...)> {};

/// The line of a C++ member in the table of its class, once that is made.
template <auto Member>
inline const MemberInfo* published = nullptr;

/// Whether compiled callers of the class's members pass by reference also the texts that a member only reads: a class
/// of which this is so has `static constexpr bool kTextsByReference = true;`.
template <class C>
inline constexpr bool kTextsByReference = requires {
    requires C::kTextsByReference;
};

/// One bit a parameter, the lowest for the first: whether it is passed by reference though the member only reads it.
/// `OfLine` is what the member's line in the table adds to what the class says.
template <auto Member, std::uint32_t OfLine>
inline constexpr std::uint32_t byReferenceBits = [] {
    using Traits = MemberTraits<decltype(Member)>;
    static_assert(OfLine >> Traits::kCount == 0, "the member has fewer parameters than its line passes by reference");
    return OfLine | (kTextsByReference<typename Traits::Class> ? Traits::kTextBits : 0);
}();

} // namespace detail

} // namespace tarncom32::automation
