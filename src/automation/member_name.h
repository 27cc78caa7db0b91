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
    // FNV-1a, in steps of four characters, over the characters with the bit set by which Latin letters of both cases
    // differ. Others fall together too, which costs a comparison.
    static constexpr std::uint32_t hashOf(StringView text) {
        std::uint64_t hash = 14695981039346656037u;
        const auto add = [&hash](std::uint64_t characters) {
            hash = (hash ^ (characters | 0x0020'0020'0020'0020u)) * 1099511628211u;
        };
        std::size_t i = 0;
        for (; i + 4 <= text.size(); i += 4)
            add(text[i] | std::uint64_t{text[i + 1]} << 16 | std::uint64_t{text[i + 2]} << 32 |
                std::uint64_t{text[i + 3]} << 48);
        for (; i < text.size(); ++i)
            add(text[i]);
        return static_cast<std::uint32_t>(hash >> 32);
    }

    StringView text_;
    std::uint32_t hash_;
};

} // namespace tarncom32::automation
