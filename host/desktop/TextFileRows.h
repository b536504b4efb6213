#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dialogs/Grid.h"
#include "files/LineReader.h"

namespace vlm::host {

/// The lines of a text file as rows. Only where each line starts is kept; a line is read when it is shown.
class TextFileRows : public ui::GridModel {
public:
    /// Throws Error naming the path when the file cannot be opened.
    explicit TextFileRows(const std::string& path);

    const std::vector<Column>& Columns() const override { return columns_; }
    int RowCount() const override { return static_cast<int>(starts_.size()); }
    std::string Cell(int row, int column) const override;

private:
    mutable files::LineReader file_;
    std::vector<std::uint64_t> starts_;
    std::vector<Column> columns_;
};

}  // namespace vlm::host
