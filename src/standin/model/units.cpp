#include "standin/model/units.h"

#include "automation/convert.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

namespace tarncom32::standin {

namespace {

using automation::equalsIgnoreCase;

constexpr Unit kUnits[] = {
    {u"IN", u"in", 65, 1},
    {u"FT", u"ft", 66, 12},
    {u"YD", u"yd", 75, 36},
    {u"MI", u"mi", 68, 63360},
    {u"MM", u"mm", 70, 1 / 25.4},
    {u"CM", u"cm", 69, 1 / 2.54},
    {u"M", u"m", 71, 1000 / 25.4},
    {u"KM", u"km", 72, 1e6 / 25.4},
    {u"PT", u"pt", 50, 1.0 / 72},
    {u"P", u"p", 51, 1.0 / 6},
    {u"DEG", u"deg", 81, std::numbers::pi / 180},
    {u"RAD", u"rad", 83, 1},
    {u"PER", u"%", 33, 0.01},
};
/// Other spellings in files and in formulas: inches that the page's own unit would show, degrees as angles are shown.
constexpr struct {
    StringView spelling;
    StringView fileName;
} kSpellings[] = {{u"IN_F", u"IN"}, {u"\"", u"IN"},  {u"in.", u"IN"}, {u"inches", u"IN"}, {u"ft.", u"FT"},
                  {u"pt.", u"PT"},  {u"mm.", u"MM"}, {u"cm.", u"CM"}, {u"deg.", u"DEG"},  {u"DA", u"DEG"}};

template <class Matches>
const Unit* unitWhere(Matches matches) {
    const auto* found = std::ranges::find_if(kUnits, matches);
    return found == std::end(kUnits) ? nullptr : found;
}

} // namespace

const Unit* unitInFile(StringView name) {
    for (const auto& spelling : kSpellings)
        if (equalsIgnoreCase(spelling.spelling, name)) name = spelling.fileName;
    return unitWhere([&](const Unit& unit) { return equalsIgnoreCase(unit.fileName, name); });
}

const Unit* unitInFormula(StringView text) {
    return unitInFile(text == u"%" ? StringView(u"PER") : text);
}

const Unit* unitOfArgument(const Variant& argument) {
    if (argument.isMissing() || argument.isEmpty()) return nullptr;
    if (const auto* text = argument.as<String>()) {
        if (text->empty()) return nullptr;
        if (const Unit* unit = unitInFormula(*text)) return unit;
    } else {
        const std::int16_t code = automation::toInteger(argument);
        constexpr std::int16_t plain[] = {0, 32, 63, 64, 80, 231, 252}; // numbers, page and drawing units, texts
        if (std::ranges::find(plain, code) != std::end(plain)) return nullptr;
        if (const Unit* unit = unitWhere([&](const Unit& known) { return known.code == code; })) return unit;
    }
    throw Error(automation::errors::InvalidProcedureCall, u"Bad measurement unit");
}

String numberText(double number) {
    if (number == 0) return u"0"; // not "-0"
    char buffer[32];
    return String(buffer, std::to_chars(buffer, std::end(buffer), number, std::chars_format::general, 10).ptr);
}

String exactNumberText(double number) {
    if (number == 0) return u"0";
    char buffer[32];
    return String(buffer, std::to_chars(buffer, std::end(buffer), number).ptr);
}

std::optional<double> parsePlainNumber(StringView text) {
    std::string ascii;
    for (const char16_t c : text) {
        if (c > 0x7F || ascii.size() > 400) return std::nullopt;
        ascii.push_back(static_cast<char>(c));
    }
    const char* begin = ascii.data();
    const char* end = begin + ascii.size();
    if (begin != end && *begin == '+') ++begin;
    double number = 0;
    const auto [stop, failure] = std::from_chars(begin, end, number);
    if (failure != std::errc{} || stop != end || !std::isfinite(number)) return std::nullopt;
    return number;
}

} // namespace tarncom32::standin
