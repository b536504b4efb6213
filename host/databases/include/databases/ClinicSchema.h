#pragma once

#include "databases/DatabaseSchema.h"

namespace vlm::host {

/// `StudioNNNN`: one database for each clinic.
const DatabaseSchema& ClinicSchema();

}  // namespace vlm::host
