#pragma once

#include <vector>

#include "dialogs/Grid.h"

namespace vlm::ui {

/// The order in which a grid's rows are shown, which the user chooses by a column. Rows keep their numbers in the
/// model: what is shown in place 0 may be the model's row 7.
class RowOrder {
public:
    /// Dates by the day, numbers by their value, other columns as text without regard to case; empty cells come first.
    /// A column counts as dates or numbers when all its cells are. Equal rows keep the model's order.
    void Sort(const GridModel& model, int column, bool descending);
    /// The model's own order.
    void Clear() noexcept { rows_.clear(), places_.clear(); }

    /// The place itself when the rows are in the model's order or the place is not one of those sorted.
    int RowAt(int place) const noexcept;
    int PlaceOf(int row) const noexcept;

private:
    std::vector<int> rows_;    // by place
    std::vector<int> places_;  // by row
};

}  // namespace vlm::ui
