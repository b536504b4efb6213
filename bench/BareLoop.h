#pragma once

#include <cstdint>
#include <string>

namespace vlm::bench {

/// Steps the services of a clinic's database straight through the engine and reads the columns of the detailed record,
/// without making anything of them: what no export can do without. `tuned` opens the connection as the library does,
/// otherwise as the engine does by itself. The number of rows.
std::int64_t StepServices(const std::string& folder, bool tuned);

}  // namespace vlm::bench
