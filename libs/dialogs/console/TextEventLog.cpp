#include "console/TextEventLog.h"

#include <algorithm>
#include <ostream>

#include "ControlKinds.h"
#include "TextLayout.h"
#include "dialogs/Grid.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr std::size_t kMessageWidth = 76;
constexpr std::size_t kColumnWidth = 28;
constexpr int kRowsInDialog = 5;
constexpr int kRowsOfGrid = 20;

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

/// The control's own caption, else the label of its row, else its name; without mnemonic marks.
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

/// Headings and the first `most` rows of the columns that are shown, and how many rows follow.
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

/// A field that brings a caption of its own beside the row's label shows it.
std::string DrawCaptioned(const Control& control, const Dialog::Row& row) {
    const bool shown = control.HoldsCaption() || control.Caption().empty() || control.Caption() == row.label;
    return (shown ? "" : WithoutMnemonic(control.Caption()) + " ") + DrawControl(control);
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

/// The visible rows with their labels, and the buttons, in a frame that carries the title.
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

std::string Word(Icon icon) {
    switch (icon) {
        case Icon::Critical:
            return "ERRORE";
        case Icon::Question:
            return "DOMANDA";
        case Icon::Exclamation:
            return "ATTENZIONE";
        case Icon::Information:
            return "INFORMAZIONE";
        case Icon::None:
            break;
    }
    return {};
}

/// "Mese: Gennaio"; check boxes and buttons say it all themselves.
std::string DrawValue(const Control& control) {
    const ControlKind kind = control.Kind();
    if (kind == ControlKind::CheckBox || kind == ControlKind::Button) return DrawControl(control);
    const std::string shown = ShownValue(control);
    std::string title = TitleOf(control);
    if (!title.empty() && title.back() == ':') title.pop_back();  // some labels bring their own
    return title + ": " + (shown.empty() ? "(vuoto)" : shown);
}

/// The buttons, the pressed one marked.
std::string DrawButtons(Buttons buttons, Answer answer) {
    if (buttons == Buttons::Ok) return "[ OK ]";
    return answer == Answer::Yes ? "▸[ Sì ]  [ No ]" : "[ Sì ]  ▸[ No ]";
}

}  // namespace

void TextEventLog::DialogOpened(const Dialog& dialog) {
    Write(DrawDialog(dialog));
    ++depth_;
}

void TextEventLog::DialogClosed(const Dialog& dialog) {
    --depth_;
    Write("« chiusa: " + WithoutMnemonic(dialog.Title()));
}

void TextEventLog::MessageShown(const Message& message, Answer answer) {
    const std::string word = Word(message.icon);
    const std::string title = message.caption + (word.empty() || message.caption.empty() ? "" : " · ") + word;
    Write(Box(title, Wrap(message.text, kMessageWidth), DrawButtons(message.buttons, answer)));
}

void TextEventLog::FileChosen(const FileChoice& /*choice*/, const std::optional<std::string>& answer) {
    Write("› scelta del file: " + answer.value_or("annullata"));
}

void TextEventLog::FolderChosen(const std::string& /*startFolder*/, const std::optional<std::string>& answer) {
    Write("› scelta della cartella: " + answer.value_or("annullata"));
}

void TextEventLog::State(const Control& control) {
    std::string line = "= ";
    line += control.Kind() == ControlKind::Grid ? TitleOf(control) : DrawValue(control);
    line += " (" + control.Name() + (control.Visible() ? "" : ", nascosto");
    Write(line + (control.Enabled() ? ")" : ", disattivato)"));
    if (control.Kind() == ControlKind::Grid) Write(DrawGrid(As<Grid>(control), kRowsOfGrid));
}

void TextEventLog::FocusMoved(const Control& control) { Write("› il cursore va su: " + TitleOf(control)); }

void TextEventLog::Run(const std::string& command) { Write("› programma avviato: " + command); }

void TextEventLog::Progress(int percent) {
    out_ << '\r' << std::string(2 * static_cast<std::size_t>(depth_), ' ') << "› avanzamento: " << percent << "%  "
         << std::flush;
    inProgress_ = true;
}

void TextEventLog::Help(int context) { Write("› guida, argomento " + std::to_string(context)); }

void TextEventLog::ValueEntered(const Control& control) {
    if (control.Kind() == ControlKind::Grid) {
        return Write("› " + TitleOf(control) + ": riga " + std::to_string(As<Grid>(control).CurrentRow() + 1));
    }
    Write("› " + DrawValue(control));
}

void TextEventLog::ButtonClicked(const Control& control) {
    Write("› " + (control.Kind() == ControlKind::Button ? DrawControl(control) : TitleOf(control)));
}

void TextEventLog::Write(const std::string& line) {
    if (inProgress_) out_ << '\n';
    inProgress_ = false;
    out_ << std::string(2 * static_cast<std::size_t>(depth_), ' ') << line << '\n' << std::flush;
}

void TextEventLog::Write(const Lines& lines) {
    for (const std::string& line : lines) Write(line);
}

}  // namespace vlm::ui
