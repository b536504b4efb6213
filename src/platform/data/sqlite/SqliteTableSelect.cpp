#include "platform/data/sqlite/SqliteTableSelect.h"

#include <algorithm>

#include "platform/Error.h"
#include "platform/data/sqlite/SqlTranslation.h"

namespace vlm::data {

namespace {

/// A table may have columns of some of these names, which then mean the columns.
constexpr std::string_view kRowIds[] = {"rowid", "_rowid_", "oid"};

/// Reads "SELECT * FROM name" and leaves the cursor behind it.
SqlName TakeTarget(SqlTranslation& translation) {
    SqlCursor& cursor = translation.cursor;
    cursor.ExpectWord("SELECT");
    cursor.ExpectSymbol("*");
    cursor.ExpectWord("FROM");
    SqlName name = TakeTableName(translation);
    if (!cursor.AtEnd() && !cursor.IsSymbol(";") && !cursor.Peek().IsAnyWord({"WHERE", "ORDER"})) cursor.Refuse();
    return name;
}

std::string RestOf(SqlCursor& cursor) {
    std::string rest;
    while (!cursor.AtEnd()) rest += " " + cursor.Take().source;
    return rest;
}

std::string RowIdOf(const SqlTable& table, const std::string& name) {
    const auto free = std::find_if(std::begin(kRowIds), std::end(kRowIds),
                                   [&](std::string_view each) { return table.Find(each) == nullptr; });
    if (free != std::end(kRowIds)) return std::string(*free);
    throw Error("Le righe di " + name + " non si possono modificare: le sue colonne ne coprono il numero.");
}

}  // namespace

SqliteTableSelect SqliteTableSelect::Translate(std::string_view sql, SqliteCatalog& catalog) {
    SqlTranslation reading(Tokenize(sql), {}, catalog);
    const SqlName name = TakeTarget(reading);
    const std::string own = reading.Attach("");
    const std::string schema = name.hasDatabase ? name.schema : own;
    const auto columns = catalog.TableOf(schema, name.table);
    if (!catalog.HasRowNumbers(schema, name.table)) {
        throw Error("Le righe di " + name.table +
                    " non si possono modificare: è una vista o una tabella senza numeri di riga.");
    }
    SqliteTableSelect select;
    select.table = name.table;
    select.target = SqlQuotedName(schema) + "." + SqlQuotedName(name.table);
    select.rowId = RowIdOf(*columns, name.table);
    const std::string database = schema == own ? "" : SqlQuotedName(schema) + "..";
    // As a sum, because the number as such is taken for a column of 32 bits.
    select.statement = SqlTranslator(catalog).Translate("SELECT *, " + select.rowId + " + 0 FROM " + database +
                                                        SqlQuotedName(name.table) + RestOf(reading.cursor));
    return select;
}

}  // namespace vlm::data
