#pragma once

#include <string>
#include <vector>

#include "Databases.h"
#include "Statements.h"

/// What clients write and the databases do not know, in a form that they take.
namespace vlm::host::tds {

/// CREATE, ALTER or DROP of a table, view or index.
std::string EngineDefinition(const Tokens& statement);

/// CREATE [OR ALTER] PROCEDURE Name @p INT, ... AS statements.
struct ProcedureDefinition {
    std::string name;
    bool replaces = false;
    std::vector<std::string> bodies;  // one statement each, with ?1 for the first parameter

    /// Throws vlm::Error for another form.
    static ProcedureDefinition Parse(const Tokens& statement);
};

/// The statement with what only the server knows put into it: @@TRANCOUNT, @@SPID, @@VERSION, DB_ID('Name'),
/// DB_NAME(), OBJECT_ID('Name') and the rows of sys.databases.
Tokens WithSystemValues(const Tokens& statement, const ServedFolder& folder, const CurrentDatabase& database);

}  // namespace vlm::host::tds
