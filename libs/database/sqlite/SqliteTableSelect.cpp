#include "SqliteTableSelect.h"

#include <algorithm>

#include "database/SqlTokens.h"
#include "database/TableSelect.h"

namespace vlm::data {

namespace {

/// A table may have columns of some of these names, which then mean the columns.
constexpr std::string_view kRowIds[] = {"rowid", "_rowid_", "oid"};

std::string RowIdOf(const SqlTable& table, const std::string& name) {
    const auto free = std::find_if(std::begin(kRowIds), std::end(kRowIds),
                                   [&](std::string_view each) { return table.Find(each) == nullptr; });
    if (free == std::end(kRowIds)) RefuseRows(name, "le sue colonne ne coprono il numero");
    return std::string(*free);
}

}  // namespace

SqliteTableSelect SqliteTableSelect::Translate(std::string_view sql, SqliteCatalog& catalog) {
    const TableSelect parsed = TableSelect::Parse(sql);
    const std::string schema = catalog.Attach(parsed.database);
    const auto columns = catalog.TableOf(schema, parsed.table);
    if (!catalog.HasRowNumbers(schema, parsed.table)) {
        RefuseRows(parsed.table, "è una vista o una tabella senza numeri di riga");
    }
    SqliteTableSelect select;
    select.table = parsed.table;
    select.target = SqlQuotedName(schema) + "." + SqlQuotedName(parsed.table);
    select.rowId = RowIdOf(*columns, parsed.table);
    // As a sum, because the number as such is taken for a column of 32 bits.
    select.statement =
        SqlTranslator(catalog).Translate("SELECT *, " + select.rowId + " + 0 FROM " + parsed.name + parsed.rest);
    return select;
}

}  // namespace vlm::data
