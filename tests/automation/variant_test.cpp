#include "automation/array.h"
#include "automation/convert.h"
#include "automation/string.h"
#include "automation/variant.h"
#include "support/table.h"
#include "values.h"

#include <functional>
#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

TEST(Variant, CopiesShareObjectsAndCopyArrays) {
    Variant array = Array(VariantType::Variant, 0, {Variant(1)});
    const Variant copy = array;
    array.as<Array>()->at(0) = 2;
    EXPECT_EQ(copy.as<Array>()->at(0), Variant(1));

    const Variant object = make<ObjectWithDefault>(Variant(1));
    EXPECT_EQ(object, Variant(object));
    EXPECT_NE(object, Variant(make<ObjectWithDefault>(Variant(1)))) << "objects are compared by identity";
    EXPECT_NE(Variant(Boolean::fromBits(1)), Variant(true)) << "flags are compared by their bits";
}

TEST(Variant, MovedFromIsEmpty) {
    Variant from = u"text";
    const Variant to = std::move(from);
    EXPECT_TRUE(from.isEmpty());
    Variant& alias = from = to;
    from = std::move(alias);
    EXPECT_EQ(from, Variant(u"text")) << "assigning a value to itself keeps it";
}

TEST(Array, IndicesCountFromTheLowerBound) {
    Array array(VariantType::Long, -2, 3);
    EXPECT_EQ(array.upperBound(), 0);
    array.at(0) = 7;
    EXPECT_EQ(array.items()[2], Variant(7));
    EXPECT_EQ(array.at(-2), Variant(0)) << "elements start with the empty value of their type";
    EXPECT_EQ(Array(VariantType::String, 0, 0).upperBound(), -1);
    Array unbounded(VariantType::String);
    EXPECT_NE(Array(VariantType::String, 0, 0), unbounded);
    for (const std::function<void()>& outside : std::initializer_list<std::function<void()>>{
             [&] { array.at(-3); }, [&] { array.at(1); }, [&] { unbounded.lowerBound(); },
             [&] { unbounded.upperBound(); }, [&] { unbounded.at(0); }})
        EXPECT_EQ(errorOf(outside), errors::SubscriptOutOfRange);
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
    using Case = std::pair<Variant, Variant>;
    for (const auto& [left, right] :
         tests::table(Case(true, std::int16_t{-1}), Case({}, 0), Case({}, u""), Case({}, false), Case(Date{1.5}, 1.5),
                      Case(0.1f, 0.1), // the double is cut to the single's digits
                      Case(Decimal{0, 100, 2, false}, std::uint8_t{1}), Case(Decimal{0, 0, 3, true}, 0),
                      Case(Decimal{0, 1, 1, false}, 0.1), Case(ErrorValue{1}, ErrorValue{2}),
                      Case(make<ObjectWithDefault>(u"a"), u"a"))) {
        EXPECT_TRUE(compare(left, right) == 0);
        EXPECT_TRUE(compare(right, left) == 0);
    }
}

TEST(Compare, LessAcrossTypes) {
    using Case = std::pair<Variant, Variant>;
    for (const auto& [less, greater] :
         tests::table(Case({}, u"a"), // and what overflows the common type compares as doubles
                      Case(kLargestDecimal, 1e300), Case(-1e300, kLargestDecimal), Case(1.0f, 1e300),
                      Case(Currency{}, OtherInteger{VariantType::LongLong, ~std::uint64_t{0} >> 1}))) {
        EXPECT_TRUE(compare(less, greater) < 0);
        EXPECT_TRUE(compare(greater, less) > 0);
    }
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
    using Case = std::pair<StringView, std::string_view>;
    for (const auto& [utf16, utf8] :
         tests::table(Case(u"", ""), Case(u"A\u007F", "A\x7F"), Case(u"\u0080\u07FF", "\xC2\x80\xDF\xBF"),
                      Case(u"\u0800\uFFFD", "\xE0\xA0\x80\xEF\xBF\xBD"),
                      Case(u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
                      Case(StringView(u"a\0b", 3), std::string_view("a\0b", 3)))) {
        EXPECT_EQ(toUtf8(utf16), utf8);
        EXPECT_EQ(fromUtf8(utf8), utf16);
    }
}

TEST(String, MalformedTextBecomesReplacementCharacters) {
    EXPECT_EQ(toUtf8(String{0xDC00, u'a', 0xD800, u'b', 0xD800}), toUtf8(u"\uFFFDa\uFFFDb\uFFFD"));
    using Case = std::pair<std::string_view, StringView>;
    for (const auto& [utf8, utf16] :
         tests::table(Case("a\x80z", u"a\uFFFDz"), Case("\xC0\x80", u"\uFFFD\uFFFD"), // overlong
                      Case("\xE2\x82", u"\uFFFD\uFFFD"),                              // cut off
                      Case("\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"),                    // a surrogate
                      Case("\xF5\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD")))         // beyond the last character
        EXPECT_EQ(fromUtf8(utf8), utf16);
}

TEST(String, UpperCaseReachesBeyondLatinLetters) {
    EXPECT_EQ(toUpper(u"az09\u00E4\u00F7\u00FF\u0131\u0142\u017E"), u"AZ09\u00C4\u00F7\u0178I\u0141\u017D");
    EXPECT_EQ(toUpper(u"\u00B5\u03AC\u03C2\u0133\u01C6\u0450\u04C0\u0582\u10D0\u1E9B\u1FB3\u2184\uA64B\uFF5A"),
              u"\u039C\u0386\u03A3\u0132\u01C4\u0400\u04C0\u0552\u1C90\u1E60\u1FBC\u2183\uA64A\uFF3A");
    EXPECT_EQ(toUpper(u"\u00DF"), u"\u00DF") << "a letter without a single capital stays";
    EXPECT_TRUE(equalsIgnoreCase(u"GetFieldCount", u"gETfIELDcOUNT"));
    for (const auto& [left, right] : {std::pair(u"a", u"ab"), std::pair(u"@[", u"`{"), std::pair(u"\u00C4", u"\u00E4")})
        EXPECT_FALSE(equalsIgnoreCase(left, right)) << "only the case of Latin letters is ignored";
}

TEST(String, TrimTakesBlanksOnly) {
    EXPECT_EQ(trim(u"  a b "), u"a b");
    EXPECT_EQ(trim(u"   "), u"");
    EXPECT_EQ(trim(u"\ta\u00A0"), u"\ta\u00A0");
}

} // namespace
} // namespace tarncom32::automation
