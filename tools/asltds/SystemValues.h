#pragma once

#include "asltds/CurrentDatabase.h"
#include "asltds/ServedFolder.h"
#include "asltds/Statements.h"

namespace vlm::host::tds {

/// The statement with what only the server knows put into it: @@TRANCOUNT, @@SPID, @@VERSION, DB_ID('Name'),
/// DB_NAME(), OBJECT_ID('Name') and the rows of sys.databases.
Tokens WithSystemValues(const Tokens& statement, const ServedFolder& folder, const CurrentDatabase& database);

}  // namespace vlm::host::tds
