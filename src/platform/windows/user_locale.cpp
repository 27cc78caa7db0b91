#include "platform/windows/user_locale.h"

#include "automation/locale.h"

#include <windows.h>

namespace tarncom32::platform::windows {

namespace {

automation::String setting(LCTYPE type) {
    wchar_t text[80] = L"";
    const int size = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 80);
    return automation::String(reinterpret_cast<const char16_t*>(text),
                              size > 0 ? static_cast<std::size_t>(size - 1) : 0);
}

void read(char16_t& character, LCTYPE type) {
    if (const automation::String text = setting(type); !text.empty()) character = text.front();
}

} // namespace

void useUserLocale() {
    using Order = automation::Locale::DateOrder;
    automation::Locale settings;
    read(settings.decimalSeparator, LOCALE_SDECIMAL);
    read(settings.groupSeparator, LOCALE_STHOUSAND);
    read(settings.dateSeparator, LOCALE_SDATE);
    settings.currencySymbol = setting(LOCALE_SCURRENCY);
    const automation::String order = setting(LOCALE_IDATE);
    settings.dateOrder = order == u"1"   ? Order::DayMonthYear
                         : order == u"2" ? Order::YearMonthDay
                                         : Order::MonthDayYear;
    settings.twentyFourHours = setting(LOCALE_ITIME) == u"1";
    automation::setUserLocale(std::move(settings));
}

} // namespace tarncom32::platform::windows
