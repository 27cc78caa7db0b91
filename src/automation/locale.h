#pragma once

#include "automation/string.h"

namespace tarncom32::automation {

/// What of the user's regional settings the conversions use.
struct Locale {
    enum class DateOrder : unsigned char { MonthDayYear, DayMonthYear, YearMonthDay };

    char16_t decimalSeparator = u'.';
    char16_t groupSeparator = u',';
    String currencySymbol = u"$";
    char16_t dateSeparator = u'/';
    DateOrder dateOrder = DateOrder::MonthDayYear;
    bool twentyFourHours = false;
    bool leadingZeros = false; ///< in front of a day, month or hour below 10
};

/// The calling thread's settings: American English unless a `LocaleScope` or `setUserLocale` says otherwise.
const Locale& locale();

/// Makes `settings` the process's default; hosts call it once with the user's own settings, before any thread
/// converts a value.
void setUserLocale(Locale settings);

/// Puts other settings in force on this thread for as long as it lives; they must live as long.
class LocaleScope {
public:
    explicit LocaleScope(const Locale& settings);
    ~LocaleScope();
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;

private:
    const Locale* previous_;
};

} // namespace tarncom32::automation
