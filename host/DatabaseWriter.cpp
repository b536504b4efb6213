#include "host/DatabaseWriter.h"

#include <algorithm>
#include <sqlite3.h>

#include "platform/Error.h"

namespace vlm::host {

namespace {

constexpr std::string_view kBulkSettings =
    "PRAGMA encoding='UTF-8'; PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE;"
    "PRAGMA cache_size=-65536; BEGIN";

std::string InsertStatement(std::string_view table, std::string_view columns, int count) {
    std::string sql = "INSERT INTO ";
    sql.append(table).append(" (").append(columns).append(") VALUES (?");
    for (int i = 1; i < count; ++i) sql += ",?";
    return sql += ')';
}

}  // namespace

DatabaseWriter::DatabaseWriter(const std::filesystem::path& file) : name_(file.string()) {
    if (std::filesystem::exists(file)) throw Error("Il database \"" + name_ + "\" esiste già.");
    try {
        Check(sqlite3_open_v2(name_.c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr));
        Execute(kBulkSettings);
    } catch (...) {
        sqlite3_close(database_);
        throw;
    }
}

DatabaseWriter::~DatabaseWriter() { sqlite3_close_v2(database_); }

void DatabaseWriter::Execute(std::string_view script) {
    Check(sqlite3_exec(database_, std::string(script).c_str(), nullptr, nullptr, nullptr));
}

void DatabaseWriter::Commit() { Execute("COMMIT"); }

void DatabaseWriter::Check(int result) const {
    if (result == SQLITE_OK || result == SQLITE_DONE) return;
    throw Error("Impossibile scrivere il database \"" + name_ + "\": " + sqlite3_errmsg(database_));
}

int DatabaseWriter::Bind(sqlite3_stmt* statement, int place, const Cell& cell) {
    if (const auto* integer = std::get_if<std::int64_t>(&cell.value_))
        return sqlite3_bind_int64(statement, place, *integer);
    if (const auto* text = std::get_if<std::string_view>(&cell.value_))
        return sqlite3_bind_text(statement, place, text->data(), static_cast<int>(text->size()), SQLITE_STATIC);
    if (const auto* amount = std::get_if<Currency>(&cell.value_))
        return sqlite3_bind_double(statement, place, amount->ToDouble());
    return sqlite3_bind_null(statement, place);
}

DatabaseWriter::Rows::Rows(DatabaseWriter& writer, std::string_view table, std::string_view columns)
    : writer_(&writer), columns_(static_cast<int>(std::count(columns.begin(), columns.end(), ',')) + 1) {
    const std::string sql = InsertStatement(table, columns, columns_);
    writer.Check(sqlite3_prepare_v2(writer.database_, sql.c_str(), -1, &statement_, nullptr));
}

DatabaseWriter::Rows::~Rows() { sqlite3_finalize(statement_); }

void DatabaseWriter::Rows::Add(std::initializer_list<Cell> cells) {
    if (static_cast<int>(cells.size()) != columns_)
        throw Error("Numero di valori errato per una riga di \"" + writer_->name_ + "\".");
    int place = 0;
    for (const Cell& cell : cells) writer_->Check(Bind(statement_, ++place, cell));
    const int result = sqlite3_step(statement_);
    sqlite3_reset(statement_);
    writer_->Check(result);
}

}  // namespace vlm::host
