#pragma once

#include <span>

#include "DemoClinicServices.h"
#include "databases/DatabaseWriter.h"

namespace vlm::host {

/// Drug prescriptions of the months that end with `last`, for patients with a fiscal code. A few are not prescribable
/// under the national health service or have no number, and are left out by the export.
void FillPrescriptions(DatabaseWriter& writer, const DemoClinicProfile& clinic, std::span<const DemoPatient> patients,
                       DemoMonth last, DemoClinicRandom random);

}  // namespace vlm::host
