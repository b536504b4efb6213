#pragma once

#include <memory>
#include <string>
#include <vector>

#include "OdbcStatement.h"
#include "database/EditedRows.h"

namespace vlm::data::odbc {

/// Rows of one table, each written by the table's primary key. A row that was added without its key (a number that the
/// server gives) is written, but cannot be changed again before it is read anew.
class OdbcUpdatableRecordset final : public EditedRows {
public:
    /// `rows` are those of the select. Throws Error for a table without a primary key, as a view is.
    OdbcUpdatableRecordset(std::shared_ptr<OdbcSession> session, TableSelect select,
                           std::unique_ptr<MemoryRecordset> rows);

private:
    std::string Quoted(std::string_view name) const;
    std::string Insertion() const;
    std::string Change() const;
    std::vector<Value> KeyInHand() const;
    void Write(std::size_t row) override;

    std::shared_ptr<OdbcSession> session_;
    TableSelect select_;
    std::string quote_;
    std::vector<int> keyColumns_;           // ordinals
    std::vector<std::vector<Value>> keys_;  // of the rows as they are stored; empty when it is not known
};

}  // namespace vlm::data::odbc
