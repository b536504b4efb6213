#pragma once

#include <ctime>

namespace vlm {

/// The machine's own conversion to local time, safe beside other threads. False when it has none.
bool LocalTime(std::time_t moment, std::tm& local) noexcept;

}  // namespace vlm
