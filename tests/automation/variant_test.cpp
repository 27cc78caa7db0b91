#include "automation/array.h"
#include "automation/convert.h"
#include "automation/string.h"
#include "automation/variant.h"
#include "support/table.h"
#include "values.h"

#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

TEST(Variant, TypesHaveAutomationsNumbers) {
    using Case = std::pair<Variant, int>;
    for (const auto& [value, type] : tests::table(
             Case(Variant(), 0), Case(Null{}, 1), Case(std::int16_t{1}, 2), Case(std::int32_t{1}, 3), Case(1.0f, 4),
             Case(1.0, 5), Case(Currency{1}, 6), Case(Date{1}, 7), Case(u"a", 8), Case(ObjectRef{}, 9),
             Case(ErrorValue{1}, 10), Case(true, 11), Case(Decimal{}, 14), Case(std::uint8_t{1}, 17),
             Case(OtherInteger{VariantType::UnsignedLong, 1}, 19), Case(Record{}, 36),
             Case(Array(VariantType::String), 0x2008), Case(VariantType::Long, 3))) // an enumeration is its number
        EXPECT_EQ(static_cast<int>(value.type()), type);
}

TEST(Variant, BooleanKeepsItsBits) {
    const Variant flag = Boolean::fromBits(1);
    EXPECT_EQ(flag.as<Boolean>()->value, 1);
    EXPECT_FALSE(flag.as<Boolean>()->isTrue());
    EXPECT_TRUE(flag.as<Boolean>()->isNonZero());
    EXPECT_NE(flag, Variant(true));
    EXPECT_FALSE(Variant(ErrorValue{5}).isMissing()) << "only the error of a left-out parameter is";
}

TEST(Variant, CopiesShareObjectsAndCopyArrays) {
    Variant array = Array(VariantType::Variant, 0, {Variant(1)});
    Variant copy = array;
    array.as<Array>()->at(0) = 2;
    EXPECT_EQ(copy.as<Array>()->at(0), Variant(1));

    const std::size_t before = Object::liveCount();
    const Variant object = make<ObjectWithDefault>(Variant(1));
    const Variant same = object;
    EXPECT_EQ(object, same);
    EXPECT_NE(object, Variant(make<ObjectWithDefault>(Variant(1)))) << "objects are compared by identity";
    EXPECT_EQ(Object::liveCount(), before + 1);
}

TEST(Variant, MovedFromIsEmpty) {
    Variant from = u"text";
    const Variant to = std::move(from);
    EXPECT_TRUE(from.isEmpty());
    EXPECT_EQ(to, Variant(u"text"));
    Variant& alias = from = to;
    from = std::move(alias);
    EXPECT_EQ(from, to) << "assigning a value to itself keeps it";
}

