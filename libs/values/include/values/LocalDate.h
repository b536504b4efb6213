#pragma once

#include <ctime>
#include <optional>

#include "values/Date.h"

namespace vlm {

/// A moment of the machine's clock as local date and time of day, in whole seconds; nothing for a moment that the
/// calendar does not have.
std::optional<Date> LocalDate(std::time_t moment) noexcept;

}  // namespace vlm
