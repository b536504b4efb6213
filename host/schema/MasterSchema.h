#pragma once

#include "host/schema/DatabaseSchema.h"

namespace vlm::host {

/// `Aldra`: the master tables, one database for all clinics.
const DatabaseSchema& MasterSchema();

}  // namespace vlm::host
