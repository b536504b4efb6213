#include "values/LocalDate.h"

#include <algorithm>

namespace vlm {

namespace {

/// The machine's own conversion, safe beside other threads. False when it has none.
bool LocalTime(std::time_t moment, std::tm& local) noexcept {
#ifdef _WIN32
    return localtime_s(&local, &moment) == 0;
#else
    return localtime_r(&moment, &local) != nullptr;
#endif
}

}  // namespace

std::optional<Date> LocalDate(std::time_t moment) noexcept {
    std::tm local{};
    if (!LocalTime(moment, local)) return std::nullopt;
    const int second = std::min(local.tm_sec, 59);  // the calendar has no leap seconds
    return Date::FromCivil(
        {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, second});
}

}  // namespace vlm
