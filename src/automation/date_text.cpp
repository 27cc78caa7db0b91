#include "automation/date_text.h"

#include "automation/error.h"
#include "automation/locale.h"

#include <chrono>
#include <cmath>
#include <vector>

namespace tarncom32::automation {

namespace {

namespace chrono = std::chrono;

constexpr chrono::sys_days kDayZero = chrono::year(1899) / 12 / 30;
constexpr int kSecondsADay = 86400;

constexpr StringView kMonths[] = {u"January", u"February", u"March",     u"April",   u"May",      u"June",
                                  u"July",    u"August",   u"September", u"October", u"November", u"December"};
constexpr StringView kWeekdays[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                    u"Thursday", u"Friday", u"Saturday"};

bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}
bool isLetter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
bool isBlank(char16_t c) {
    return (c >= 9 && c <= 13) || c == u' ' || c == 0xA0;
}

void append(String& text, int number, std::size_t width) {
    const String digits = decimalText(number);
    if (digits.size() < width) text.append(width - digits.size(), u'0');
    text += digits;
}

String dayText(chrono::year_month_day day) {
    const Locale& rules = locale();
    const std::size_t width = rules.leadingZeros ? 2 : 1;
    const int year = static_cast<int>(day.year());
    const int month = static_cast<int>(static_cast<unsigned>(day.month()));
    const int dayOfMonth = static_cast<int>(static_cast<unsigned>(day.day()));
    String text;
    if (rules.dateOrder == Locale::DateOrder::YearMonthDay) {
        text += decimalText(year);
        text.push_back(rules.dateSeparator);
    }
    const bool dayFirst = rules.dateOrder == Locale::DateOrder::DayMonthYear;
    append(text, dayFirst ? dayOfMonth : month, width);
    text.push_back(rules.dateSeparator);
    append(text, dayFirst ? month : dayOfMonth, width);
    if (rules.dateOrder != Locale::DateOrder::YearMonthDay) {
        text.push_back(rules.dateSeparator);
        text += decimalText(year);
    }
    return text;
}

String timeText(int seconds) {
    const Locale& rules = locale();
    const int hour = seconds / 3600;
    String text;
    append(text, rules.twentyFourHours ? hour : (hour + 11) % 12 + 1, rules.leadingZeros ? 2 : 1);
    text.push_back(u':');
    append(text, seconds / 60 % 60, 2);
    text.push_back(u':');
    append(text, seconds % 60, 2);
    if (!rules.twentyFourHours) text += hour < 12 ? u" AM" : u" PM";
    return text;
}

// A number of a date, with the count of its digits: more than two can only be a year.
struct Number {
    int value = 0;
    std::size_t digits = 0;
};

/// What a text said about a moment, before the numbers have been told apart.
struct Reading {
    std::vector<Number> numbers;
    int month = 0; // by name; 0 when there was none
    std::optional<int> seconds;
    std::size_t points = 0; // points between numbers where dates are not written so
};

/// 1 for the first of `names`, in full or by its first three letters; 0 for none of them.
template <std::size_t Count>
int indexOfName(const StringView (&names)[Count], StringView word) {
    for (std::size_t i = 0; i < Count; ++i)
        if (equalsIgnoreCase(names[i], word) || equalsIgnoreCase(names[i].substr(0, 3), word))
            return static_cast<int>(i) + 1;
    return 0;
}

class Reader {
public:
    explicit Reader(StringView text) : text_(text) {}

    std::optional<Reading> read() {
        while (skipBlanks(), at_ < text_.size())
            if (!(isDigit(peek()) ? readNumber() : isLetter(peek()) ? readName() : readSeparator()))
                return std::nullopt;
        // A separator must stand between two numbers, and a comma beside a name.
        if (separated_ || (comma_ && reading_.month == 0 && !weekday_)) return std::nullopt;
        return std::move(reading_);
    }

private:
    char16_t peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }
    void skipBlanks() {
        while (isBlank(peek()))
            ++at_;
    }

