#include "cli/value_json.h"

#include "automation/array.h"
#include "automation/collection.h"
#include "automation/convert.h"
#include "cli/iso_date.h"
#include "cli/terminal.h"
#include "cli/usage_error.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace tarncom32::cli {

using automation::Array;
using automation::Boolean;
using automation::Collection;
using automation::Currency;
using automation::Date;
using automation::Decimal;
using automation::ErrorValue;
using automation::ObjectRef;
using automation::OtherInteger;
using automation::Record;
using automation::String;
using automation::StringView;
using automation::Variant;
using automation::VariantType;

namespace {

/// The objects around a value, the nearest first: a collection may hold itself, and the list of its items would never
/// end.
struct Around {
    const automation::Object* object;
    const Around* next;
    int depth;

    static bool holds(const Around* around, const automation::Object* object) {
        while (around && around->object != object)
            around = around->next;
        return around != nullptr;
    }
};

Json number(double value) {
    if (!std::isfinite(value)) return nullptr;
    return value;
}

/// A single as the shortest number that reads back: 0.1, not 0.10000000149011612.
Json number(float value) {
    char digits[64];
    const auto written = std::to_chars(digits, digits + sizeof digits, value);
    double shortest = value;
    std::from_chars(digits, written.ptr, shortest);
    return number(shortest);
}

Json number(const OtherInteger& value) {
    if (value.type == VariantType::SignedByte || value.type == VariantType::LongLong)
        return static_cast<std::int64_t>(value.bits);
    return value.bits;
}

Json toJson(const Variant& value, const Around* around);

Json objectToJson(const ObjectRef& object, const Around* around) {
    if (!object) return nullptr;
    const String className = object->typeName();
    const Around here{object.get(), around, around ? around->depth + 1 : 1};
    if (here.depth > automation::kDeepestNesting || Around::holds(around, object.get())) return jsonText(className);
    std::unique_ptr<automation::Enumerator> items;
    try {
        items = object->enumerate();
    } catch (const automation::Error&) {
        return jsonText(className); // no collection
    }
    Json list = Json::array();
    for (Variant item; items->next(item);)
        list.push_back(toJson(item, &here));
    return list;
}

Json arrayToJson(const Array& array, const Around* around) {
    Json list = Json::array();
    for (const Variant& item : array.items())
        list.push_back(toJson(item, around));
    return list;
}

Json toJson(const Variant& value, const Around* around) {
    if (const auto* text = value.as<String>()) return jsonText(*text);
    if (const auto* flag = value.as<Boolean>()) return flag->isNonZero();
    if (const auto* integer = value.as<std::int16_t>()) return *integer;
    if (const auto* integer = value.as<std::int32_t>()) return *integer;
    if (const auto* byte = value.as<std::uint8_t>()) return *byte;
    if (const auto* single = value.as<float>()) return number(*single);
    if (const auto* real = value.as<double>()) return number(*real);
    if (const auto* other = value.as<OtherInteger>()) return number(*other);
    if (value.as<Currency>() || value.as<Decimal>()) return number(automation::toDouble(value));
    if (const auto* date = value.as<Date>()) return isoText(*date);
    if (const auto* error = value.as<ErrorValue>()) return "Error " + std::to_string(error->code);
    if (value.as<Record>()) return "Record";
    if (const auto* object = value.as<ObjectRef>()) return objectToJson(*object, around);
    if (const auto* array = value.as<Array>()) return arrayToJson(*array, around);
    return nullptr; // Empty and Null
}

Variant fromJson(const Json& json, int depth) {
    if (depth > automation::kDeepestNesting)
        throw UsageError("json: takes lists in lists at most " + std::to_string(automation::kDeepestNesting) + " deep");
    switch (json.type()) {
    case Json::value_t::string:
        return automation::fromUtf8(json.get_ref<const std::string&>());
    case Json::value_t::boolean:
        return Boolean(json.get<bool>());
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned:
        if (const double wide = json.get<double>();
            wide < std::numeric_limits<std::int32_t>::min() || wide > std::numeric_limits<std::int32_t>::max())
            return wide;
        return json.get<std::int32_t>();
    case Json::value_t::number_float:
        return json.get<double>();
    case Json::value_t::array: {
        std::vector<Variant> items;
        for (const Json& item : json)
            items.push_back(fromJson(item, depth + 1));
        return Array(VariantType::Variant, 0, std::move(items));
    }
    case Json::value_t::object: {
        const auto collection = automation::make<Collection>();
        for (const auto& [key, item] : json.items())
            collection->add(fromJson(item, depth + 1), automation::fromUtf8(key));
        return collection;
    }
    default:
        return {};
    }
}

} // namespace

Json jsonText(StringView text) {
    return automation::toUtf8(text);
}

Json jsonOf(const Variant& value) {
    return toJson(value, nullptr);
}

Variant valueOfJson(std::string_view text) {
    Json json;
    try {
        json = Json::parse(text);
    } catch (const Json::parse_error& error) {
        throw UsageError("json: cannot be read at character " + std::to_string(error.byte) + " of " + inQuotes(text) +
                         "; write it as in json:'[\"a\", 2, true]'");
    } catch (const Json::out_of_range&) {
        throw UsageError("json: holds a number that is too large: " + inQuotes(text));
    }
    try {
        return fromJson(json, 0);
    } catch (const automation::Error& error) {
        throw UsageError("json: an object becomes a collection, but " + oneLine(error.what()));
    }
}

std::string compactText(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string indentedText(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

} // namespace tarncom32::cli
