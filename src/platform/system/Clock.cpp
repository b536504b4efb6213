#include "platform/system/Clock.h"

#include <ctime>

#include "platform/Error.h"

namespace vlm::sys {

Date SystemClock::Today() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    const bool known = localtime_s(&local, &now) == 0;
#else
    const bool known = localtime_r(&now, &local) != nullptr;
#endif
    const std::optional<Date> today =
        known ? Date::FromYmd(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) : std::nullopt;
    if (!today) throw Error("L'orologio del computer non dà una data valida.");
    return *today;
}

}  // namespace vlm::sys
