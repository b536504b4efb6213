#include "TextDrawing.h"

#include <algorithm>

#include "ControlState.h"
#include "dialogs/Mnemonic.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr std::size_t kFieldWidth = 60;  // at most
constexpr std::size_t kTextWidth = 24;   // at least, as are the next two
constexpr std::size_t kListWidth = 12;
constexpr std::size_t kNumberWidth = 4;
constexpr std::size_t kColumnWidth = 28;
constexpr int kRowsInDialog = 5;

std::string Bracketed(const std::string& inside) {
    std::string drawn = "[";
    return drawn.append(inside).append("]");
}

std::string Mark(bool set, const std::string& caption) { return (set ? "[x] " : "[ ] ") + caption; }

std::string DrawOptions(const OptionGroup& group) {
    std::string drawn;
    for (std::size_t i = 0; i < group.Items().size(); ++i) {
        if (i > 0) drawn += "  ";
        drawn += (static_cast<int>(i) == group.Position() ? "(•) " : "( ) ") + WithoutMnemonic(group.Items()[i]);
    }
    return drawn;
}

std::string DrawSeveral(const MultiList& list) {
    std::string drawn;
    for (std::size_t i = 0; i < list.Items().size(); ++i) {
        if (i > 0) drawn += "  ";
        drawn += Mark(list.IsSelected(static_cast<int>(i)), list.Items()[i]);
    }
    return drawn;
}

std::string DrawText(const TextField& field) {
    const Lines lines = Wrap(ShownValue(field), std::string::npos - 1);
    return Bracketed(PadRight(Fit(lines.front(), kFieldWidth), kTextWidth) + (lines.size() > 1 ? " …" : ""));
}

std::string DrawProgress(const ProgressBar& bar) {
    const auto full = static_cast<std::size_t>(bar.Value() / 5);
    return Bracketed(std::string(full, '#') + std::string(20 - full, '.')) + " " + std::to_string(bar.Value()) + "%";
}

std::string DrawCell(const Grid& grid, int row, std::size_t column) {
    const std::string cell = grid.Model()->Cell(row, static_cast<int>(column));
    return grid.Model()->Columns()[column].checkBox ? (cell == "1" ? "[x]" : "[ ]") : Fit(cell, kColumnWidth);
}

std::string LabelOf(const Dialog::Row& row) { return WithoutMnemonic(row.label); }

const Control* VisibleOf(const Dialog::Cell& cell) {
    const auto found =
        std::find_if(cell.stack.begin(), cell.stack.end(), [](const Control* each) { return each->Visible(); });
    return found == cell.stack.end() ? nullptr : *found;
}

/// A field that brings a caption of its own beside the row's label shows it.
std::string DrawCaptioned(const Control& control, const Dialog::Row& row) {
    const ControlKind kind = control.Kind();
    const bool drawsCaption = kind == ControlKind::Label || kind == ControlKind::Frame || kind == ControlKind::Button ||
                              kind == ControlKind::CheckBox;
    const bool shows = drawsCaption || control.Caption().empty() || control.Caption() == row.label;
    return (shows ? "" : WithoutMnemonic(control.Caption()) + " ") + DrawControl(control);
}

/// The cells of a row in one line; grids follow below it.
void DrawRow(const Dialog::Row& row, std::size_t labelWidth, Lines& lines) {
    std::string line;
    Lines grids;
    for (const Dialog::Cell& cell : row.cells) {
        const Control* control = VisibleOf(cell);
        if (control == nullptr) continue;
        if (control->Kind() == ControlKind::Grid) {
            const Lines grid = DrawGrid(As<Grid>(*control), kRowsInDialog);
            grids.insert(grids.end(), grid.begin(), grid.end());
        } else {
            line += (line.empty() ? "" : "  ") + DrawCaptioned(*control, row);
        }
    }
    if (!line.empty()) lines.push_back(PadRight(LabelOf(row), labelWidth) + (labelWidth > 0 ? "  " : "") + line);
    lines.insert(lines.end(), grids.begin(), grids.end());
}

}  // namespace

