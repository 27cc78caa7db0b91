#include "cli/value_text.h"

#include "automation/array.h"
#include "automation/convert.h"
#include "cli/value_json.h"

#include <nlohmann/json.hpp>

namespace tarncom32::cli {

using automation::VariantType;

std::string readableText(const automation::Variant& value) {
    switch (value.type()) {
    case VariantType::Empty:
        return "Empty";
    case VariantType::Null:
        return "Null";
    case VariantType::Object:
        if (!*value.as<automation::ObjectRef>()) return "Nothing";
        break;
    case VariantType::Error:
    case VariantType::Record:
        break;
    default:
        if (!value.isArray()) return automation::toUtf8(automation::toText(value));
    }
    const Json json = jsonOf(value);
    return json.is_string() ? json.get<std::string>() : compactText(json);
}

} // namespace tarncom32::cli
