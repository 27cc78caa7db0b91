#include "automation/string.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <optional>

namespace tarncom32::automation {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char16_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool isLowSurrogate(char16_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

char16_t foldLatin(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

void appendUtf8(std::string& out, char32_t c) {
    const auto byte = [&out](char32_t value) { out.push_back(static_cast<char>(value)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | (c >> 6));
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | (c >> 12));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | (c >> 18));
        byte(0x80 | ((c >> 12) & 0x3F));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

void appendUtf16(String& out, char32_t c) {
    if (c < 0x10000) {
        out.push_back(static_cast<char16_t>(c));
        return;
    }
    c -= 0x10000;
    out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
}

// Reads one well-formed sequence at `at` and moves past it; nullopt, moving one byte, when it is malformed.
std::optional<char32_t> nextCodePoint(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at++]);
    if (first < 0x80) return first;
    const int extra = first >= 0xF0 && first < 0xF5   ? 3
                      : first >= 0xE0 && first < 0xF0 ? 2
                      : first >= 0xC2 && first < 0xE0 ? 1
                                                      : 0;
    if (extra == 0 || at + static_cast<std::size_t>(extra) > text.size()) return std::nullopt;
    char32_t c = first & (0x3Fu >> extra);
    for (int i = 0; i < extra; ++i) {
        const auto next = static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        c = (c << 6) | (next & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (c < kSmallest[extra] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return std::nullopt;
    at += static_cast<std::size_t>(extra);
    return c;
}

/// Letters at equal steps whose upper-case letters are equally far from them.
struct LetterRun {
    char16_t first, last;
    unsigned char step;
    std::int32_t offset;
};

// A table of our own, since what the system knows depends on its version and on the C locale.
constexpr LetterRun kLetterRuns[] = {
#include "automation/upper_case.inc"
};

char16_t upper(char16_t c) {
    if (c < 0x80) return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
    const auto run = std::ranges::lower_bound(kLetterRuns, c, {}, &LetterRun::last);
    if (run == std::end(kLetterRuns) || c < run->first || (c - run->first) % run->step != 0) return c;
    return static_cast<char16_t>(c + run->offset);
}

} // namespace

std::string toUtf8(StringView text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (isHighSurrogate(c) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            appendUtf8(out, 0x10000 + ((static_cast<char32_t>(c) - 0xD800) << 10) + (text[++i] - 0xDC00));
        } else {
            appendUtf8(out, isHighSurrogate(c) || isLowSurrogate(c) ? kReplacement : c);
        }
    }
    return out;
}

String fromUtf8(std::string_view text) {
    String out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        appendUtf16(out, nextCodePoint(text, at).value_or(kReplacement));
    return out;
}

bool equalsIgnoreCase(StringView left, StringView right) noexcept {
    if (left.size() != right.size()) return false;
    // Most callers write a name as it is published.
    if (std::memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0) return true;
    for (std::size_t i = 0; i < left.size(); ++i)
        if (left[i] != right[i] && foldLatin(left[i]) != foldLatin(right[i])) return false;
    return true;
}

String toUpper(StringView text) {
    String out(text);
    for (char16_t& c : out)
        c = upper(c);
    return out;
}

StringView trim(StringView text) noexcept {
    const auto first = text.find_first_not_of(u' ');
    if (first == StringView::npos) return {};
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

String decimalText(long long value) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return String(digits, end);
}

} // namespace tarncom32::automation