std::string TitleOf(const Control& control) {
    if (!control.Caption().empty()) return WithoutMnemonic(control.Caption());
    for (const Dialog::Row& row : control.Owner().Rows()) {
        for (const Dialog::Cell& cell : row.cells) {
            const bool here = std::find(cell.stack.begin(), cell.stack.end(), &control) != cell.stack.end();
            if (here && !row.label.empty()) return LabelOf(row);
        }
    }
    return control.Name();
}

std::string ShownValue(const Control& control) {
    const std::string text = ControlState(control).Text();
    const bool secret = control.Kind() == ControlKind::Text && As<TextField>(control).password;
    return secret ? std::string(text::Length(text), '*') : text;
}

std::string DrawControl(const Control& control) {
    const std::string text = ControlState(control).Text();
    switch (control.Kind()) {
        case ControlKind::Label:
        case ControlKind::Frame:
            return WithoutMnemonic(control.Caption());
        case ControlKind::Button:
            return Bracketed(std::string(1, ' ').append(WithoutMnemonic(control.Caption())).append(" "));
        case ControlKind::Text:
            return DrawText(As<TextField>(control));
        case ControlKind::CheckBox:
            return Mark(As<CheckBox>(control).Checked(), WithoutMnemonic(control.Caption()));
        case ControlKind::OptionGroup:
            return DrawOptions(As<OptionGroup>(control));
        case ControlKind::MultiList:
            return DrawSeveral(As<MultiList>(control));
        case ControlKind::FixedList:
        case ControlKind::PickList:
            return Bracketed(PadRight(Fit(text, kFieldWidth), kListWidth) + " ▾");
        case ControlKind::Progress:
            return DrawProgress(As<ProgressBar>(control));
        case ControlKind::Number:
            return Bracketed(PadRight(text, kNumberWidth));
        case ControlKind::Date:
            return Bracketed(text.empty() ? "  /  /    " : text);
        case ControlKind::Grid:
            break;
    }
    return {};
}

Lines DrawGrid(const Grid& grid, int most) {
    if (grid.Model() == nullptr) return {};
    const std::vector<GridModel::Column>& columns = grid.Model()->Columns();
    const int rows = std::min(grid.RowCount(), most);
    Lines lines(static_cast<std::size_t>(rows) + 1);
    lines[0] = "  ";
    for (int row = 0; row < rows; ++row)
        lines[static_cast<std::size_t>(row) + 1] = row == grid.CurrentRow() ? "▸ " : "  ";
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (!columns[column].visible) continue;
        Lines cells{Fit(columns[column].title, kColumnWidth)};
        for (int row = 0; row < rows; ++row) cells.push_back(DrawCell(grid, row, column));
        std::size_t width = 0;
        for (const std::string& cell : cells) width = std::max(width, text::Length(cell));
        for (std::size_t i = 0; i < cells.size(); ++i) {
            lines[i] += (columns[column].rightAligned ? PadLeft(cells[i], width) : PadRight(cells[i], width)) + "  ";
        }
    }
    for (std::string& line : lines) line = text::TrimRight(std::string(line));
    if (rows < grid.RowCount())
        lines.push_back("  … altre righe: " + text::FormatInteger(grid.RowCount() - rows, true));
    return lines;
}

Lines DrawDialog(const Dialog& dialog) {
    std::size_t labelWidth = 0;
    for (const Dialog::Row& row : dialog.Rows()) labelWidth = std::max(labelWidth, text::Length(LabelOf(row)));
    Lines lines;
    const Frame* frame = nullptr;
    for (const Dialog::Row& row : dialog.Rows()) {
        if (row.frame != nullptr && !row.frame->Visible()) continue;
        if (row.frame != nullptr && row.frame != frame) lines.push_back("── " + DrawControl(*row.frame) + " ──");
        frame = row.frame;
        DrawRow(row, labelWidth, lines);
    }
    std::string buttons;
    for (const Button* button : dialog.Buttons()) {
        if (button->Visible()) buttons += (buttons.empty() ? "" : "  ") + DrawControl(*button);
    }
    return Box(WithoutMnemonic(dialog.Title()), lines, buttons);
}

}  // namespace vlm::ui
