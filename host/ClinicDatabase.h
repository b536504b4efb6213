#pragma once

#include <string>
#include <vector>

#include "platform/data/Connection.h"

namespace vlm::host {

/// A connection to a clinic's database in a folder of databases. Throws Error when there is none.
data::ConnectionPtr OpenClinic(const std::string& dataFolder, int clinic);

struct ClinicEntry {
    int number;
    std::string name;  // "" where the master database does not tell
};

/// The clinics whose databases stand in a folder, by number; none for a folder that is not there.
std::vector<ClinicEntry> ClinicsIn(const std::string& dataFolder);

}  // namespace vlm::host
