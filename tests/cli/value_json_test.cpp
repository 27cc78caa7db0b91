#include "cli/value_json.h"

#include "automation/collection.h"
#include "cli/value_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tarncom32::cli {
namespace {

using automation::Array;
using automation::Boolean;
using automation::Currency;
using automation::Date;
using automation::Variant;
using automation::VariantType;

TEST(ValueJson, WritesEveryType) {
    const struct {
        Variant value;
        std::string json;
    } cases[] = {
        {Variant(), "null"},
        {automation::Null{}, "null"},
        {automation::ObjectRef(), "null"},
        {Boolean::fromBits(1), "true"},
        {std::int16_t{-3}, "-3"},
        {std::uint8_t{255}, "255"},
        {0.1f, "0.1"},
        {1e300, "1e+300"},
        {std::numeric_limits<double>::infinity(), "null"},
        {Currency{12345}, "1.2345"},
        {automation::OtherInteger{VariantType::LongLong, ~0ull}, "-1"},
        {automation::OtherInteger{VariantType::UnsignedLongLong, ~0ull}, "18446744073709551615"},
        {automation::String{0xD800, u'a'}, "\"\uFFFDa\""},
        {Date{0}, "\"1899-12-30T00:00:00\""},
        {Date{45413.5208333333}, "\"2024-05-01T12:30:00\""},
        {Date{-1.25}, "\"1899-12-29T06:00:00\""},
        {Date{1.0 - 1e-12}, "\"1899-12-31T00:00:00\""}, // not 24:00
        {Date{0.5 + 1.5 / 86400}, "\"1899-12-30T12:00:01.500\""},
        {Array(VariantType::Variant, 1, {Variant(Array(VariantType::Long, 0, 2)), Variant(Array())}), "[[0,0],[]]"},
    };
    for (const auto& line : cases)
        EXPECT_EQ(compactText(jsonOf(line.value)), line.json);
}

TEST(ValueJson, EndsInACollectionThatHoldsItself) {
    const auto collection = automation::make<automation::Collection>();
    const auto inner = automation::make<automation::Collection>();
    // Twice: lists that double at every level would be as endless as one that does not stop.
    inner->add(collection);
    inner->add(collection);
    collection->add(inner);
    collection->add(inner);
    EXPECT_EQ(readableText(collection), R"([["Collection","Collection"],["Collection","Collection"]])");
    collection->remove(std::int32_t{1});
    collection->remove(std::int32_t{1});
}

TEST(ValueJson, ReadsNumbersAsTheSmallestFittingType) {
    const Variant list = valueOfJson("[2147483647, -2147483648, 2147483648, 18446744073709551615, 1.0]");
    const std::vector<Variant>& items = list.as<Array>()->items();
    EXPECT_EQ(items[0], Variant(std::int32_t{2147483647}));
    EXPECT_EQ(items[1], Variant(std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(items[2], Variant(2147483648.0));
    EXPECT_EQ(items[3], Variant(18446744073709551616.0));
    EXPECT_EQ(items[4], Variant(1.0));
}

} // namespace
} // namespace tarncom32::cli
