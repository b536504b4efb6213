#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/Date.h"

/// Dates as text, in Italian form, fixed here and never taken from the machine.
namespace vlm::text {

std::string DdMmYyyy(const Date::Civil& date);
std::string DdMmYyyy(Date date);              // 01022003
std::string DdMmYyyySlashes(Date date);       // 01/02/2003
std::string LongDate(Date date);              // sabato 01 febbraio 2003
std::string MonthFirst(int month, int year);  // 2/1/2003: the first of the month as the server reads it

/// `dd/mm/yyyy` (one or two digits for day and month, "-" or "." also allowed). Nothing when it is no date.
std::optional<Date> ParseItalianDate(std::string_view value);

/// A date as people write one and automation reads it: ISO form; day, month and year with "/", "-", "." or a blank
/// between them, the month also by name, the year also of two digits (30 to 99 are of the last century), the month
/// before the day where the other way round is no date; behind a blank a time of day, "10:30", "10.30" or with seconds.
std::optional<Date> ParseDateText(std::string_view value);

}  // namespace vlm::text
