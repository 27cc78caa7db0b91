#include "automation/convert.h"
#include "automation/date_text.h"
#include "automation/locale.h"
#include "values.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarncom32::automation {
namespace {

Locale germanDates() {
    Locale rules;
    rules.decimalSeparator = u',';
    rules.groupSeparator = u'.';
    rules.dateSeparator = u'.';
    rules.dateOrder = Locale::DateOrder::DayMonthYear;
    rules.twentyFourHours = true;
    rules.leadingZeros = true;
    return rules;
}

TEST(DateText, IsWrittenAsTheLocaleHasIt) {
    const struct {
        double days;
        StringView american, german;
    } cases[] = {
        {0, u"12:00:00 AM", u"00:00:00"},
        {0.5, u"12:00:00 PM", u"12:00:00"},
        {1, u"12/31/1899", u"31.12.1899"},
        {36526, u"1/1/2000", u"01.01.2000"},
        {36526.75, u"1/1/2000 6:00:00 PM", u"01.01.2000 18:00:00"},
        {36526.9999999, u"1/2/2000", u"02.01.2000"}, // rounds to the next midnight
        {-1.25, u"12/29/1899 6:00:00 AM", u"29.12.1899 06:00:00"},
        {-657434, u"1/1/100", u"01.01.100"},
        {2958465, u"12/31/9999", u"31.12.9999"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(toUtf8(dateText({c.days})), toUtf8(c.american));
        const Locale german = germanDates();
        const LocaleScope scope(german);
        EXPECT_EQ(toUtf8(dateText({c.days})), toUtf8(c.german));
    }
    EXPECT_EQ(errorOf([] { dateText({2958466}); }), errors::InvalidProcedureCall);
}

TEST(DateText, IsRead) {
    const std::pair<double, std::vector<StringView>> cases[] = {
        {36526, {u"1/1/2000", u"1/2000", u"January 2000"}},
        {36525, {u" 12-31-1999 ", u"31/12/1999"}}, // no 31st month: the other order is meant
        {36527, {u"2000-01-02", u"1.2.2000"}},
        {36585, {u"2/29/2000"}},
        {47119, {u"1/1/29"}},
        {10959, {u"1/1/30"}},
        {36530, {u"Jan 5, 2000", u"5 january 2000", u"5-Jan-00", u"Wednesday, January 5, 2000", u"2000 Jan 5"}},
        {0, {u"12:00:00 AM"}},
        {0.5, {u"12 PM"}},
        {0.75, {u"18:00", u"6:00 pm"}},
        {36526.75, {u"1/1/2000 6:00:00 PM", u"6PM 1/1/2000"}},
        {-1.25, {u"12/29/1899 6:00:00 AM"}},
        {1.75, {u"1.75"}},    // a number counts the days
        {0.5625, {u"13.30"}}, // but this is a time of day
    };
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
    const Locale german = germanDates();
    const LocaleScope scope(german);
    EXPECT_EQ(toDate(u"1.2.2000").days, 36557) << "and no number with its digits grouped";
    EXPECT_EQ(toDate(u"1,5").days, 1.5);
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