TEST(Array, IndicesCountFromTheLowerBound) {
    Array array(VariantType::Long, -2, 3);
    EXPECT_EQ(array.lowerBound(), -2);
    EXPECT_EQ(array.upperBound(), 0);
    array.at(0) = 7;
    EXPECT_EQ(array.items()[2], Variant(7));
    EXPECT_EQ(array.at(-2), Variant(0)) << "elements start with the empty value of their type";
    EXPECT_EQ(errorOf([&] { array.at(-3); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { array.at(1); }), errors::SubscriptOutOfRange);
}

TEST(Array, WithoutElementsIsNotWithoutBounds) {
    const Array empty(VariantType::String, 0, 0);
    EXPECT_TRUE(empty.hasBounds());
    EXPECT_EQ(empty.upperBound(), -1);

    const Array unbounded(VariantType::String);
    EXPECT_FALSE(unbounded.hasBounds());
    EXPECT_EQ(errorOf([&] { unbounded.lowerBound(); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { unbounded.upperBound(); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { unbounded.at(0); }), errors::SubscriptOutOfRange);
    EXPECT_NE(empty, unbounded);
}

// Each value stands before every later one, whichever side it is compared from.
TEST(Compare, OneOrderForAllValues) {
    using V = Variant;
    const auto ascending = tests::table(
        V(Decimal{0xFFFFFFFF, 0, 0, true}), V(-1e20), V(Date{-3}), V(Decimal{0, 25, 1, true}), V(true), // -1
        V(Decimal{0, 1, 28, false}), V(Currency{1}), V(0.5f), V(std::uint8_t{1}),
        V(Decimal{0, 1000000000000000001, 18, false}), V(2), V(Decimal{0, 25, 1, false}),
        V(OtherInteger{VariantType::UnsignedInteger, 65535}), V(Currency{700000000}),
        V(OtherInteger{VariantType::UnsignedLongLong, ~std::uint64_t{0}}),
        // Any text, numeric or not, stands behind every number.
        V(u"-5"), V(u"10"), V(u"9"), V(u"B"), V(u"a"), V(u"b"), V(u"\uFF00"));
    for (std::size_t i = 0; i < std::size(ascending); ++i)
        for (std::size_t j = 0; j < std::size(ascending); ++j)
            EXPECT_TRUE(compare(ascending[i], ascending[j]) == (i <=> j)) << i << " and " << j;
}

TEST(Compare, EqualAcrossTypes) {
    const std::pair<Variant, Variant> cases[] = {
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
    for (const auto& [left, right] : cases) {
        EXPECT_TRUE(compare(left, right) == 0);
        EXPECT_TRUE(compare(right, left) == 0);
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

TEST(String, Utf8IsReadAndWritten) {
    const std::pair<StringView, std::string_view> cases[] = {
        {u"", ""},
        {u"A\u007F", "A\x7F"},
        {u"\u0080\u07FF", "\xC2\x80\xDF\xBF"},
        {u"\u0800\uFFFD", "\xE0\xA0\x80\xEF\xBF\xBD"},
        {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {StringView(u"a\0b", 3), std::string_view("a\0b", 3)},
    };
    for (const auto& [utf16, utf8] : cases) {
        EXPECT_EQ(toUtf8(utf16), utf8);
        EXPECT_EQ(fromUtf8(utf8), utf16);
    }
}

TEST(String, MalformedTextBecomesReplacementCharacters) {
    const char16_t high[] = {u'a', 0xD800, u'b'};
    const char16_t low[] = {0xDC00};
    EXPECT_EQ(toUtf8({high, 3}), "a\xEF\xBF\xBD"
                                 "b");
    EXPECT_EQ(toUtf8({low, 1}), "\xEF\xBF\xBD");
    EXPECT_EQ(toUtf8({high, 2}), "a\xEF\xBF\xBD") << "a high surrogate at the very end";
    const std::pair<std::string_view, StringView> cases[] = {
        {"a\x80z", u"a\uFFFDz"},
        {"\xC0\x80", u"\uFFFD\uFFFD"},                     // overlong
        {"\xE2\x82", u"\uFFFD\uFFFD"},                     // cut off
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},           // a surrogate
        {"\xF5\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, // beyond the last character
    };
    for (const auto& [utf8, utf16] : cases)
        EXPECT_EQ(fromUtf8(utf8), utf16);
}

TEST(String, CaseIsIgnoredForLatinLettersOnly) {
    EXPECT_TRUE(equalsIgnoreCase(u"GetFieldCount", u"gETfIELDcOUNT"));
    EXPECT_FALSE(equalsIgnoreCase(u"a", u"ab"));
    EXPECT_FALSE(equalsIgnoreCase(u"@[", u"`{")) << "the neighbours of the letters are no letters";
    EXPECT_FALSE(equalsIgnoreCase(u"\u00C4", u"\u00E4"));
}

TEST(String, UpperCaseReachesBeyondLatinLetters) {
    EXPECT_EQ(toUpper(u"az09\u00E4\u00F7\u00FF\u0131\u0142\u017E"), u"AZ09\u00C4\u00F7\u0178I\u0141\u017D");
    EXPECT_EQ(toUpper(u"\u03AC\u03C2\u03C9\u03CC\u03CD\u03CE\u0436\u0451"),
              u"\u0386\u03A3\u03A9\u038C\u038E\u038F\u0416\u0401");
    EXPECT_EQ(toUpper(u"\u00B5\u0133\u01C6\u0450\u04C0\u0582\u10D0\u1E9B\u1FB3\u2184\uA64B\uFF5A"),
              u"\u039C\u0132\u01C4\u0400\u04C0\u0552\u1C90\u1E60\u1FBC\u2183\uA64A\uFF3A");
    EXPECT_EQ(toUpper(u"\u00DF"), u"\u00DF") << "a letter without a single capital stays";
}

TEST(String, TrimTakesBlanksOnly) {
    EXPECT_EQ(trim(u"  a b "), u"a b");
    EXPECT_EQ(trim(u"   "), u"");
    EXPECT_EQ(trim(u"\ta\u00A0"), u"\ta\u00A0");
}

} // namespace
} // namespace tarncom32::automation
