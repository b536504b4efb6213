#include "LocalTime.h"

namespace vlm {

bool LocalTime(std::time_t moment, std::tm& local) noexcept { return localtime_r(&moment, &local) != nullptr; }

}  // namespace vlm
