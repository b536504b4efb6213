#pragma once

#include <span>

#include "DemoClinicServices.h"
#include "databases/DatabaseWriter.h"
#include "demo/DemoClinicComuni.h"

namespace vlm::host {

/// Authorised treatment projects of the quarters up to that of `last`, each with one to three states of the accesses
/// provided. Some are closed, some of those revoked.
void FillProjects(DatabaseWriter& writer, const DemoClinicProfile& clinic, const DemoClinicComuni& comuni,
                  std::span<const DemoPatient> patients, DemoMonth last, DemoClinicRandom random);

}  // namespace vlm::host
