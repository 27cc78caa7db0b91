#include "automation/string.h"

#include <charconv>
#include <cstring>
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

// The system's towupper depends on the C locale and knows nothing beyond ASCII in the default one,
// so the scripts that add-ins meet are mapped here: Latin-1, Latin Extended-A, Greek and Cyrillic.
char16_t upper(char16_t c) {
    if (c < 0x80) return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
    if (c == 0xFF) return 0x178;
    if (c >= 0xE0 && c <= 0xFE) return c == 0xF7 ? c : static_cast<char16_t>(c - 32);
    if (c >= 0x100 && c <= 0x137) return c == 0x131 ? u'I' : static_cast<char16_t>(c & ~1);
    if (c >= 0x139 && c <= 0x148) return c % 2 == 0 ? static_cast<char16_t>(c - 1) : c;
    if (c >= 0x14A && c <= 0x177) return static_cast<char16_t>(c & ~1);
    if (c >= 0x179 && c <= 0x17E) return c % 2 == 0 ? static_cast<char16_t>(c - 1) : c;
    if (c == 0x3AC) return 0x386;
    if (c >= 0x3AD && c <= 0x3AF) return static_cast<char16_t>(c - 37);
    if (c == 0x3CC) return 0x38C;
    if (c == 0x3CD || c == 0x3CE) return static_cast<char16_t>(c - 63);
    if (c == 0x3C2) return 0x3A3;
    if (c >= 0x3B1 && c <= 0x3CB) return static_cast<char16_t>(c - 32);
    if (c >= 0x430 && c <= 0x44F) return static_cast<char16_t>(c - 32);
    if (c >= 0x450 && c <= 0x45F) return static_cast<char16_t>(c - 80);
    if (c >= 0x460 && c <= 0x481) return static_cast<char16_t>(c & ~1);
    if (c >= 0x48A && c <= 0x4BF) return static_cast<char16_t>(c & ~1);
    return c;
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
