#pragma once

#include "automation/string.h"

#include <array>
#include <cstdint>

namespace tarncom32::automation {

/// A globally unique identifier, laid out as COM lays it out.
struct Guid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::array<std::uint8_t, 8> data4{};

    friend constexpr bool operator==(const Guid&, const Guid&) = default;
    constexpr bool isNull() const { return *this == Guid{}; }
};

namespace detail {
consteval std::uint64_t hexDigits(std::string_view text) {
    std::uint64_t value = 0;
    for (char c : text) {
        if (c >= '0' && c <= '9')
            value = value * 16 + static_cast<std::uint64_t>(c - '0');
        else if (c >= 'a' && c <= 'f')
            value = value * 16 + static_cast<std::uint64_t>(c - 'a' + 10);
        else if (c >= 'A' && c <= 'F')
            value = value * 16 + static_cast<std::uint64_t>(c - 'A' + 10);
        else
            throw "a GUID is written with hexadecimal digits";
    }
    return value;
}
} // namespace detail

/// Reads a GUID written as "6b29fc40-ca47-1067-b31d-00dd010662da"; anything else does not compile.
consteval Guid operator""_guid(const char* literal, std::size_t length) {
    const std::string_view text(literal, length);
    if (length != 36 || text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-')
        throw "a GUID is written as 8-4-4-4-12 digits";
    Guid guid;
    guid.data1 = static_cast<std::uint32_t>(detail::hexDigits(text.substr(0, 8)));
    guid.data2 = static_cast<std::uint16_t>(detail::hexDigits(text.substr(9, 4)));
    guid.data3 = static_cast<std::uint16_t>(detail::hexDigits(text.substr(14, 4)));
    for (std::size_t i = 0; i < 8; ++i)
        guid.data4[i] = static_cast<std::uint8_t>(detail::hexDigits(text.substr((i < 2 ? 19 : 20) + 2 * i, 2)));
    return guid;
}

/// "{6B29FC40-CA47-1067-B31D-00DD010662DA}", the registry's spelling.
String guidText(const Guid& guid);

} // namespace tarncom32::automation
