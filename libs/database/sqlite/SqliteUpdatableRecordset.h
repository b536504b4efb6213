#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "SqlTranslator.h"
#include "SqliteCatalog.h"
#include "SqliteSession.h"
#include "database/EditedRows.h"

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

/// Rows of one table, each written by its number.
class SqliteUpdatableRecordset final : public EditedRows {
public:
    SqliteUpdatableRecordset(std::shared_ptr<SqliteSession> session, SqliteTableSelect select);
    ~SqliteUpdatableRecordset() override { Close(); }

    /// Without the column of the rows' numbers, which is the last one.
    int FieldCount() const override { return Rows().FieldCount() - 1; }
    void Close() noexcept override;

private:
    std::string Statement() const;
    void Write(std::size_t row) override;

    std::shared_ptr<SqliteSession> session_;
    SqliteTableSelect select_;
    std::vector<std::int64_t> numbers_;  // of the rows, in their order
};

}  // namespace vlm::data
