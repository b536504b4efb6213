#include "databases/SqliteWriter.h"

#include <algorithm>
#include <sqlite3.h>

#include "values/Error.h"

namespace vlm::host {

namespace {

constexpr const char* kBulkSettings =
    "PRAGMA encoding='UTF-8'; PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE;"
    "PRAGMA cache_size=-65536; BEGIN";

std::string InsertStatement(std::string_view table, std::string_view columns) {
    std::string sql = "INSERT INTO ";
    sql.append(table).append(" (").append(columns).append(") VALUES (?");
    for (auto more = std::count(columns.begin(), columns.end(), ','); more > 0; --more) sql += ",?";
    return sql += ')';
}

int Bind(sqlite3_stmt* statement, int place, const DatabaseWriter::Cell::Content& content) {
    if (const auto* integer = std::get_if<std::int64_t>(&content))
        return sqlite3_bind_int64(statement, place, *integer);
    if (const auto* text = std::get_if<std::string_view>(&content))
        return sqlite3_bind_text(statement, place, text->data(), static_cast<int>(text->size()), SQLITE_STATIC);
    if (const auto* amount = std::get_if<Currency>(&content))
        return sqlite3_bind_double(statement, place, amount->ToDouble());
    return sqlite3_bind_null(statement, place);
}

}  // namespace

class SqliteWriter::PreparedInsertion final : public Insertion {
public:
    PreparedInsertion(const SqliteWriter& writer, const std::string& sql) : writer_(writer) {
        writer.Check(sqlite3_prepare_v2(writer.database_, sql.c_str(), -1, &statement_, nullptr));
    }
    PreparedInsertion(const PreparedInsertion&) = delete;
    PreparedInsertion& operator=(const PreparedInsertion&) = delete;
    ~PreparedInsertion() override { sqlite3_finalize(statement_); }

    void Add(Cells cells) override {
        int place = 0;
        for (const Cell& cell : cells) writer_.Check(Bind(statement_, ++place, cell.Get()));
        const int result = sqlite3_step(statement_);
        sqlite3_reset(statement_);
        writer_.Check(result);
    }

private:
    const SqliteWriter& writer_;
    sqlite3_stmt* statement_ = nullptr;
};

SqliteWriter::SqliteWriter(const std::filesystem::path& file) : name_(file.string()) {
    if (std::filesystem::exists(file)) throw Error("Il database \"" + name_ + "\" esiste già.");
    try {
        Check(sqlite3_open_v2(name_.c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr));
        Execute(kBulkSettings);
    } catch (...) {
        sqlite3_close(database_);
        throw;
    }
}

SqliteWriter::~SqliteWriter() { sqlite3_close_v2(database_); }

void SqliteWriter::Execute(const std::string& script) {
    Check(sqlite3_exec(database_, script.c_str(), nullptr, nullptr, nullptr));
}

void SqliteWriter::Commit() { Execute("COMMIT"); }

std::shared_ptr<DatabaseWriter::Insertion> SqliteWriter::Into(std::string_view table, std::string_view columns) {
    return std::make_shared<PreparedInsertion>(*this, InsertStatement(table, columns));
}

void SqliteWriter::Check(int result) const {
    if (result == SQLITE_OK || result == SQLITE_DONE) return;
    throw Error("Impossibile scrivere il database \"" + name_ + "\": " + sqlite3_errmsg(database_));
}

}  // namespace vlm::host
