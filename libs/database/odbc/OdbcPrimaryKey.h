#pragma once

#include <string>
#include <vector>

#include "OdbcStatement.h"
#include "database/TableSelect.h"

namespace vlm::data::odbc {

/// The names of the columns of a table's primary key, in the key's order; none for a table without one.
std::vector<std::string> PrimaryKeyOf(const OdbcStatement& statement, const TableSelect& table);

}  // namespace vlm::data::odbc
