#pragma once

#include <filesystem>
#include <span>

#include "DemoClinicComuni.h"
#include "DemoClinicPatients.h"

namespace vlm::host {

/// Writes both folders into `folder`: lists of patients (two thirds of them of the archive, some at a new address, the
/// rest new ones) and of exemptions, and templates that read them. `newcomers` with a fiscal code that the archive has
/// are left out.
void WriteImportFiles(const std::filesystem::path& folder, const DemoClinicComuni& comuni,
                      std::span<const DemoPatient> archive, std::span<const DemoPatient> newcomers, Date today);

}  // namespace vlm::host
