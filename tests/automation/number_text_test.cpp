#include "automation/convert.h"
#include "automation/locale.h"
#include "automation/number_text.h"
#include "values.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace tarncom32::automation {
namespace {

struct Reading {
    double number;
    std::vector<StringView> texts;
};

TEST(NumberText, IsReadAsHostsDo) {
    const Reading cases[] = {
        {0, {u"0", u"-0", u"1E-400", u"0E999999999999"}},
        {5, {u"5.", u"5 $", u"+5", u"005"}},
        {-5, {u"5-", u"- 5", u"(5)", u"-$5", u"$-5"}},
        {12, {u"\t 12 \n", u"1,2,"}},
        {255, {u"&HFF", u" &hfF ", u"&O377"}},
        {.5, {u"+.5", u"5e-1", u"5D-1"}},
        {250, {u"25E+1"}},
        {1234567.25, {u"1,234,567.25"}},
        {-1000.5, {u" ( $1,000.50 ) "}},
        {0.1, {u"0.1"}},
        {std::numeric_limits<double>::max(), {u"1.7976931348623157E308"}},
        {123456789012345678901234567890.0, {u"123456789012345678901234567890"}},
    };
    for (const auto& [number, texts] : cases)
        for (const StringView text : texts)
            EXPECT_EQ(parseNumber(text), number) << toUtf8(text);
}

TEST(NumberText, OtherTextIsAMismatch) {
    for (const StringView text :
         {u"",    u" ",   u"-",   u"$",   u".",     u"()",   u"abc",    u"1a",    u"1 2", u"1.2.3", u"--1",
          u"+1-", u"-1-", u"(5",  u"5)",  u"((5))", u"$5$",  u",5",     u"1.5,0", u"1E",  u"1E+",   u"1E1.5",
          u"E5",  u"&H",  u"&HG", u"&O8", u"-&H1",  u"&H1-", u"\u0663", u"nan",   u"inf", u"0x10",  u"1/2"})
        EXPECT_EQ(errorOf([&] { parseNumber(text); }), errors::TypeMismatch) << toUtf8(text);
    for (const StringView text : {u"1E309", u"-1E999999999999", u"&H10000000000000000"})
        EXPECT_EQ(errorOf([&] { parseNumber(text); }), errors::Overflow) << toUtf8(text);
}

TEST(NumberText, FollowsTheLocale) {
    Locale german;
    german.decimalSeparator = u',';
    german.groupSeparator = u'.';
    german.currencySymbol = u"\u20AC";
    Locale french;
    french.decimalSeparator = u',';
    french.groupSeparator = 0x202F;
    {
        const LocaleScope scope(german);
        EXPECT_EQ(parseNumber(u"1.234,5 \u20AC"), 1234.5);
        EXPECT_EQ(toText(-0.5), u"-0,5");
        EXPECT_EQ(toText(1.5e300), u"1,5E+300");
        EXPECT_EQ(toText(Currency{12345}), u"1,2345");
        EXPECT_EQ(leadingNumber(u"1.5,7"), 1.5) << "Val knows no locale";
        {
            const LocaleScope inner(french);
            EXPECT_EQ(parseNumber(u"1 234\u00A0567,5"), 1234567.5);
        }
        EXPECT_EQ(parseNumber(u"1.000"), 1000);
    }
    EXPECT_EQ(parseNumber(u"1.000"), 1) << "the scope has ended";
}

TEST(NumberText, LeadingNumberReadsAsFarAsItCan) {
    const Reading cases[] = {
        {0, {u"", u"abc", u"-", u".", u"$5", u"&HXYZ"}},
        {1, {u"1,234", u"1\r2", u"1E", u"1E+"}},
        {7, {u"+7", u"7abc", u"&7"}},
        {15, {u"&O17", u"&17", u"& h 0 F"}},
        {100, {u"1e2", u"1D2"}},
        {.2, {u"2 E - 1"}},
        {123.5, {u" 1 2\t3\n.5x"}},
        {-1.5, {u"-1.5.5"}},
        {255, {u"&HFF"}},
        {-1, {u"&HFFFF", u"&hFFFFFFFF"}},
        {65535, {u"&HFFFF&"}},
        {65536, {u"&H10000"}},
    };
    for (const auto& [number, texts] : cases)
        for (const StringView text : texts)
            EXPECT_EQ(leadingNumber(text), number) << toUtf8(text);
    EXPECT_EQ(errorOf([] { leadingNumber(u"1E400"); }), errors::Overflow);
    EXPECT_EQ(errorOf([] { leadingNumber(u"&H100000000"); }), errors::Overflow);
}

TEST(NumberText, IsWrittenAsAutomationPrintsIt) {
    const struct {
        Variant number;
        StringView text;
    } cases[] = {
        {0.0, u"0"},
        {-0.0, u"0"},
        {-1.25, u"-1.25"},
        {0.1 + 0.2, u"0.3"},
        {2 / 3.0, u"0.666666666666667"},
        {123456789012345.0, u"123456789012345"},
        {1e15, u"1E+15"},
        {1234567890123456.0, u"1.23456789012346E+15"},
        {0.0001, u"0.0001"},
        {1.5e-5, u"1.5E-05"},
        {-1e100, u"-1E+100"},
        {std::numeric_limits<double>::max(), u"1.79769313486232E+308"},
        {std::numeric_limits<double>::infinity(), u"1.#INF"},
        {-std::numeric_limits<double>::infinity(), u"-1.#INF"},
        {std::numeric_limits<double>::quiet_NaN(), u"-1.#IND"},
        {1234567.0f, u"1234567"},
        {1e7f, u"1E+07"},
        {1 / 3.0f, u"0.3333333"},
        {Currency{-15000}, u"-1.5"},
        {Currency{5}, u"0.0005"},
        {Currency{std::numeric_limits<std::int64_t>::min()}, u"-922337203685477.5808"},
        {kLargestDecimal, u"79228162514264337593543950335"},
        {Decimal{0, 1, 28, true}, u"-0.0000000000000000000000000001"},
        {Decimal{0, 1500, 3, false}, u"1.5"},
        {std::int32_t{-2147483647 - 1}, u"-2147483648"},
        {OtherInteger{VariantType::UnsignedLongLong, ~std::uint64_t{0}}, u"18446744073709551615"},
        {OtherInteger{VariantType::SignedByte, 0xFF}, u"-1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(toUtf8(toText(c.number)), toUtf8(c.text));
}

} // namespace
} // namespace tarncom32::automation
