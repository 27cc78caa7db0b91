#pragma once

#include "standin/forward.h"

#include <optional>

namespace tarncom32::standin {

/// A unit that numbers are shown in.
struct Unit {
    StringView fileName; ///< "MM"
    StringView text;     ///< as formulas write it: "mm"
    std::int16_t code;   ///< Visio's unit constant
    double internal;     ///< one of it in internal units: inches, radians, or plain numbers
};

/// The unit of a file's U attribute; null for none and for those that are no measures.
const Unit* unitInFile(StringView name);
/// The unit that formulas write so; null when there is none.
const Unit* unitInFormula(StringView text);
/// The unit that an argument names, by text or by constant: nullptr stands for plain internal numbers ("", 0, 32 and
/// the like). Raises "Bad measurement unit" for others.
const Unit* unitOfArgument(const Variant& unit);

/// `number` with up to ten significant digits and a point.
String numberText(double number);
/// `number` with as many digits as it takes to read the very same number back.
String exactNumberText(double number);
/// The number that is all of `text`, written with a point; nullopt for anything else.
std::optional<double> parsePlainNumber(StringView text);

} // namespace tarncom32::standin
