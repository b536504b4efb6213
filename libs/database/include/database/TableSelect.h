#pragma once

#include <string>
#include <string_view>

namespace vlm::data {

/// What "SELECT * FROM Table [WHERE ...] [ORDER BY ...]" says, for rows that are to be changed.
struct TableSelect {
    std::string database;  // "" for the connection's own
    std::string schema;    // "" for the usual one
    std::string table;
    std::string name;  // the table's whole name as it stands in the statement
    std::string rest;  // from WHERE or ORDER on

    /// Throws Error for a statement of another form.
    static TableSelect Parse(std::string_view sql);
};

/// "Le righe di Visita non si possono modificare: ..."
[[noreturn]] void RefuseRows(std::string_view table, std::string_view why);
/// "La riga della tabella Visita non c'è più: è stata cancellata da un altro utente."
[[noreturn]] void ThrowRowGone(std::string_view table);

}  // namespace vlm::data
