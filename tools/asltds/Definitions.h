#pragma once

#include <string>
#include <vector>

#include "asltds/Statements.h"

/// Statements that define tables, views, indices and procedures, in a form that the databases take.
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

}  // namespace vlm::host::tds
