#include "automation/convert.h"
#include "automation/locale.h"
#include "automation/number_text.h"
#include "values.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarncom32::automation {
namespace {

TEST(NumberText, IsReadAsHostsDo) {
    const struct {
        StringView text;
        double number;
    } cases[] = {
        {u"0", 0},
        {u"-0", 0},
        {u"\t 12 \n", 12},
        {u"+.5", .5},
        {u"5.", 5},
        {u"007", 7},
        {u"1,234,567.25", 1234567.25},
        {u"1,2,", 12},
        {u"5-", -5},
        {u"- 5", -5},
        {u"(5)", -5},
        {u" ( $1,000.50 ) ", -1000.5},
        {u"-$5", -5},
        {u"$-5", -5},
        {u"5 $", 5},
        {u"1e3", 1000},
        {u"1D-2", .01},
        {u"25E+1", 250},
        {u"&HFF", 255},
        {u" &hfFfF ", 65535},
        {u"&O17", 15},
        {u"1E-400", 0},
        {u"0E999999999999", 0},
        {u"1.7976931348623157E308", std::numeric_limits<double>::max()},
        {u"123456789012345678901234567890", 123456789012345678901234567890.0},
        {u"0.1", 0.1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parseNumber(c.text), c.number) << toUtf8(c.text);
}

TEST(NumberText, OtherTextIsAMismatch) {
    for (const StringView text :
         {u"",    u" ",   u"-",   u"$",   u".",     u"()",   u"abc",    u"1a",    u"1 2", u"1.2.3", u"--1",
          u"+1-", u"-1-", u"(5",  u"5)",  u"((5))", u"$5$",  u",5",     u"1.5,0", u"1E",  u"1E+",   u"1E1.5",
          u"E5",  u"&H",  u"&HG", u"&O8", u"-&H1",  u"&H1-", u"\u0663", u"nan",   u"inf", u"0x10",  u"1/2"})
        EXPECT_EQ(errorNumberOf([&] { parseNumber(text); }), errors::TypeMismatch) << toUtf8(text);
    for (const StringView text : {u"1E309", u"-1E999999999999", u"&H10000000000000000"})
        EXPECT_EQ(errorNumberOf([&] { parseNumber(text); }), errors::Overflow) << toUtf8(text);
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
    const struct {
        StringView text;
        double number;
    } cases[] = {
        {u"", 0},
        {u"abc", 0},
        {u"-", 0},
        {u".", 0},
        {u"12abc", 12},
        {u" 1 2\t3\n.5x", 123.5},
        {u"1\r2", 1},
        {u"1,234", 1},
        {u"$5", 0},
        {u"-1.5.5", -1.5},
        {u"+7", 7},
        {u"1e2", 100},
        {u"1D2", 100},
        {u"1E", 1},
        {u"1E+", 1},
        {u"2 E - 1", .2},
        {u"&HFF", 255},
        {u"&HFFFF", -1},
        {u"&HFFFF&", 65535},
        {u"&H10000", 65536},
        {u"&hFFFFFFFF", -1},
        {u"& h 1 0", 16},
        {u"&O17", 15},
        {u"&17", 15},
        {u"&HXYZ", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(leadingNumber(c.text), c.number) << toUtf8(c.text);
    EXPECT_EQ(errorNumberOf([] { leadingNumber(u"1E400"); }), errors::Overflow);
    EXPECT_EQ(errorNumberOf([] { leadingNumber(u"&H100000000"); }), errors::Overflow);
}

TEST(NumberText, IsWrittenAsAutomationPrintsIt) {
    const struct {
        Variant number;
        StringView text;
    } cases[] = {
        {0.0, u"0"},
        {-0.0, u"0"},
        {.5, u"0.5"},
        {-1.25, u"-1.25"},
        {0.1 + 0.2, u"0.3"},
        {1 / 3.0, u"0.333333333333333"},
        {2 / 3.0, u"0.666666666666667"},
        {123456789012345.0, u"123456789012345"},
        {999999999999999.0, u"999999999999999"},
        {1e15, u"1E+15"},
        {1234567890123456.0, u"1.23456789012346E+15"},
        {0.0001, u"0.0001"},
        {1.5e-5, u"1.5E-05"},
        {-1e100, u"-1E+100"},
        {std::numeric_limits<double>::max(), u"1.79769313486232E+308"},
        {std::numeric_limits<double>::infinity(), u"1.#INF"},
        {-std::numeric_limits<double>::infinity(), u"-1.#INF"},
        {std::numeric_limits<double>::quiet_NaN(), u"-1.#IND"},
        {0.1f, u"0.1"},
        {1234567.0f, u"1234567"},
        {1e7f, u"1E+07"},
        {1 / 3.0f, u"0.3333333"},
        {Currency{0}, u"0"},
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