    Number takeNumber() {
        Number number;
        for (; isDigit(peek()) && number.digits < 5; ++at_, ++number.digits)
            number.value = number.value * 10 + (peek() - u'0');
        return number;
    }

    StringView takeWord() {
        const std::size_t first = at_;
        while (isLetter(peek()))
            ++at_;
        return text_.substr(first, at_ - first);
    }

    bool readNumber() {
        const Number number = takeNumber();
        if (isDigit(peek())) return false;
        const bool separated = std::exchange(separated_, false);
        if (peek() == u':') return !separated && readTime(number);
        const std::size_t afterNumber = at_;
        skipBlanks();
        if (isLetter(peek())) {
            const std::size_t word = at_;
            const int half = halfOfDay(takeWord());
            if (half >= 0) return !separated && setTime(number.value, 0, 0, half);
            at_ = word;
        } else {
            at_ = afterNumber;
        }
        reading_.numbers.push_back(number);
        return reading_.numbers.size() <= 3;
    }

    bool readTime(Number hour) {
        int parts[2] = {0, 0};
        for (int& part : parts) {
            if (peek() != u':') break;
            ++at_;
            const Number number = takeNumber();
            if (number.digits == 0 || number.digits > 2) return false;
            part = number.value;
        }
        skipBlanks();
        int half = -1;
        if (isLetter(peek())) {
            const std::size_t word = at_;
            half = halfOfDay(takeWord());
            if (half < 0) at_ = word;
        }
        return setTime(hour.value, parts[0], parts[1], half);
    }

    /// 0 for the morning, 1 for the afternoon, -1 for any other word.
    static int halfOfDay(StringView word) {
        if (equalsIgnoreCase(word, u"AM") || equalsIgnoreCase(word, u"A")) return 0;
        if (equalsIgnoreCase(word, u"PM") || equalsIgnoreCase(word, u"P")) return 1;
        return -1;
    }

    bool setTime(int hour, int minute, int second, int half) {
        if (reading_.seconds || minute > 59 || second > 59 || hour > (half < 0 ? 23 : 12)) return false;
        if (half >= 0) hour = hour % 12 + 12 * half;
        reading_.seconds = (hour * 60 + minute) * 60 + second;
        return true;
    }

    bool readName() {
        const StringView word = takeWord();
        separated_ = false;
        if (const int month = indexOfName(kMonths, word); month != 0) return std::exchange(reading_.month, month) == 0;
        return indexOfName(kWeekdays, word) != 0 && !std::exchange(weekday_, true);
    }

    bool readSeparator() {
        const char16_t c = text_[at_++];
        if (c == u',') return comma_ = true;
        const bool known = c == u'/' || c == u'-' || c == u'.' || c == locale().dateSeparator;
        const bool first = reading_.numbers.empty() && reading_.month == 0;
        if (c == u'.' && c != locale().dateSeparator) ++reading_.points;
        return known && !first && !std::exchange(separated_, true);
    }

    StringView text_;
    std::size_t at_ = 0;
    bool separated_ = false, comma_ = false, weekday_ = false;
    Reading reading_;
};

std::optional<chrono::sys_days> dayOf(Number year, Number month, Number day) {
    if (month.digits > 2 || day.digits > 2) return std::nullopt;
    int full = year.value;
    if (year.digits <= 2) full += full < 30 ? 2000 : 1900;
    if (full < 100 || full > 9999) return std::nullopt;
    const chrono::year_month_day date{chrono::year(full), chrono::month(static_cast<unsigned>(month.value)),
                                      chrono::day(static_cast<unsigned>(day.value))};
    return date.ok() ? std::optional(chrono::sys_days(date)) : std::nullopt;
}

Number currentYear() {
    const auto today = chrono::floor<chrono::days>(chrono::system_clock::now());
    return {static_cast<int>(chrono::year_month_day(today).year()), 4};
}

