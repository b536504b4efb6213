#pragma once

#include <string>
#include <string_view>

#include "SqliteCatalog.h"
#include "sqlite/SqlTranslator.h"

namespace vlm::data {

/// "SELECT * FROM Table ..." over one table, in the engine's words, with each row's own number as one more column at
/// the end.
struct SqliteTableSelect {
    std::string table;   // as users know it
    std::string target;  // as the engine knows it, quoted
    std::string rowId;   // the name under which the engine knows a row's number
    SqlStatement statement;

    /// Throws Error for a statement of another form, and for a view or a table whose rows have no number.
    static SqliteTableSelect Translate(std::string_view sql, SqliteCatalog& catalog);
};

}  // namespace vlm::data
