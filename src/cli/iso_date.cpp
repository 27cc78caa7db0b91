#include "cli/iso_date.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace tarncom32::cli {

namespace {

constexpr double kFirstDay = -657434; // 1 January 100
constexpr double kEndDay = 2958466;   // 1 January 10000
constexpr std::int64_t kMillisecondsOfDay = 86'400'000;

} // namespace

std::string isoText(automation::Date date) {
    if (!(date.days > kFirstDay - 1 && date.days < kEndDay)) return std::to_string(date.days);
    // The fraction counts forward from midnight, before 1900 as well: -1.25 is six o'clock in the morning.
    const double wholeDays = std::trunc(date.days);
    auto milliseconds = static_cast<std::int64_t>(std::llround(std::abs(date.days - wholeDays) * kMillisecondsOfDay));
    const std::chrono::days days(static_cast<int>(wholeDays) + static_cast<int>(milliseconds / kMillisecondsOfDay));
    milliseconds %= kMillisecondsOfDay;

    using namespace std::chrono_literals;
    const std::chrono::year_month_day day{std::chrono::sys_days(1899y / 12 / 30) + days};
    const auto seconds = static_cast<int>(milliseconds / 1000);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()), seconds / 3600,
                  seconds / 60 % 60, seconds % 60);
    std::string result = text;
    if (const auto rest = static_cast<int>(milliseconds % 1000); rest != 0) {
        std::snprintf(text, sizeof text, ".%03d", rest);
        result += text;
    }
    return result;
}

} // namespace tarncom32::cli
