#pragma once

#include "automation/type.h"

#include <array>
#include <tuple>
#include <vector>

namespace tarncom32::automation {

namespace member {

/// For the `ByReference` bits of a table's line: all texts that the member only reads.
inline constexpr std::uint32_t kTexts = 1u << 31;

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
    static std::vector<Type> types() { return {kTypeOf<P>...}; }
    /// Whether each parameter is one that a member can write to.
    static constexpr std::array<bool, sizeof...(P)> kWritable{
        (std::is_lvalue_reference_v<P> && !std::is_const_v<std::remove_reference_t<P>>)...};
    /// A bit set for each text that the member only reads.
    static constexpr std::uint32_t kTextBits = [] {
        std::uint32_t bits = 0;
        [[maybe_unused]] std::uint32_t bit = 1;
        ((bits |= std::is_same_v<P, StringView> ? bit : 0, bit <<= 1), ...);
        return bits;
    }();
};
template <class C, class R, class... P>
struct MemberTraits<R (C::*)(P...) const> : MemberTraits<R (C::*)(P...)> {};

/// One bit a parameter, the lowest for the first: whether it is passed by reference though the member only reads it.
template <auto Member, std::uint32_t ByReference>
inline constexpr std::uint32_t byReferenceBits =
    ByReference == member::kTexts ? MemberTraits<decltype(Member)>::kTextBits : ByReference;

} // namespace detail

} // namespace tarncom32::automation
