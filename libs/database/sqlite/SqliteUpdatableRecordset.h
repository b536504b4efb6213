#pragma once

#include <memory>
#include <vector>

#include "SqliteTableSelect.h"
#include "database/EditedRows.h"
#include "sqlite/SqliteSession.h"

namespace vlm::data {

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
