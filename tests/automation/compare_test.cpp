#include "automation/array.h"
#include "automation/convert.h"
#include "values.h"

#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

// Each value stands before every later one, whichever side it is compared from.
TEST(Compare, OneOrderForAllValues) {
    const Variant ascending[] = {
        Decimal{0xFFFFFFFF, 0, 0, true},
        -1e20,
        Date{-3},
        Decimal{0, 25, 1, true},
        true, // -1
        Decimal{0, 1, 28, false},
        Currency{1},
        0.5f,
        std::uint8_t{1},
        Decimal{0, 1000000000000000001, 18, false},
        2,
        Decimal{0, 25, 1, false},
        OtherInteger{VariantType::UnsignedInteger, 65535},
        Currency{700000000},
        OtherInteger{VariantType::UnsignedLongLong, ~std::uint64_t{0}},
        u"-5", // any text, numeric or not, behind every number
        u"10",
        u"9",
        u"B",
        u"a",
        u"b",
        u"\uFF00",
    };
    for (std::size_t i = 0; i < std::size(ascending); ++i)
        for (std::size_t j = 0; j < std::size(ascending); ++j)
            EXPECT_TRUE(compare(ascending[i], ascending[j]) == (i <=> j)) << i << " and " << j;
}

TEST(Compare, EqualAcrossTypes) {
    const struct {
        Variant left, right;
    } cases[] = {
        {true, std::int16_t{-1}},
        {Variant(), 0},
        {Variant(), u""},
        {Variant(), false},
        {Date{1.5}, 1.5},
        {0.1f, 0.1}, // the double is cut to the single's digits
        {Decimal{0, 100, 2, false}, std::uint8_t{1}},
        {Decimal{0, 0, 3, true}, 0},
        {Decimal{0, 1, 1, false}, 0.1},
        {ErrorValue{1}, ErrorValue{2}},
        {make<ObjectWithDefault>(u"a"), u"a"},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(compare(c.left, c.right) == 0);
        EXPECT_TRUE(compare(c.right, c.left) == 0);
    }
    EXPECT_TRUE(compare(Variant(), u"a") < 0);
    EXPECT_TRUE(compare(u"a", Variant()) > 0);
}

TEST(Compare, WhatOverflowsTheCommonTypeComparesAsDoubles) {
    EXPECT_TRUE(compare(kLargestDecimal, 1e300) < 0);
    EXPECT_TRUE(compare(-1e300, kLargestDecimal) < 0);
    EXPECT_TRUE(compare(1.0f, 1e300) < 0);
    EXPECT_TRUE(compare(Currency{}, OtherInteger{VariantType::LongLong, ~std::uint64_t{0} >> 1}) < 0);
}

TEST(Compare, NullIsUnorderedAndSomeValuesCannotBeCompared) {
    for (const Variant& other : {Variant(Null{}), Variant(), Variant(1), Variant(u"a")}) {
        EXPECT_TRUE(compare(Null{}, other) == std::partial_ordering::unordered);
        EXPECT_TRUE(compare(other, Null{}) == std::partial_ordering::unordered);
    }
    for (const Variant& value : {Variant(Array(VariantType::Long, 0, 1)), Variant(Record{}), Variant(kMissing)})
        EXPECT_EQ(errorOf([&] { compare(value, 1); }), errors::TypeMismatch);
    EXPECT_EQ(errorOf([] { compare(ObjectRef(), 1); }), errors::ObjectNotSet);
}

} // namespace
} // namespace tarncom32::automation
