#include "platform/portable/windows_1252.h"

#include <algorithm>
#include <iterator>

namespace tarncom32::platform::portable {

namespace {

// The characters of the bytes 0x80 to 0x9F; all other bytes are Latin-1.
constexpr char16_t kUpperControls[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                         0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                         0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                         0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char encodeOne(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    const auto found = std::ranges::find(kUpperControls, c);
    return found == std::end(kUpperControls) ? '?' : static_cast<char>(0x80 + (found - std::begin(kUpperControls)));
}

} // namespace

std::string Windows1252::encode(automation::StringView text) const {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        // A surrogate pair is one character, hence one question mark.
        const bool pair = (text[i] & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
        bytes.push_back(encodeOne(text[i]));
        if (pair) ++i;
    }
    return bytes;
}

automation::String Windows1252::decode(std::string_view bytes) const {
    automation::String text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text.push_back(code >= 0x80 && code < 0xA0 ? kUpperControls[code - 0x80] : static_cast<char16_t>(code));
    }
    return text;
}

} // namespace tarncom32::platform::portable
