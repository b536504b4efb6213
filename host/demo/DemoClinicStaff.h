#pragma once

#include "databases/DatabaseWriter.h"
#include "demo/DemoClinicProfile.h"

namespace vlm::host {

/// Fills what a clinic is, apart from its work: branches, specialists and their parameters, menu entries, the clinic's
/// region and health authority, the exemption catalogue.
void FillStaff(DatabaseWriter& writer, const DemoClinicProfile& clinic);

}  // namespace vlm::host
