#pragma once

#include <cstdint>

namespace vlm {

/// Record kinds, public: monthly detailed record and quarterly summary record.
enum TipoTracciatoConsts : std::int32_t { ttM = 0, ttS = 1 };

/// What a run came to.
enum class ExportOutcome : std::int32_t { Failed = 0, NoData = 1, FileProduced = 2, AnomaliesFound = 3 };

}  // namespace vlm
