#include "export/ViewGrid.h"

namespace vlm {

void ViewGrid::AddColumn(const std::string& title, int width, bool rightAligned) {
    ui::GridModel::Column column{title, title, width};
    column.rightAligned = rightAligned;
    columns_.push_back(std::move(column));
}

void ViewGrid::SetCell(std::int32_t row, std::size_t column, std::string text) {
    if (column >= columns_.size()) return;
    if (row != keptRow_) StartRow(row);
    cells_[column] = std::move(text);
}

std::string ViewGrid::Cell(std::int32_t row, std::size_t column) const {
    return row == keptRow_ && column < cells_.size() ? cells_[column] : std::string{};
}

void ViewGrid::StartRow(std::int32_t row) {
    keptRow_ = row;
    cells_.assign(columns_.size(), {});
}

}  // namespace vlm
