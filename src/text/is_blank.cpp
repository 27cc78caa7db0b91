#include "text/string_functions.h"

#include <algorithm>

namespace tarncom32::text {

namespace {

using automation::Currency;
using automation::Date;
using automation::Decimal;

// Whether an array of this element type is asked for its bounds in a way that takes none for blank: the types whose
// number has the bit of 4 or of 8.
bool mayLackBounds(automation::VariantType elementType) {
    return (static_cast<unsigned>(elementType) & (4u | 8u)) != 0;
}

} // namespace

Boolean StringFunctions::isBlank(const Variant& vValue) {
    if (const auto* array = vValue.as<Array>()) {
        if (!array->hasBounds() && mayLackBounds(array->elementType())) return true;
        (void)array->lowerBound(); // Raises without bounds.
        // An element that is a Boolean answers with all its bits; only 0 says that it is not blank.
        return std::ranges::all_of(array->items(), [this](const Variant& item) { return isBlank(item).isNonZero(); });
    }
    if (const auto* number = vValue.as<std::uint8_t>()) return *number == 0;
    if (const auto* number = vValue.as<std::int16_t>()) return *number == 0;
    if (const auto* number = vValue.as<std::int32_t>()) return *number == 0;
    if (const auto* number = vValue.as<float>()) return *number == 0;
    if (const auto* number = vValue.as<double>()) return *number == 0;
    if (const auto* amount = vValue.as<Currency>()) return amount->tenThousandths == 0;
    if (const auto* date = vValue.as<Date>()) return date->days == 0;
    if (const auto* number = vValue.as<Decimal>()) return number->isZero();
    if (const auto* text = vValue.as<String>()) return automation::trim(*text).empty();
    if (const auto* object = vValue.as<ObjectRef>()) return !*object;
    if (const auto* flag = vValue.as<Boolean>()) return *flag;
    // Empty, Null, error values, records, and the types that the hosts do not have.
    return true;
}

} // namespace tarncom32::text
