#pragma once

#include <string>
#include <string_view>

/// The tables, views and indices of the host's databases, as plain SQL scripts that any SQLite tool can run. Column
/// types are declared the way the library reads them (BIT, SMALLINT, INT, MONEY, DATETIME, VARCHAR); dates are stored
/// as ISO text with or without a time of day.
namespace vlm::host {

/// `Aldra`: the master tables, one database for all clinics.
std::string_view MasterSchema();

/// `StudioNNNN`: one database for each clinic.
std::string ClinicSchema();

/// The indices of a clinic's database, apart because a bulk load is faster when they come last.
std::string_view ClinicIndices();

}  // namespace vlm::host
