#include "automation/arguments.h"

#include "automation/default_value.h"

#include <cmath>

namespace tarncom32::automation::detail {

Boolean toFlag(const Variant& value) {
    if (const auto* flag = value.as<Boolean>()) return *flag;
    if (const auto* number = value.as<std::int16_t>()) return Boolean::fromBits(*number);
    if (const auto* object = value.as<ObjectRef>()) return toFlag(defaultValue(*object));
    // Of the texts, only those that spell True and False are no numbers.
    const auto* text = value.as<String>();
    if (text && !isNumeric(value)) return toBoolean(value);
    const double number = toDouble(value);
    if (number == 0 || number == -1) return number != 0;
    return Boolean::fromBits(number >= -32768 && number <= 32767 && number == std::trunc(number)
                                 ? static_cast<std::int16_t>(number)
                                 : std::int16_t{1});
}

} // namespace tarncom32::automation::detail
