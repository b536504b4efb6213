#include "platform/ui/Grid.h"

namespace vlm::ui {

void Grid::SetModel(std::shared_ptr<const GridModel> model) {
    model_ = std::move(model);
    current_ = -1;
    Changed(false);
}

void Grid::Refresh() {
    if (current_ >= RowCount()) current_ = -1;
    Changed(false);
}

void Grid::SetCurrentRow(int row) {
    if (row < 0 || row >= RowCount()) row = -1;
    if (row == current_) return;
    current_ = row;
    Changed(true);
}

}  // namespace vlm::ui
