#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "export/IRegionASLExport.h"
#include "export/ViewGrid.h"
#include "files/LineReader.h"

namespace vlm {

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
