#pragma once

#include <cstdint>
#include <string>

#include "database/Recordset.h"

/// How the services' records take dates and keys from a row: strictly, so that a cell that cannot be read ends the run
/// with an error that names its column.
namespace vlm {

/// "ddmmyyyy"; "" for no date.
std::string DateFieldOf(const data::Recordset& rows, int column);
std::int32_t KeyOf(const data::Recordset& rows, int column);

}  // namespace vlm
