#include "automation/date_text.h"

#include "automation/error.h"
#include "automation/locale.h"
#include "automation/number_text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <utility>
#include <vector>

namespace tarncom32::automation {

namespace {

namespace chrono = std::chrono;

constexpr chrono::sys_days kDayZero = chrono::year(1899) / 12 / 30;
constexpr int kSecondsADay = 86400;

bool isLetter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c >= 0xC0;
}
bool isBlank(char16_t c) {
    return (c >= 9 && c <= 13) || c == u' ' || c == 0xA0;
}

void append(String& text, int number, std::size_t width) {
    const String digits = decimalText(number);
    if (digits.size() < width) text.append(width - digits.size(), u'0');
    text += digits;
}

/// A moment in the parts that pictures name.
struct Moment {
    chrono::sys_days date;
    int seconds; ///< since midnight
};

/// Appends what `count` of `letter` stand for in a picture; false when the letter stands for itself.
bool appendField(String& text, char16_t letter, std::size_t count, const Moment& moment) {
    const Locale& rules = locale();
    const chrono::year_month_day date(moment.date);
    const unsigned weekday = chrono::weekday(moment.date).c_encoding();
    const auto month = static_cast<unsigned>(date.month());
    const int year = static_cast<int>(date.year());
    const int hour = moment.seconds / 3600;
    const auto number = [&](int value) { append(text, value, count); };
    switch (letter) {
    case u'd':
        if (count > 2)
            text += (count == 3 ? rules.shortWeekdays : rules.weekdays)[weekday];
        else
            number(static_cast<int>(static_cast<unsigned>(date.day())));
        return true;
    case u'M':
        if (count > 2)
            text += (count == 3 ? rules.shortMonths : rules.months)[month - 1];
        else
            number(static_cast<int>(month));
        return true;
    case u'y':
        // Two digits are read back as a year of this window.
        text += count <= 2 && year >= 1930 && year < 2030 ? decimalText(year).substr(2) : decimalText(year);
        return true;
    case u'h':
        number((hour + 11) % 12 + 1);
        return true;
    case u'H':
        number(hour);
        return true;
    case u'm':
        number(moment.seconds / 60 % 60);
        return true;
    case u's':
        number(moment.seconds % 60);
        return true;
    case u't':
        text += StringView(rules.halvesOfDay[hour < 12 ? 0 : 1]).substr(0, count == 1 ? 1 : StringView::npos);
        return true;
    default:
        return false;
    }
}

void appendByPicture(String& text, StringView picture, const Moment& moment) {
    for (std::size_t at = 0; at < picture.size();) {
        const char16_t letter = picture[at];
        const std::size_t end = std::min(picture.find_first_not_of(letter, at), picture.size());
        if (letter == u'\'') {
            const std::size_t close = std::min(picture.find(u'\'', at + 1), picture.size());
            text.append(picture, at + 1, close - at - 1);
            at = close + 1;
        } else if (appendField(text, letter, end - at, moment)) {
            at = end;
        } else {
            text.push_back(letter);
            ++at;
        }
    }
}

/// Where the date picture has a field of this letter; behind all fields when it has none.
std::size_t placeInPicture(char16_t letter) {
    return locale().datePicture.find(letter);
}

bool isDayFirst() {
    return placeInPicture(u'd') < placeInPicture(u'M');
}

bool isYearFirst() {
    return placeInPicture(u'y') < std::min(placeInPicture(u'd'), placeInPicture(u'M'));
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

/// Whether `word` is `name`, which may end in a point that marks it as short.
bool isName(StringView name, StringView word) {
    if (name.ends_with(u'.')) name.remove_suffix(1);
    return !name.empty() && toUpper(name) == toUpper(word);
}

/// 1 for the first of `names`, in full or short, in the locale's language or in English; 0 for none of them.
template <std::size_t Count>
int indexOfName(std::array<String, Count> Locale::*names, std::array<String, Count> Locale::*shortNames,
                StringView word) {
    static const Locale english;
    for (const Locale* language : {&locale(), &english})
        for (std::size_t i = 0; i < Count; ++i)
            if (isName((language->*names)[i], word) || isName((language->*shortNames)[i], word))
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
        for (int half = 0; half < 2; ++half) {
            const StringView english = half == 0 ? u"AM" : u"PM";
            if (isName(locale().halvesOfDay[static_cast<std::size_t>(half)], word) || isName(english, word) ||
                isName(english.substr(0, 1), word))
                return half;
        }
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
        if (const int month = indexOfName(&Locale::months, &Locale::shortMonths, word))
            return std::exchange(reading_.month, month) == 0;
        return indexOfName(&Locale::weekdays, &Locale::shortWeekdays, word) != 0 && !std::exchange(weekday_, true);
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
    const bool dayFirst = isDayFirst();
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
        if (isYearFirst()) attempt(n[0], n[1], n[2]);
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
    const Moment moment{kDayZero + chrono::days(day), seconds};
    String text;
    if (day != 0) appendByPicture(text, locale().datePicture, moment);
    if (day != 0 && seconds != 0) text.push_back(u' ');
    if (day == 0 || seconds != 0) appendByPicture(text, locale().timePicture, moment);
    return text;
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
