#pragma once

#include "databases/DatabaseSchema.h"

namespace vlm::host {

/// `Aldra`: the master tables, one database for all clinics.
const DatabaseSchema& MasterSchema();

}  // namespace vlm::host
