#pragma once

#include "automation/string.h"
#include "automation/variant.h"

#include <optional>

namespace tarncom32::automation {

/// Whether `days` lies in the years 100 to 9999, the only ones that automation's dates have.
bool isDateInRange(double days);

/// `date` as `locale()` writes it, to the second: the date alone at midnight, the time alone on day 0, else both with
/// a blank between them: "12/31/1999 6:30:00 PM". Raises 5 outside the years 100 to 9999.
String dateText(Date date);

/// The date, the time or both that `text` names by the rules of `locale()`: numbers separated by "/", "-", the
/// locale's separator or blanks, or a month's name in the locale's language or English among them; hours, minutes and
/// seconds separated by colons, with AM or PM, or by points alone where the date separator is another ("13.50" is 1:50
/// PM). Numbers that make no date in the locale's order are tried in the others; the years 0 to 29 stand for 2000 to
/// 2029, 30 to 99 for 1930 to 1999; without a year the current one is meant. Nothing for any other text.
std::optional<Date> spelledDate(StringView text);

} // namespace tarncom32::automation
