#include "platform/windows/user_locale.h"

#include <algorithm>
#include <windows.h>

namespace tarncom32::platform::windows {

namespace {

automation::String setting(LCID locale, LCTYPE type) {
    wchar_t text[128] = L"";
    const int size = GetLocaleInfoW(locale, type, text, 128);
    return automation::String(reinterpret_cast<const char16_t*>(text),
                              size > 0 ? static_cast<std::size_t>(size - 1) : 0);
}

void read(LCID locale, LCTYPE type, char16_t& character) {
    if (const automation::String text = setting(locale, type); !text.empty()) character = text.front();
}

/// Settings of consecutive types.
template <std::size_t Count>
void read(LCID locale, LCTYPE first, std::array<automation::String, Count>& texts) {
    for (std::size_t i = 0; i < Count; ++i)
        texts[i] = setting(locale, first + static_cast<LCTYPE>(i));
}

/// Names of weekdays, of which the system's first is Monday's.
void readWeekdays(LCID locale, LCTYPE monday, std::array<automation::String, 7>& names) {
    read(locale, monday, names);
    std::rotate(names.begin(), names.end() - 1, names.end());
}

} // namespace

automation::Locale localeOf(std::uint32_t lcid) {
    automation::Locale settings;
    read(lcid, LOCALE_SDECIMAL, settings.decimalSeparator);
    read(lcid, LOCALE_STHOUSAND, settings.groupSeparator);
    read(lcid, LOCALE_SDATE, settings.dateSeparator);
    settings.currencySymbol = setting(lcid, LOCALE_SCURRENCY);
    settings.datePicture = setting(lcid, LOCALE_SSHORTDATE);
    settings.timePicture = setting(lcid, LOCALE_STIMEFORMAT);
    settings.halvesOfDay = {setting(lcid, LOCALE_S1159), setting(lcid, LOCALE_S2359)};
    read(lcid, LOCALE_SMONTHNAME1, settings.months);
    read(lcid, LOCALE_SABBREVMONTHNAME1, settings.shortMonths);
    readWeekdays(lcid, LOCALE_SDAYNAME1, settings.weekdays);
    readWeekdays(lcid, LOCALE_SABBREVDAYNAME1, settings.shortWeekdays);
    return settings;
}

void useUserLocale() {
    automation::setUserLocale(localeOf(LOCALE_USER_DEFAULT));
}

} // namespace tarncom32::platform::windows
