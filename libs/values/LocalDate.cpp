#include "values/LocalDate.h"

#include <algorithm>

#include "LocalTime.h"

namespace vlm {

std::optional<Date> LocalDate(std::time_t moment) noexcept {
    std::tm local{};
    if (!LocalTime(moment, local)) return std::nullopt;
    const int second = std::min(local.tm_sec, 59);  // the calendar has no leap seconds
    return Date::FromCivil(
        {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, second});
}

}  // namespace vlm
