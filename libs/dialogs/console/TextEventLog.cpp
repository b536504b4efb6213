#include "console/TextEventLog.h"

#include <ostream>

#include "ControlState.h"
#include "TextDrawing.h"
#include "dialogs/Mnemonic.h"

namespace vlm::ui {

namespace {

constexpr std::size_t kMessageWidth = 76;
constexpr int kRowsOfGrid = 20;

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
