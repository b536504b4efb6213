#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "dialogs/Grid.h"
#include "export/IRegionASLExport.h"
#include "files/LineReader.h"

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

/// The rows that the file viewer shows. Only where each line starts is kept: a line is read and decoded when a cell of
/// it is asked for, so that a file of any length opens at once.
///
/// Every line of the file is a row. A file with more lines than the region counted records in it (other line ends, a
/// last line cut short) shows them all; where there are fewer, empty rows fill up to the records. A row that can no
/// longer be read is empty.
class ViewedFile : public ui::GridModel {
public:
    /// `file` stands on its first line. Decoder and file must outlive the rows.
    ViewedFile(IRegionASLExport& decoder, std::int32_t records, files::LineReader& file);

    const std::vector<Column>& Columns() const override { return grid_.Columns(); }
    int RowCount() const override;
    std::string Cell(int row, int column) const override;

private:
    void Decode(std::int32_t row) const;

    IRegionASLExport& decoder_;
    files::LineReader& file_;
    std::vector<std::uint64_t> lineStarts_;
    mutable ViewGrid grid_;  // columns, and the cells of the line decoded last
};

}  // namespace vlm
