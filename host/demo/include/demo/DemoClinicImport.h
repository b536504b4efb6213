#pragma once

#include <filesystem>
#include <span>

#include "demo/DemoClinicComuni.h"
#include "demo/DemoClinicPatients.h"

namespace vlm::host {

/// The host's installation folder beside the databases: templates in `Import`, the health-card system's answer.
constexpr const char* kInstallationFolder = "Installazione";
/// Lists as a health authority sends them.
constexpr const char* kSourcesFolder = "Sorgenti";

/// Writes both folders into `folder`: lists of patients (two thirds of them of the archive, some at a new address, the
/// rest new ones) and of exemptions, and templates that read them. `newcomers` with a fiscal code that the archive has
/// are left out.
void WriteImportFiles(const std::filesystem::path& folder, const DemoClinicComuni& comuni,
                      std::span<const DemoPatient> archive, std::span<const DemoPatient> newcomers, Date today);

}  // namespace vlm::host
