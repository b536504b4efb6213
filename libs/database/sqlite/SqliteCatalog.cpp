#include "SqliteCatalog.h"

#include <sqlite3.h>

#include "database/SqlTokens.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

/// A column of a virtual table that "*" does not give.
constexpr int kHidden = 1;

std::string ColumnText(sqlite3_stmt* statement, int ordinal) {
    const unsigned char* const text = sqlite3_column_text(statement, ordinal);
    return text == nullptr ? std::string() : std::string(reinterpret_cast<const char*>(text));
}

}  // namespace

std::string SqliteCatalog::Attach(std::string_view database) {
    std::string detached;
    std::string schema = session_->Attach(database, detached);
    schemas_.erase(detached);
    return schema;
}

std::shared_ptr<const SqlTable> SqliteCatalog::TableOf(const std::string& schema, std::string_view name) {
    auto table = Find(schema, name);
    if (table == nullptr) {
        throw Error("La tabella " + std::string(name) + " non esiste nel database " + session_->NameOf(schema) + ".");
    }
    return table;
}

bool SqliteCatalog::HasFunction(std::string_view name) {
    if (functions_.empty()) {
        const auto statement = session_->Prepare("SELECT DISTINCT name FROM pragma_function_list", {});
        while (session_->Step(statement.get(), {})) functions_.insert(text::FoldCase(ColumnText(statement.get(), 0)));
    }
    return functions_.contains(text::FoldCase(name));
}

bool SqliteCatalog::HasRowNumbers(const std::string& schema, std::string_view name) const {
    const auto statement =
        session_->Prepare("PRAGMA " + SqlQuotedName(schema) + ".table_list(" + SqlQuotedName(name) + ")", {schema});
    if (!session_->Step(statement.get(), {schema})) return false;
    return ColumnText(statement.get(), 2) == "table" && sqlite3_column_int(statement.get(), 4) == 0;
}

std::shared_ptr<const SqlTable> SqliteCatalog::Find(const std::string& schema, std::string_view name) {
    Schema& known = schemas_[schema];
    if (known.checkedFor != session_->StatementNumber()) Refresh(schema, known);
    std::shared_ptr<const SqlTable>& table = known.tables[text::FoldCase(name)];
    if (table == nullptr) table = Read(schema, name);
    return table;
}

void SqliteCatalog::Refresh(const std::string& name, Schema& schema) {
    const auto statement = session_->Prepare("PRAGMA " + SqlQuotedName(name) + ".schema_version", {name});
    session_->Step(statement.get(), {name});
    const std::int64_t version = sqlite3_column_int64(statement.get(), 0);
    if (version != schema.version) schema.tables.clear();
    schema.version = version;
    schema.checkedFor = session_->StatementNumber();
}

std::shared_ptr<const SqlTable> SqliteCatalog::Read(const std::string& schema, std::string_view name) {
    const auto statement =
        session_->Prepare("PRAGMA " + SqlQuotedName(schema) + ".table_xinfo(" + SqlQuotedName(name) + ")", {schema});
    auto table = std::make_shared<SqlTable>();
    while (session_->Step(statement.get(), {schema})) {
        if (sqlite3_column_int(statement.get(), 6) == kHidden) continue;
        table->columns.push_back({ColumnText(statement.get(), 1), SqlKindOf(ColumnText(statement.get(), 2))});
    }
    return table->columns.empty() ? nullptr : table;
}

}  // namespace vlm::data
