#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/Recordset.h"
#include "database/RowFilter.h"
#include "database/RowIndex.h"
#include "database/RowStore.h"

namespace vlm::data {

/// The disconnected row set. Columns are appended first, then it is opened empty and filled row by row.
///
/// A row that is being added or changed is read with its new cells, and becomes part of the rows with Update. Moving,
/// filtering and adding the next row store it as Update does; closing drops it.
///
/// Several row sets may share their rows, each with a filter, an order and a current row of its own. A row is known by
/// its number (from 0, in the order of adding), which it keeps for ever.
class MemoryRecordset final : public Recordset {
public:
    MemoryRecordset() = default;
    ~MemoryRecordset() override;
    MemoryRecordset(const MemoryRecordset&) = delete;
    MemoryRecordset& operator=(const MemoryRecordset&) = delete;

    /// All the rows of `source` from its current one on; `source` then stands at its end. Every column may be Null.
    static std::unique_ptr<MemoryRecordset> CopyOf(Recordset& source);

    /// Another view of the same rows, open as this one and on the same row, without filter and order.
    std::unique_ptr<MemoryRecordset> Share();

    /// Adds the rows of `source`, whose columns must be as many and of the same types, in the same way.
    void Append(Recordset& source);

    /// Throws Error when the row set is open or has a column of that name.
    void AppendColumn(std::string name, FieldType type, bool nullable = true);
    void Open();

    void AddNew();
    /// Changes a cell of the current row. The value is converted to the column's type: TypeMismatchError or
    /// OverflowError when it cannot be, Error for Null in a column that does not take it.
    void SetValue(int ordinal, const Value& value);
    void SetValue(std::string_view name, const Value& value) { SetValue(Ordinal(name), value); }
    /// The same for a cell of just that kind of column, without a Value on the way; Error for another kind.
    void SetText(int ordinal, std::string_view value);
    void SetWhole(int ordinal, std::int64_t value);
    void SetBoolean(int ordinal, bool value);
    void SetDate(int ordinal, Date value);
    /// Throws Error, keeping the row in hand, when a column that does not take Null has no value.
    void Update();
    void CancelUpdate() noexcept;
    /// Takes the current row away. Then there is none until the next move, which goes to the row behind or before it.
    void Delete();
    bool IsAdding() const { return editing_ == Editing::Adding; }
    bool IsChanging() const { return editing_ == Editing::Changing; }
    /// The cell as it was before the change that is in hand; Null in a row that is being added.
    Value StoredValueOf(int ordinal) const;
    bool IsNullable(int ordinal) const;

    /// "" shows every row. Stands on the first row that is shown. A filter is as in ParseRowFilter; a first condition
    /// with = is answered from an index over that column, built on first use. A row that is added is shown when it
    /// meets the filter; a changed row keeps being shown until the filter is set again.
    void SetFilter(std::string_view filter);
    const std::string& Filter() const { return filter_; }
    /// "" gives the order of adding. Stands on the first row. An order is as in ParseSortKeys; a row that is added or
    /// changed afterwards keeps its place until the order is set again. Null comes first.
    void SetSort(std::string_view sort);
    const std::string& Sort() const { return sort_; }

    /// Stands on the first row, among all of them, whose text in that column is the value: a filter on it without its
    /// text. False, standing at the end, when there is none. Takes filter and order away.
    bool MoveTo(int ordinal, std::string_view value);
    /// Whether several rows have one value in that column.
    bool Repeats(int ordinal);

    /// Rows that the filter shows.
    std::int64_t RecordCount() const;
    bool AtStart() const { return position_ < 0; }
    /// Whether there is a current row, one that is being added apart.
    bool HasRow() const;
    void MoveFirst();
    /// Stands on a row among those that are shown, from 0; beyond them at the end, before them at the start.
    void MoveToRow(std::int64_t place);
    void MovePrevious();
    /// The place of the current row among those that are shown, from 0; -1 at the start, their count at the end.
    std::int64_t Place() const { return position_; }
    /// The number of the current row, and standing on the row of a number; false, and no move, when it is not shown.
    std::uint32_t RowNumber() const { return CurrentRow(); }
    bool MoveToNumber(std::uint32_t number);

    int FieldCount() const override { return static_cast<int>(rows_->columns.size()); }
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
    /// What the views of the same rows have in common.
    struct Rows {
        std::vector<Column> columns;
        RowStore store;
        std::uint32_t count = 0;          // a row that is being added stands behind these
        bool adding = false;              // one view at a time
        std::map<int, RowIndex> indexes;  // by ordinal
        std::set<std::uint32_t> removed;  // rows whose cells are gone
    };

    explicit MemoryRecordset(std::shared_ptr<Rows> rows) : rows_(std::move(rows)) {}

    void OwnRows();
    void RequireOpen() const;
    void RequireColumn(int ordinal) const;
    const Column& ColumnAt(int ordinal) const;
    /// The cell of an added row that may be set where it is; false for any other row.
    bool AddsTo(int ordinal, FieldType type) const;
    Value Cell(int ordinal) const;
    std::uint32_t CurrentRow() const;
    /// Where the cells of the row in hand are, unless it is being changed.
    std::uint32_t RowInHand() const { return editing_ == Editing::Adding ? rows_->count : CurrentRow(); }

    void RequireCells() const;
    void StoreAdded();
    void StoreChanged();
    bool Meets(std::uint32_t row) const;
    RowIndex& IndexOver(int ordinal);
    /// Makes the list of shown rows, when it takes one.
    void List();
    void SortShown();
    /// Before a move: stores what is in hand, and leaves out what another view has taken away.
    void BeforeMove();

    std::shared_ptr<Rows> rows_ = std::make_shared<Rows>();
    bool open_ = false;
    bool onRemoved_ = false;     // the current row was taken away; position_ is that of the row behind it
    std::int64_t position_ = 0;  // among the shown rows; -1 before the first

    std::string filter_;
    std::vector<RowCondition> conditions_;
    std::string sort_;
    std::vector<SortKey> keys_;
    bool listed_ = false;               // what is shown are not simply all the rows
    std::vector<std::uint32_t> shown_;  // row numbers, when listed
    std::size_t removed_ = 0;           // how many rows were gone when the list was made

    Editing editing_ = Editing::None;
    std::vector<Value> edited_;               // the whole row while it is changed
    mutable std::vector<std::string> texts_;  // what TextOf of a cell that is no text hands out, by ordinal
};

}  // namespace vlm::data