std::optional<chrono::sys_days> dayFromNumbers(const std::vector<Number>& n) {
    const Number none{1, 1};
    const bool dayFirst = locale().dateOrder == Locale::DateOrder::DayMonthYear;
    std::optional<chrono::sys_days> day;
    const auto attempt = [&day](Number year, Number month, Number dayOfMonth) {
        if (!day) day = dayOf(year, month, dayOfMonth);
    };
    if (n.size() == 2) {
        if (dayFirst) attempt(currentYear(), n[1], n[0]);
        attempt(currentYear(), n[0], n[1]);
        attempt(currentYear(), n[1], n[0]);
        attempt(n[1], n[0], none);
        attempt(n[0], n[1], none);
    } else if (n.size() == 3) {
        if (locale().dateOrder == Locale::DateOrder::YearMonthDay) attempt(n[0], n[1], n[2]);
        if (dayFirst) attempt(n[2], n[1], n[0]);
        attempt(n[2], n[0], n[1]);
        attempt(n[2], n[1], n[0]);
        attempt(n[0], n[1], n[2]);
        attempt(n[0], n[2], n[1]);
    }
    return day;
}

std::optional<chrono::sys_days> dayWithMonthName(const std::vector<Number>& n, int monthByName) {
    const Number month{monthByName, 1};
    const auto isYear = [](Number number) { return number.digits > 2 || number.value > 31; };
    if (n.size() == 1) return isYear(n[0]) ? dayOf(n[0], month, {1, 1}) : dayOf(currentYear(), month, n[0]);
    if (n.size() != 2) return std::nullopt;
    return isYear(n[0]) ? dayOf(n[0], month, n[1]) : dayOf(n[1], month, n[0]);
}

/// "13.50" is a time of day where the point does not separate dates, if its numbers allow it.
std::optional<int> secondsFromNumbers(const Reading& reading) {
    const std::vector<Number>& n = reading.numbers;
    if (reading.month != 0 || reading.seconds || reading.points == 0 || n.size() != reading.points + 1)
        return std::nullopt;
    constexpr int kLimits[] = {24, 60, 60};
    int seconds = 0;
    for (std::size_t i = 0; i < std::size(kLimits); ++i) {
        const Number part = i < n.size() ? n[i] : Number{0, 1};
        if (part.digits > 2 || part.value >= kLimits[i]) return std::nullopt;
        seconds = seconds * 60 + part.value;
    }
    return seconds;
}

} // namespace

bool isDateInRange(double days) {
    return days > -657435 && days < 2958466;
}

String dateText(Date date) {
    if (!isDateInRange(date.days)) throw Error(errors::InvalidProcedureCall);
    const double whole = std::trunc(date.days);
    // The time of day counts forward from midnight on the days before day 0, too.
    int seconds = static_cast<int>(std::lround(std::fabs(date.days - whole) * kSecondsADay));
    int day = static_cast<int>(whole);
    if (seconds == kSecondsADay) {
        seconds = 0;
        ++day;
    }
    if (day == 0) return timeText(seconds);
    const String text = dayText(chrono::year_month_day(kDayZero + chrono::days(day)));
    return seconds == 0 ? text : text + u' ' + timeText(seconds);
}

std::optional<Date> spelledDate(StringView text) {
    const auto reading = Reader(text).read();
    if (!reading) return std::nullopt;
    const auto timeWithPoints = secondsFromNumbers(*reading);
    if (timeWithPoints) return Date{static_cast<double>(*timeWithPoints) / kSecondsADay};
    const double time = static_cast<double>(reading->seconds.value_or(0)) / kSecondsADay;
    if (reading->numbers.empty() && reading->month == 0)
        return reading->seconds ? std::optional(Date{time}) : std::nullopt;
    // What is left is a fraction rather than a day without a year.
    if (reading->points > 0 && reading->month == 0 && reading->numbers.size() < 3) return std::nullopt;
    const auto day =
        reading->month != 0 ? dayWithMonthName(reading->numbers, reading->month) : dayFromNumbers(reading->numbers);
    if (!day) return std::nullopt;
    const double days = static_cast<double>((*day - kDayZero).count());
    return Date{days < 0 ? days - time : days + time};
}

} // namespace tarncom32::automation
