#include "system/Clock.h"

#include <cmath>
#include <ctime>

#include "values/Error.h"
#include "values/LocalDate.h"

namespace vlm::sys {

Date SystemClock::Today() const {
    const std::optional<Date> now = LocalDate(std::time(nullptr));
    if (!now) throw Error("L'orologio del computer non dà una data valida.");
    return Date(std::floor(now->Serial()));
}

}  // namespace vlm::sys
