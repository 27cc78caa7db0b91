#include "cli/registry_value_text.h"

#include "cli/registry_key_name.h"
#include "cli/terminal.h"
#include "cli/usage_error.h"

#include <charconv>
#include <nlohmann/json.hpp>

namespace tarncom32::cli {

namespace type = platform::registry_type;
using automation::toUtf8;

namespace {

constexpr struct {
    std::uint32_t type;
    const char* name;
} kTypes[] = {
    {type::kNone, "REG_NONE"},
    {type::kString, "REG_SZ"},
    {type::kExpandString, "REG_EXPAND_SZ"},
    {type::kBinary, "REG_BINARY"},
    {type::kDword, "REG_DWORD"},
    {type::kDwordBigEndian, "REG_DWORD_BIG_ENDIAN"},
    {type::kMultiString, "REG_MULTI_SZ"},
    {type::kQword, "REG_QWORD"},
};

bool isText(std::uint32_t type) {
    return type == type::kString || type == type::kExpandString;
}

std::string hexBytes(std::string_view bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        if (!text.empty()) text += ' ';
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    return text;
}

/// Without the NUL at the end, if there is one.
std::string_view trimmed(std::string_view bytes) {
    return bytes.ends_with('\0') ? bytes.substr(0, bytes.size() - 1) : bytes;
}

std::vector<std::string> listOf(const platform::CodePage& codePage, std::string_view bytes) {
    std::vector<std::string> texts;
    bytes = trimmed(bytes);
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\0', start), bytes.size());
        texts.push_back(toUtf8(codePage.decode(bytes.substr(start, end - start))));
        start = end + 1;
    }
    return texts;
}

std::string numberBytes(const std::string& text, std::size_t size) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const char* first = text.data() + (hexadecimal ? 2 : 0);
    std::uint64_t number = 0;
    const auto [end, failure] = std::from_chars(first, text.data() + text.size(), number, hexadecimal ? 16 : 10);
    if (failure != std::errc() || end != text.data() + text.size() || (size == 4 && number >> 32 != 0))
        throw UsageError(inQuotes(text) + " is not a number from 0 to " +
                         (size == 4 ? "4294967295" : "18446744073709551615") + " (0x... for hexadecimal)");
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>(number >> (8 * i)));
    return bytes;
}

std::string parseHexBytes(const std::string& text) {
    std::string digits;
    for (const char c : text)
        if (c != ' ' && c != ',') digits += c;
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        unsigned byte = 0;
        const char* end = digits.data() + std::min(i + 2, digits.size());
        const auto parsed = std::from_chars(digits.data() + i, end, byte, 16);
        if (digits.size() % 2 != 0 || parsed.ec != std::errc() || parsed.ptr != end)
            throw UsageError(inQuotes(text) + " is not a row of hexadecimal bytes, as in \"0a ff 00\"");
        bytes.push_back(static_cast<char>(byte));
    }
    return bytes;
}

} // namespace

std::string typeName(std::uint32_t type) {
    for (const auto& known : kTypes)
        if (known.type == type) return known.name;
    return "REG_" + std::to_string(type);
}

std::optional<std::uint64_t> numberOf(const platform::RegistryValue& value) {
    const bool bigEndian = value.type == type::kDwordBigEndian;
    const std::size_t size = value.type == type::kQword ? 8 : value.type == type::kDword || bigEndian ? 4 : 0;
    if (size == 0 || value.bytes.size() != size) return std::nullopt;
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = number << 8 | static_cast<unsigned char>(value.bytes[bigEndian ? i : size - 1 - i]);
    return number;
}

std::string readableData(const platform::CodePage& codePage, const platform::RegistryValue& value) {
    if (isText(value.type)) return toUtf8(codePage.decode(trimmed(value.bytes)));
    if (const std::optional<std::uint64_t> number = numberOf(value)) return std::to_string(*number);
    if (value.type != type::kMultiString) return hexBytes(value.bytes);
    std::string joined;
    for (const std::string& text : listOf(codePage, value.bytes))
        joined += (joined.empty() ? "" : " | ") + text;
    return joined;
}

Json jsonOfData(const platform::CodePage& codePage, const platform::RegistryValue& value) {
    if (const std::optional<std::uint64_t> number = numberOf(value)) return *number;
    if (value.type == type::kMultiString) return listOf(codePage, value.bytes);
    return readableData(codePage, value);
}

platform::RegistryValue parseData(const platform::CodePage& codePage, const std::string& name,
                                  const std::string& text) {
    for (const auto& known : kTypes) {
        if (name != known.name) continue;
        platform::RegistryValue value{{}, known.type, {}};
        if (isText(known.type))
            value.bytes = toCodePage(codePage, text) + '\0';
        else if (known.type == type::kDword || known.type == type::kQword)
            value.bytes = numberBytes(text, known.type == type::kDword ? 4 : 8);
        else if (known.type == type::kBinary)
            value.bytes = parseHexBytes(text);
        else
            break;
        return value;
    }
    throw UsageError("values of the type " + inQuotes(name) +
                     " cannot be set; write REG_SZ, REG_EXPAND_SZ, REG_DWORD, REG_QWORD or REG_BINARY");
}

} // namespace tarncom32::cli
