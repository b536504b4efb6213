#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "database/MemoryRecordset.h"
#include "database/UpdatableRecordset.h"

namespace vlm::data {

/// What "SELECT * FROM Table [WHERE ...] [ORDER BY ...]" says, for rows that are to be changed.
struct TableSelect {
    std::string database;  // "" for the connection's own
    std::string schema;    // "" for the usual one
    std::string table;
    std::string name;  // the table's whole name as it stands in the statement
    std::string rest;  // from WHERE or ORDER on

    /// Throws Error for a statement of another form.
    static TableSelect Parse(std::string_view sql);
};

/// "Le righe di Visita non si possono modificare: ..."
[[noreturn]] void RefuseRows(std::string_view table, std::string_view why);
/// "La riga della tabella Visita non c'è più: è stata cancellata da un altro utente."
[[noreturn]] void ThrowRowGone(std::string_view table);

/// Rows to be changed that are all read on opening. How one of them is written is the adapter's.
class EditedRows : public ForwardingRecordset {
public:
    void MoveNext() override;
    void Close() noexcept override { rows_->Close(); }
    void AddNew() override;
    void SetValue(int ordinal, const Value& value) override;
    void Update() override;
    void CancelUpdate() override;

protected:
    /// The rows stand on their first one.
    explicit EditedRows(std::unique_ptr<MemoryRecordset> rows);

    const Recordset& Rows() const override { return *rows_; }
    MemoryRecordset& Stored() { return *rows_; }
    bool Adding() const { return adding_; }
    /// Ordinals of the columns that were set, in order.
    const std::set<int>& Changed() const { return changed_; }
    /// Writes the row in hand, or throws and leaves it. Rows count from 0; an added one comes after all others.
    virtual void Write(std::size_t row) = 0;

private:
    std::unique_ptr<MemoryRecordset> rows_;
    std::size_t count_;
    std::size_t row_ = 0;
    bool adding_ = false;
    std::set<int> changed_;
};

}  // namespace vlm::data
