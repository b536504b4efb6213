#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Recordset.h"
#include "platform/data/RowFilter.h"
#include "platform/data/RowIndex.h"

namespace vlm::data {

/// The disconnected row set. Columns are appended first, then it is opened empty and filled row by row.
///
/// A row that is being added or changed is read with its new cells, and becomes part of the rows with Update. Moving,
/// filtering and adding the next row store it as Update does; closing drops it.
class MemoryRecordset final : public Recordset {
public:
    MemoryRecordset();
    ~MemoryRecordset() override;

    /// All the rows of `source` from its current one on; `source` then stands at its end. Every column may be Null.
    static std::unique_ptr<MemoryRecordset> CopyOf(Recordset& source);

    /// Throws Error when the row set is open or has a column of that name.
    void AppendColumn(std::string name, FieldType type, bool nullable = true);
    void Open();

    void AddNew();
    /// Changes a cell of the current row. The value is converted to the column's type: TypeMismatchError or
    /// OverflowError when it cannot be, Error for Null in a column that does not take it.
    void SetValue(int ordinal, const Value& value);
    void SetValue(std::string_view name, const Value& value) { SetValue(Ordinal(name), value); }
    /// Throws Error, keeping the row in hand, when a column that does not take Null has no value.
    void Update();
    void CancelUpdate();

    /// "" shows every row. Stands on the first row that is shown. A filter is as in ParseRowFilter; its first
    /// condition is answered from an index over that column, built on first use. A row that is added is shown when it
    /// meets the filter; a changed row keeps being shown until the filter is set again.
    void SetFilter(std::string_view filter);
    const std::string& Filter() const { return filter_; }

    /// Rows that the filter shows.
    std::int64_t RecordCount() const;
    bool AtStart() const { return position_ < 0; }
    void MoveFirst();
    void MovePrevious();

    int FieldCount() const override { return static_cast<int>(columns_.size()); }
    std::string_view FieldName(int ordinal) const override;
    FieldType TypeOf(int ordinal) const override;
    bool IsOpen() const override { return open_; }
    bool AtEnd() const override;
    void MoveNext() override;
    /// Drops the rows; the columns stay.
    void Close() noexcept override;

    bool IsNull(int ordinal) const override;
    std::string_view TextOf(int ordinal) const override;
    double NumberOf(int ordinal) const override;
    std::int64_t IntegerOf(int ordinal) const override;
    Currency AmountOf(int ordinal) const override;
    std::optional<Date> DateOf(int ordinal) const override;
    Value ValueOf(int ordinal) const override { return Cell(ordinal); }

private:
    enum class Editing { None, Adding, Changing };
    struct Column {
        std::string name;
        FieldType type;
        bool nullable;
    };

    void RequireOpen() const;
    void RequireColumn(int ordinal) const;
    const Value& Cell(int ordinal) const;
    const Value& StoredCell(std::uint32_t row, int ordinal) const;
    std::uint32_t CurrentRow() const;
    std::uint32_t RowCount() const { return rowCount_; }
    bool HasRow() const;

    void StoreAdded();
    void StoreChanged();
    void AppendRow(std::vector<Value> cells);
    bool Meets(std::uint32_t row) const;
    const RowIndex& IndexOver(int ordinal);

    std::vector<Column> columns_;
    std::vector<Value> cells_;  // row after row
    std::uint32_t rowCount_ = 0;
    bool open_ = false;
    std::int64_t position_ = 0;  // among the shown rows; -1 before the first

    std::string filter_;
    std::vector<RowCondition> conditions_;
    std::vector<std::uint32_t> shown_;  // row numbers, only while there is a filter
    std::map<int, RowIndex> indexes_;   // by ordinal

    Editing editing_ = Editing::None;
    std::vector<Value> edited_;
    mutable std::vector<std::string> texts_;  // what TextOf of a cell that is no text hands out, by ordinal
};

}  // namespace vlm::data
