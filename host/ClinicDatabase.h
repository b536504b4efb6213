#pragma once

#include <string>
#include <vector>

#include "database/Connection.h"
#include "host/HostOptions.h"

namespace vlm::host {

/// A connection to the clinic's database that the options choose, in a folder of databases or on a server. Throws
/// Error when there is none.
data::ConnectionPtr OpenClinic(const HostOptions& options);
/// The clinic's number, as asked for or as the connection text names it.
int ChosenClinic(const HostOptions& options);
/// "Studio0012" for 12.
std::string ClinicDatabaseName(int clinic);

struct ClinicEntry {
    int number;
    std::string name;  // "" where the master database does not tell
};

/// The clinics whose databases stand in a folder, by number; none for a folder that is not there.
std::vector<ClinicEntry> ClinicsIn(const std::string& dataFolder);
/// The clinics that a server's master database knows, by number. Throws Error when the server cannot be asked.
std::vector<ClinicEntry> ClinicsOnServer(const std::string& odbcText);

}  // namespace vlm::host
