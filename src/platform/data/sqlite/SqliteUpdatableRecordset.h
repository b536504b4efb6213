#pragma once

#include <memory>
#include <set>
#include <vector>

#include "platform/data/ForwardingRecordset.h"
#include "platform/data/MemoryRecordset.h"
#include "platform/data/sqlite/SqliteSession.h"
#include "platform/data/sqlite/SqliteTableSelect.h"

namespace vlm::data {

/// Rows of one table, all read on opening, each written by its number.
class SqliteUpdatableRecordset final : public ForwardingRecordset {
public:
    SqliteUpdatableRecordset(std::shared_ptr<SqliteSession> session, SqliteTableSelect select);
    ~SqliteUpdatableRecordset() override { Close(); }

    /// Without the column of the rows' numbers, which is the last one.
    int FieldCount() const override { return rows_->FieldCount() - 1; }
    void MoveNext() override;
    void Close() noexcept override;

    void AddNew() override;
    void SetValue(int ordinal, const Value& value) override;
    void Update() override;
    void CancelUpdate() override;

private:
    const Recordset& Rows() const override { return *rows_; }
    std::string Statement() const;
    std::int64_t Write() const;

    std::shared_ptr<SqliteSession> session_;
    SqliteTableSelect select_;
    std::unique_ptr<MemoryRecordset> rows_;
    std::vector<std::int64_t> numbers_;  // of the rows, in their order
    std::size_t row_ = 0;
    bool adding_ = false;
    std::set<int> set_;  // ordinals
};

}  // namespace vlm::data
