#include "dialogs/Grid.h"

namespace vlm::ui {

void Grid::SetModel(std::shared_ptr<const GridModel> model) {
    model_ = std::move(model);
    current_ = -1;
    ++version_;
    Changed(false);
}

void Grid::Refresh() {
    if (current_ >= RowCount()) current_ = -1;
    ++version_;
    Changed(false);
}

void Grid::SetCurrentRow(int row) {
    if (row < 0 || row >= RowCount()) row = -1;
    if (row == current_) return;
    current_ = row;
    Changed(true);
}

void Grid::Check(int row, int column) {
    const bool there =
        model_ && row >= 0 && row < RowCount() && column >= 0 && column < static_cast<int>(model_->Columns().size());
    if (!there || !model_->Columns()[static_cast<std::size_t>(column)].checkBox) return;
    if (OnCheck) OnCheck(row, column);
}

}  // namespace vlm::ui
