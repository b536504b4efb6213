#pragma once

#include <cstdint>
#include <string>

namespace vlm::bench {

/// Sends the monthly selection to a server and fetches every row in blocks of bound columns, wide texts as they come,
/// without making anything of them: what no export over ODBC can do without. The number of rows.
std::int64_t FetchServices(const std::string& connectionText);

}  // namespace vlm::bench
