#pragma once

#include <vector>

#include "databases/DatabaseSchema.h"

namespace vlm::host {

/// The views of a clinic: the services as they are billed, and the states of its projects.
std::vector<View> ClinicViews();

/// The procedure that gives one drug prescription.
std::vector<Procedure> ClinicProcedures();

}  // namespace vlm::host
