#include "cli/value_argument.h"

#include "cli/terminal.h"
#include "cli/usage_error.h"
#include "cli/value_json.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace tarncom32::cli {

using automation::Boolean;
using automation::ObjectRef;
using automation::Variant;

namespace {

/// The number that the whole of `text` is.
template <class Number>
std::optional<Number> wholeText(std::string_view text) {
    Number number{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

[[noreturn]] void refuse(std::string_view argument, std::string_view wanted) {
    throw UsageError(inQuotes(argument) + ": " + std::string(wanted));
}

Variant wholeNumber(std::string_view argument, std::string_view text) {
    if (const auto number = wholeText<std::int32_t>(text)) return *number;
    refuse(argument, "int: wants a whole number from -2147483648 to 2147483647, as in int:5");
}

Variant number(std::string_view argument, std::string_view text) {
    if (const auto number = wholeText<double>(text); number && std::isfinite(*number)) return *number;
    refuse(argument, "num: wants a number, as in num:0.5 or num:1e3");
}

Variant flag(std::string_view argument, std::string_view text) {
    if (text == "true") return Boolean(true);
    if (text == "false") return Boolean(false);
    if (const auto bits = wholeText<std::int16_t>(text)) return Boolean::fromBits(*bits);
    refuse(argument, "bool: wants true, false or a number of 16 bits, as in bool:true");
}

} // namespace

Variant argumentValue(std::string_view argument) {
    if (argument == "nothing") return ObjectRef();
    if (argument == "empty") return {};
    const std::size_t colon = argument.find(':');
    const std::string_view prefix = argument.substr(0, colon);
    const std::string_view rest = colon == std::string_view::npos ? std::string_view() : argument.substr(colon + 1);
    if (colon != std::string_view::npos) {
        if (prefix == "int") return wholeNumber(argument, rest);
        if (prefix == "num") return number(argument, rest);
        if (prefix == "bool") return flag(argument, rest);
        if (prefix == "json") return valueOfJson(rest);
        if (prefix == "text") return automation::fromUtf8(rest);
    }
    return automation::fromUtf8(argument);
}

} // namespace tarncom32::cli
