#include "export/ViewGrid.h"

#include <algorithm>
#include <limits>

#include "values/Error.h"

namespace vlm {

namespace {

constexpr std::size_t kMostRows = std::numeric_limits<std::int32_t>::max();

}  // namespace

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

ViewedFile::ViewedFile(IRegionASLExport& decoder, std::int32_t records, files::LineReader& file)
    : decoder_(decoder), file_(file) {
    decoder_.InitGrid(grid_, records);
    while (!file_.AtEnd() && lineStarts_.size() < kMostRows) {
        lineStarts_.push_back(file_.Offset());
        file_.SkipLine();
    }
}

int ViewedFile::RowCount() const { return std::max(grid_.RowCount(), static_cast<std::int32_t>(lineStarts_.size())); }

std::string ViewedFile::Cell(int row, int column) const {
    const std::int32_t number = row + 1;
    if (number != grid_.KeptRow()) Decode(number);
    return grid_.Cell(number, static_cast<std::size_t>(column));
}

void ViewedFile::Decode(std::int32_t row) const {
    grid_.StartRow(row);
    const auto line = static_cast<std::size_t>(row) - 1;
    if (line >= lineStarts_.size()) return;
    try {
        file_.MoveTo(lineStarts_[line]);
        if (!file_.AtEnd()) decoder_.FillLine(file_, grid_, row);
    } catch (const Error&) {
        grid_.StartRow(row);  // painting has nobody to tell
    }
}

}  // namespace vlm
