#pragma once

#include <span>

#include "DemoClinicServices.h"

/// What the clinic does beside the services it bills: drug prescriptions and treatment projects.
namespace vlm::host {

/// Drug prescriptions of the months that end with `last`, for patients with a fiscal code. A few are not prescribable
/// under the national health service or have no number, and are left out by the export.
void FillPrescriptions(DatabaseWriter& writer, const DemoClinicProfile& clinic, std::span<const DemoPatient> patients,
                       DemoMonth last, DemoClinicRandom random);

/// Authorised treatment projects of the quarters up to that of `last`, each with one to three states of the accesses
/// provided. Some are closed, some of those revoked.
void FillProjects(DatabaseWriter& writer, const DemoClinicProfile& clinic, const DemoClinicComuni& comuni,
                  std::span<const DemoPatient> patients, DemoMonth last, DemoClinicRandom random);

}  // namespace vlm::host
