#include "automation/convert.h"
#include "automation/date_text.h"
#include "automation/locale.h"
#include "automation/number_text.h"
#include "support/table.h"
#include "values.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace tarncom32::automation {
namespace {

TEST(NumberText, IsReadAsHostsDo) {
    using Case = std::pair<double, std::vector<StringView>>;
    const auto cases =
        tests::table(Case(0, {u"0", u"-0", u"1E-400", u"0E999999999999"}), Case(5, {u"5.", u"5 $", u"+5", u"005"}),
                     Case(-5, {u"5-", u"- 5", u"(5)", u"-$5", u"$-5"}), Case(12, {u"\t 12 \n", u"1,2,"}),
                     Case(255, {u"&HFF", u" &hfF ", u"&O377"}), Case(.5, {u"+.5", u"5e-1", u"5D-1"}),
                     Case(250, {u"25E+1"}), Case(1234567.25, {u"1,234,567.25"}), Case(-1000.5, {u" ( $1,000.50 ) "}),
                     Case(0.1, {u"0.1"}), Case(std::numeric_limits<double>::max(), {u"1.7976931348623157E308"}),
                     Case(123456789012345678901234567890.0, {u"123456789012345678901234567890"}));
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

Locale german() {
    Locale rules;
    rules.decimalSeparator = u',';
    rules.groupSeparator = u'.';
    rules.dateSeparator = u'.';
    rules.datePicture = u"dd.MM.yyyy";
    rules.timePicture = u"HH:mm:ss";
    rules.currencySymbol = u"\u20AC";
    rules.halvesOfDay = {};
    rules.months[2] = u"M\u00E4rz";
    return rules;
}

TEST(NumberText, FollowsTheLocale) {
    Locale french;
    french.decimalSeparator = u',';
    french.groupSeparator = 0x202F;
    {
        const Locale rules = german();
        const LocaleScope scope(rules);
        EXPECT_EQ(parseNumber(u"1.234,5 \u20AC"), 1234.5);
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
    using Case = std::pair<double, std::vector<StringView>>;
    const auto cases = tests::table(
        Case(0, {u"", u"abc", u"-", u".", u"$5", u"&HXYZ"}), Case(1, {u"1,234", u"1\r2", u"1E", u"1E+"}),
        Case(7, {u"+7", u"7abc", u"&7"}), Case(15, {u"&O17", u"&17", u"& h 0 F"}), Case(100, {u"1e2", u"1D2"}),
        Case(.2, {u"2 E - 1"}), Case(123.5, {u" 1 2\t3\n.5x"}), Case(-1.5, {u"-1.5.5"}), Case(255, {u"&HFF"}),
        Case(-1, {u"&HFFFF", u"&hFFFFFFFF"}), Case(65535, {u"&HFFFF&"}), Case(65536, {u"&H10000"}));
    for (const auto& [number, texts] : cases)
        for (const StringView text : texts)
            EXPECT_EQ(leadingNumber(text), number) << toUtf8(text);
    for (const StringView text : {u"1E400", u"&H100000000"})
        EXPECT_EQ(errorOf([&] { leadingNumber(text); }), errors::Overflow);
}

TEST(NumberText, IsWrittenAsAutomationPrintsIt) {
    using Case = std::pair<Variant, StringView>;
    const auto cases = tests::table(
        Case(0.0, u"0"), Case(-0.0, u"0"), Case(-1.25, u"-1.25"), Case(0.1 + 0.2, u"0.3"),
        Case(2 / 3.0, u"0.666666666666667"), Case(123456789012345.0, u"123456789012345"), Case(1e15, u"1E+15"),
        Case(1234567890123456.0, u"1.23456789012346E+15"), Case(0.0001, u"0.0001"), Case(1.5e-5, u"1.5E-05"),
        Case(-1e100, u"-1E+100"), Case(std::numeric_limits<double>::max(), u"1.79769313486232E+308"),
        Case(std::numeric_limits<double>::infinity(), u"1.#INF"),
        Case(-std::numeric_limits<double>::infinity(), u"-1.#INF"),
        Case(std::numeric_limits<double>::quiet_NaN(), u"-1.#IND"), Case(1234567.0f, u"1234567"), Case(1e7f, u"1E+07"),
        Case(1 / 3.0f, u"0.3333333"), Case(Currency{-15000}, u"-1.5"), Case(Currency{5}, u"0.0005"),
        Case(Currency{std::numeric_limits<std::int64_t>::min()}, u"-922337203685477.5808"),
        Case(kLargestDecimal, u"79228162514264337593543950335"),
        Case(Decimal{0, 1, 28, true}, u"-0.0000000000000000000000000001"), Case(Decimal{0, 1500, 3, false}, u"1.5"),
        Case(std::int32_t{-2147483647 - 1}, u"-2147483648"),
        Case(OtherInteger{VariantType::UnsignedLongLong, ~std::uint64_t{0}}, u"18446744073709551615"),
        Case(OtherInteger{VariantType::SignedByte, 0xFF}, u"-1"));
    for (const auto& [number, text] : cases)
        EXPECT_EQ(toUtf8(toText(number)), toUtf8(text));
}

TEST(DateText, IsWrittenAsTheLocaleHasIt) {
    using Case = std::tuple<double, StringView, StringView>;
    const auto cases = tests::table(
        Case(0, u"12:00:00 AM", u"00:00:00"), Case(0.5, u"12:00:00 PM", u"12:00:00"),
        Case(1, u"12/31/1899", u"31.12.1899"), Case(36526.75, u"1/1/2000 6:00:00 PM", u"01.01.2000 18:00:00"),
        Case(36526.9999999, u"1/2/2000", u"02.01.2000"), // rounds to the next midnight
        Case(-1.25, u"12/29/1899 6:00:00 AM", u"29.12.1899 06:00:00"), Case(-657434, u"1/1/100", u"01.01.100"),
        Case(2958465, u"12/31/9999", u"31.12.9999"));
    for (const auto& [days, american, byGermans] : cases) {
        EXPECT_EQ(toUtf8(dateText({days})), toUtf8(american));
        const Locale rules = german();
        const LocaleScope scope(rules);
        EXPECT_EQ(toUtf8(dateText({days})), toUtf8(byGermans));
    }
    EXPECT_EQ(errorOf([] { dateText({2958466}); }), errors::InvalidProcedureCall);
}

TEST(DateText, IsRead) {
    using Case = std::pair<double, std::vector<StringView>>;
    const auto cases = tests::table(
        Case(36526, {u"1/1/2000", u"1/2000", u"January 2000"}),
        Case(36525, {u" 12-31-1999 ", u"31/12/1999"}), // no 31st month: the other order is meant
        Case(36527, {u"2000-01-02", u"1.2.2000"}), Case(36585, {u"2/29/2000"}), Case(47119, {u"1/1/29"}),
        Case(10959, {u"1/1/30"}),
        Case(36530, {u"Jan 5, 2000", u"5 january 2000", u"5-Jan-00", u"Wednesday, January 5, 2000", u"2000 Jan 5"}),
        Case(0, {u"12:00:00 AM"}), Case(0.5, {u"12 PM"}), Case(0.75, {u"18:00", u"6:00 pm"}),
        Case(36526.75, {u"1/1/2000 6:00:00 PM", u"6PM 1/1/2000"}), Case(-1.25, {u"12/29/1899 6:00:00 AM"}),
        Case(1.75, {u"1.75"}),     // a number counts the days
        Case(0.5625, {u"13.30"})); // but this is a time of day
    for (const auto& [days, texts] : cases)
        for (const StringView text : texts)
            EXPECT_EQ(toDate(text).days, days) << toUtf8(text);
}

TEST(DateText, OtherTextIsAMismatch) {
    for (const StringView text : {u"", u"tomorrow", u"2/30/2000", u"13/13/2000", u"1/1/99999", u"1//2/2000", u"1/2/",
                                  u"/1/2", u"25:00", u"1:60", u"13 PM", u"1:00 2:00", u"1:2:3:4", u"Jan",
                                  u"Jan Feb 2000", u"1/2/3/4", u"2000 Jan 257", u"1/1/50 AD"})
        EXPECT_EQ(errorOf([&] { toDate(text); }), errors::TypeMismatch) << toUtf8(text);
}

TEST(DateText, NumbersAreTakenInTheLocalesOrder) {
    const Locale rules = german();
    const LocaleScope scope(rules);
    EXPECT_EQ(toDate(u"1.2.2000").days, 36557) << "and no number with its digits grouped";
    EXPECT_EQ(toDate(u"1,5").days, 1.5);
    EXPECT_EQ(toDate(u"1. M\u00C4RZ 2000").days, 36586);
}

TEST(DateText, IsWrittenByPictures) {
    using Case = std::tuple<StringView, StringView, double, StringView>;
    const auto cases =
        tests::table(Case(u"yyyy-MM-dd", u"HH:mm:ss", 36526.25, u"2000-01-01 06:00:00"),
                     Case(u"ddd, d MMM yy", u"", 36526, u"Sat, 1 Jan 00"), Case(u"", u"t h 'h'", 0.75, u"P 6 h"),
                     Case(u"yy", u"", 1, u"1899"), // two digits would mean another year
                     Case(u"dddd d. 'de' MMMM yyyy '\u0433.'", u"", 36526, u"Saturday 1. de January 2000 \u0433."));
    for (const auto& [date, time, days, text] : cases) {
        Locale rules;
        rules.datePicture = date;
        rules.timePicture = time;
        const LocaleScope scope(rules);
        EXPECT_EQ(toUtf8(dateText({days})), toUtf8(text));
    }
}

TEST(DateText, WithoutAYearMeansTheCurrentOne) {
    const auto day = [](StringView text) { return toText(toDate(text)); };
    const String march = day(u"3/4");
    EXPECT_TRUE(march.starts_with(u"3/4/")) << toUtf8(march);
    EXPECT_EQ(day(u"4 March"), march);
    EXPECT_EQ(day(u"31/3").substr(0, 5), u"3/31/");
}

} // namespace
} // namespace tarncom32::automation
