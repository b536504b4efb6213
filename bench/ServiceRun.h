#pragma once

#include <cstdint>
#include <string>

#include "database/Connection.h"

namespace vlm::bench {

/// A folder of databases with so many services that none has sent yet, made when it is not there, with folders for what
/// a run writes.
void PrepareServices(const std::string& folder, std::int64_t services);

/// The month that takes every service: earlier periods included. A simulation marks nothing, so that every round finds
/// the same services unsent. 0, or 1 when it did not come to its end.
int RunServices(data::ConnectionPtr connection, const std::string& folder, bool simulation);

}  // namespace vlm::bench
