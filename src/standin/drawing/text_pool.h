#pragma once

#include "standin/drawing/arena.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace tarncom32::standin::drawing {

/// A string of a drawing, or the fact that the file does not have it. As small as a pointer; lives as long as the
/// drawing.
class Text {
public:
    /// An absent string.
    Text() = default;

    /// Whether the file has it at all. `F=''` is present and empty; without the attribute it is absent.
    [[nodiscard]] bool present() const noexcept { return units_ != nullptr; }

    /// The string in UTF-16; empty when absent.
    [[nodiscard]] std::u16string_view view() const noexcept {
        if (units_ == nullptr) return {};
        std::uint32_t length = 0;
        std::memcpy(&length, units_ - 2, sizeof length);
        return {units_, length};
    }

    /// Absent, or present without a character.
    [[nodiscard]] bool empty() const noexcept { return view().empty(); }

    /// Compares units; an absent string equals an empty one.
    friend bool operator==(Text text, std::u16string_view other) noexcept { return text.view() == other; }

private:
    friend class TextPool;
    const char16_t* units_ = nullptr; // its length stands before it, in the place of two units
};

/// Keeps each distinct string of a drawing once: the names, units and formulas of a hundred thousand shapes are mostly
/// the same few. Sharing saves memory and means nothing else.
class TextPool {
public:
    explicit TextPool(Arena& arena) : arena_(arena) {}

    /// The pooled string for valid UTF-8. The view may go.
    [[nodiscard]] Text fromUtf8(std::string_view utf8);

    /// The pooled string for UTF-16.
    [[nodiscard]] Text fromUtf16(std::u16string_view units);

private:
    // A string of the table; its hash beside it, so that most tries end without a look at the string itself.
    struct Place {
        Text text; // absent in a free place
        std::size_t hash = 0;
    };

    void grow();

    Arena& arena_;
    std::vector<Place> table_; // open addressing
    std::size_t count_ = 0;
    std::u16string scratch_;
};

/// Appends valid UTF-8 as UTF-16.
void appendUtf16(std::u16string& to, std::string_view utf8);

} // namespace tarncom32::standin::drawing
