#pragma once

#include "automation/string.h"

#include <array>

namespace tarncom32::automation {

/// What of the user's regional settings the conversions use. Dates and times are written by pictures, whose letters are
/// those of the system's settings: d, M and y for day, month and year (dd and MM with a leading zero, ddd and MMM a
/// short name, dddd and MMMM a whole one, yy two digits), h, H, m and s for hour, hour of 24, minute and second, t or
/// tt for the half of the day; what stands in single quotes, and all else, is written as it is.
struct Locale {
    char16_t decimalSeparator = u'.';
    char16_t groupSeparator = u',';
    String currencySymbol = u"$";
    char16_t dateSeparator = u'/';
    String datePicture = u"M/d/yyyy";
    String timePicture = u"h:mm:ss tt";
    std::array<String, 2> halvesOfDay = {u"AM", u"PM"}; ///< may be empty where hours are those of 24
    std::array<String, 12> months = {u"January", u"February", u"March",     u"April",   u"May",      u"June",
                                     u"July",    u"August",   u"September", u"October", u"November", u"December"};
    std::array<String, 12> shortMonths = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                          u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    std::array<String, 7> weekdays = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                      u"Thursday", u"Friday", u"Saturday"};
    std::array<String, 7> shortWeekdays = {u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat"};
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
