#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "dialogs/Grid.h"

namespace vlm {

/// The grid of the file viewer as a region's decoder sees it: columns, number of rows, and the cells of the row that is
/// being decoded. Cells of one row are kept, those that were set last. Rows count from 1, columns from 0 in the order
/// in which they were added.
class ViewGrid {
public:
    void AddColumn(const std::string& title, int width, bool rightAligned);
    void SetRowCount(std::int32_t rows) { rowCount_ = rows; }
    /// Setting a cell of another row forgets the row before; a column that is not there is passed over.
    void SetCell(std::int32_t row, std::size_t column, std::string text);

    const std::vector<ui::GridModel::Column>& Columns() const noexcept { return columns_; }
    std::int32_t RowCount() const noexcept { return rowCount_; }
    /// "" for a cell that was not set.
    std::string Cell(std::int32_t row, std::size_t column) const;
    /// Makes `row` the row that is kept, without cells.
    void StartRow(std::int32_t row);
    std::int32_t KeptRow() const noexcept { return keptRow_; }  // 0 for none

private:
    std::vector<ui::GridModel::Column> columns_;
    std::int32_t rowCount_ = 0;
    std::int32_t keptRow_ = 0;
    std::vector<std::string> cells_;
};

}  // namespace vlm
