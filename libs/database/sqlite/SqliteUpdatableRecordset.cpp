#include "SqliteUpdatableRecordset.h"

#include <algorithm>
#include <sqlite3.h>

#include "SqliteRecordset.h"
#include "database/SqlTokens.h"

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

/// A value as it is stored: dates as ISO text, amounts as numbers, truth values as 1 and 0.
struct Binding {
    sqlite3_stmt* statement;
    int place;

    int operator()(std::monostate) const { return sqlite3_bind_null(statement, place); }
    int operator()(bool value) const { return sqlite3_bind_int(statement, place, value ? 1 : 0); }
    int operator()(std::int64_t value) const { return sqlite3_bind_int64(statement, place, value); }
    int operator()(double value) const { return sqlite3_bind_double(statement, place, value); }
    int operator()(Currency value) const { return sqlite3_bind_double(statement, place, value.ToDouble()); }
    int operator()(Date value) const { return (*this)(IsoDate(value)); }
    int operator()(const std::string& value) const {
        return sqlite3_bind_text64(statement, place, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
};

void Bind(sqlite3_stmt* statement, int place, const Value& value) {
    if (std::visit(Binding{statement, place}, value) != SQLITE_OK) throw std::bad_alloc();
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

SqliteUpdatableRecordset::SqliteUpdatableRecordset(std::shared_ptr<SqliteSession> session, SqliteTableSelect select)
    : EditedRows([&] {
          SqliteRecordset read(session, {select.statement});
          return MemoryRecordset::CopyOf(read);
      }()),
      session_(std::move(session)),
      select_(std::move(select)) {
    for (; !AtEnd(); Stored().MoveNext()) numbers_.push_back(Stored().IntegerOf(FieldCount()));
    Stored().MoveFirst();
    session_->Hold(select_.statement.databases);
}

void SqliteUpdatableRecordset::Close() noexcept {
    if (!IsOpen()) return;
    EditedRows::Close();
    session_->Release(select_.statement.databases);
}

/// The columns set are ?1, ?2, ... in order; the row's number comes after them.
std::string SqliteUpdatableRecordset::Statement() const {
    std::string names, places, pairs;
    int place = 0;
    for (const int ordinal : Changed()) {
        const std::string comma = place == 0 ? "" : ", ";
        const std::string name = SqlQuotedName(Rows().FieldName(ordinal));
        const std::string parameter = "?" + std::to_string(++place);
        names += comma + name;
        places += comma + parameter;
        pairs += comma + name + " = " + parameter;
    }
    const std::string returning = " RETURNING " + select_.rowId;
    if (Adding() && Changed().empty()) return "INSERT INTO " + select_.target + " DEFAULT VALUES" + returning;
    if (Adding()) return "INSERT INTO " + select_.target + " (" + names + ") VALUES (" + places + ")" + returning;
    return "UPDATE " + select_.target + " SET " + pairs + " WHERE " + select_.rowId + " = ?" +
           std::to_string(place + 1) + returning;
}

/// The row's number is another one when its key is kept as such and was changed.
void SqliteUpdatableRecordset::Write(std::size_t row) {
    const std::vector<std::string>& databases = select_.statement.databases;
    const SqliteStatementPtr statement = session_->Prepare(Statement(), databases);
    int place = 0;
    for (const int ordinal : Changed()) Bind(statement.get(), ++place, Rows().ValueOf(ordinal));
    if (!Adding()) Bind(statement.get(), ++place, numbers_[row]);
    if (!session_->Step(statement.get(), databases)) ThrowRowGone(select_.table);
    const std::int64_t number = sqlite3_column_int64(statement.get(), 0);
    while (session_->Step(statement.get(), databases)) continue;
    numbers_.resize(std::max(numbers_.size(), row + 1));
    numbers_[row] = number;
}

}  // namespace vlm::data
