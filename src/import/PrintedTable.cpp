#include "PrintedTable.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm {

namespace {

std::string CellText(const ui::GridModel& model, int row, std::size_t column) {
    std::string cell = model.Cell(row, static_cast<int>(column));
    if (model.Columns()[column].checkBox) return cell == "1" ? "x" : "";
    return cell;
}

/// The visible columns and how many characters each needs.
struct Layout {
    std::vector<std::size_t> columns;
    std::vector<std::size_t> widths;
};

Layout LayoutOf(const ui::GridModel& model) {
    Layout layout;
    for (std::size_t column = 0; column < model.Columns().size(); ++column) {
        if (!model.Columns()[column].visible) continue;
        std::size_t width = text::Length(model.Columns()[column].title);
        for (int row = 0; row < model.RowCount(); ++row) {
            width = std::max(width, text::Length(CellText(model, row, column)));
        }
        layout.columns.push_back(column);
        layout.widths.push_back(width);
    }
    return layout;
}

template <typename TextOf>
std::string LineOf(const Layout& layout, TextOf&& textOf) {
    std::string line;
    for (std::size_t at = 0; at < layout.columns.size(); ++at) {
        const std::string cell = textOf(layout.columns[at]);
        line += cell + std::string(layout.widths[at] - text::Length(cell) + 2, ' ');
    }
    return std::string(text::TrimRight(line));
}

}  // namespace

std::vector<std::string> PrintedTable(const ui::GridModel& model) {
    const Layout layout = LayoutOf(model);
    std::vector<std::string> lines;
    lines.push_back(LineOf(layout, [&](std::size_t column) { return model.Columns()[column].title; }));
    for (int row = 0; row < model.RowCount(); ++row) {
        lines.push_back(LineOf(layout, [&](std::size_t column) { return CellText(model, row, column); }));
    }
    return lines;
}

}  // namespace vlm
