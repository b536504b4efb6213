#pragma once

#include <string>
#include <vector>

#include "dialogs/Grid.h"

namespace vlm::ui {

/// What a list of the system's shows of a grid: its visible columns and, in the order that the user sorted by, its
/// rows. Rows keep their numbers in the grid.
class GridRows {
public:
    explicit GridRows(const Grid& grid) : grid_(grid) {}

    /// The model's columns that are shown; a column of boxes comes first, where the system can draw them.
    const std::vector<int>& Columns() const noexcept { return columns_; }
    const GridModel::Column& ColumnAt(int shown) const;
    /// The place among the shown columns where the first one stands.
    int PlaceOfFirst() const noexcept { return placeOfFirst_; }
    int Count() const noexcept { return count_; }
    int RowAt(int place) const noexcept { return order_.RowAt(place); }
    int PlaceOf(int row) const noexcept { return order_.PlaceOf(row); }
    /// "" where there is no such row any more, or no answer: painting goes on without the cell.
    std::string Cell(int place, int shown) const;
    bool HasBoxes() const noexcept { return !columns_.empty() && ColumnAt(0).checkBox; }
    /// The box in a place is marked.
    bool IsChecked(int place) const { return HasBoxes() && Cell(place, 0) == "1"; }

    /// The grid's rows or cells changed; true when its columns did, too, which puts the rows in the grid's own order.
    /// While a box is clicked its row keeps its place under the mouse.
    bool Renew(bool checking);
    /// A click on a column's head: ascending, then descending, then the grid's own order.
    void SortNext(int shown);
    int SortColumn() const noexcept { return sortColumn_; }  // a shown one; -1 for the grid's own order
    bool Descending() const noexcept { return descending_; }

    /// The first place from `start` on, and then from the top, whose text in the sorted column (in the first one of
    /// texts, where there is none) begins with `text`, without regard to case; -1 for none.
    int FindFrom(int start, const std::string& text) const;

private:
    void Sort();
    void ReadColumns();

    const Grid& grid_;
    RowOrder order_;
    std::vector<int> columns_;
    int placeOfFirst_ = 0;
    int sortColumn_ = -1;
    bool descending_ = false;
    int count_ = 0;
    const GridModel* model_ = nullptr;
};

}  // namespace vlm::ui
