#pragma once

#include "automation/string.h"

#include <cstdint>

namespace tarncom32::automation {

/// A member's name with the hash by which tables find it, worked out once: at compile time for a literal.
/// The text is not copied and must outlive the name.
class MemberName {
public:
    template <std::size_t N>
    consteval MemberName(const char16_t (&literal)[N]) : text_(literal, N - 1), hash_(hashOf(text_)) {}
    explicit constexpr MemberName(StringView text) : text_(text), hash_(hashOf(text)) {}

    constexpr StringView text() const { return text_; }
    constexpr std::uint32_t hash() const { return hash_; }

private:
    // FNV-1a over the Latin letters folded to lower case.
    static constexpr std::uint32_t hashOf(StringView text) {
        std::uint32_t hash = 2166136261u;
        for (char16_t c : text) {
            const char16_t folded = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
            hash = (hash ^ folded) * 16777619u;
        }
        return hash;
    }

    StringView text_;
    std::uint32_t hash_;
};

} // namespace tarncom32::automation
