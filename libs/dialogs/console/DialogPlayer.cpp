#include "DialogPlayer.h"

#include "ControlKinds.h"
#include "dialogs/Grid.h"

namespace vlm::ui {

namespace {

class ViewScope {
public:
    ViewScope(Dialog& dialog, DialogView* view) : dialog_(dialog) { dialog_.Attach(view); }
    ~ViewScope() { dialog_.Attach(nullptr); }
    ViewScope(const ViewScope&) = delete;
    ViewScope& operator=(const ViewScope&) = delete;

private:
    Dialog& dialog_;
};

}  // namespace

DialogPlayer::DialogPlayer(Dialog& dialog, ConsoleScript& script, EventLog& log, bool nested)
    : dialog_(dialog), script_(script), log_(log), steps_(script.Take(dialog.Name(), nested)) {}

void DialogPlayer::Play() {
    const ViewScope scope(dialog_, this);
    dialog_.Opening();
    try {
        PlaySteps();
    } catch (...) {
        CloseAfterError();
        throw;
    }
    if (shown_) log_.DialogClosed(dialog_);
    dialog_.Closed();
}

void DialogPlayer::PlaySteps() {
    script_.ThrowIfFailed();
    if (!dialog_.IsClosing()) {
        log_.DialogOpened(dialog_);
        shown_ = true;
    }
    auto next = steps_.begin();
    while (next != steps_.end() && !dialog_.IsClosing()) {
        PlayStep(*next++);
        script_.ThrowIfFailed();
    }
    script_.LeftOver(dialog_.Name(), {next, steps_.end()});
    if (dialog_.IsClosing()) return;
    dialog_.FrameClose();
    script_.ThrowIfFailed();
    dialog_.Close();  // nobody is left who could close a dialog that will not go
}

void DialogPlayer::CloseAfterError() noexcept {
    try {
        dialog_.Close();
        if (shown_) log_.DialogClosed(dialog_);
        dialog_.Closed();
    } catch (...) {  // the error that led here is the one to tell
    }
}

void DialogPlayer::ControlChanged(Control& control) {
    if (control.Kind() != ControlKind::Progress) return;
    const int percent = As<ProgressBar>(control).Value();
    int& known = percents_[&control];
    if (known == percent) return;  // it was shown, hidden or enabled
    known = percent;
    log_.Progress(percent);
}

void DialogPlayer::PlayStep(const ScriptStep& step) {
    switch (step.kind) {
        case ScriptStep::Kind::Answer:
        case ScriptStep::Kind::Block:
            return script_.Keep(step);
        case ScriptStep::Kind::Help:
            return dialog_.HelpRequested();
        case ScriptStep::Kind::State:
            return log_.State(Named(step));
        case ScriptStep::Kind::Press:
            return Press(step);
        case ScriptStep::Kind::Click:
            return Click(Usable(step), step);
        case ScriptStep::Kind::Row:
            return MakeCurrent(Usable(step), step);
        case ScriptStep::Kind::Set:
            Control& control = Usable(step);
            EnterValue(control, step);
            return log_.ValueEntered(control);
    }
}

void DialogPlayer::Click(Control& control, const ScriptStep& step) {
    if (control.Kind() != ControlKind::Button && control.Kind() != ControlKind::Grid) {
        throw ScriptError(step.text, "il controllo " + control.Name() + " non è un pulsante");
    }
    log_.ButtonClicked(control);
    if (control.Kind() == ControlKind::Button) {
        As<Button>(control).Click();
    } else if (control.OnChange) {
        control.OnChange();  // the button in the grid's current row
    }
}

void DialogPlayer::MakeCurrent(Control& control, const ScriptStep& step) {
    if (control.Kind() != ControlKind::Grid) {
        throw ScriptError(step.text, "il controllo " + control.Name() + " non è una griglia");
    }
    Grid& grid = As<Grid>(control);
    if (step.row > grid.RowCount()) {
        throw ScriptError(step.text,
                          "la griglia " + control.Name() + " ha " + std::to_string(grid.RowCount()) + " righe");
    }
    grid.SetCurrentRow(step.row - 1);
    log_.ValueEntered(control);
}

void DialogPlayer::Press(const ScriptStep& step) {
    Control* focus = step.name.empty() ? nullptr : &Usable(step);
    if (!dialog_.KeyDown(focus, step.key)) ClickMnemonic(step.key);
    if (!dialog_.IsClosing()) dialog_.KeyUp(focus, step.key);
}

void DialogPlayer::ClickMnemonic(KeyEvent key) {
    if (key.shift != kAlt) return;
    for (Control* control : dialog_.Controls()) {
        const bool button = control->Kind() == ControlKind::Button;
        if (!button && control->Kind() != ControlKind::CheckBox) continue;
        if (MnemonicKey(control->Caption()) != key.code) continue;
        if (!dialog_.IsVisible(*control) || !dialog_.IsEnabled(*control)) continue;
        if (button) return As<Button>(*control).Click();
        return As<CheckBox>(*control).SetChecked(!As<CheckBox>(*control).Checked());
    }
}

Control& DialogPlayer::Named(const ScriptStep& step) const {
    Control* control = dialog_.Find(step.name);
    if (control != nullptr) return *control;
    throw ScriptError(step.text, "la finestra " + dialog_.Name() + " non ha un controllo \"" + step.name + "\"");
}

Control& DialogPlayer::Usable(const ScriptStep& step) const {
    Control& control = Named(step);
    if (IsSecret(control) && !(dialog_.IsVisible(control) && dialog_.IsEnabled(control))) {
        throw ScriptError(control.Name(), "il campo non si può riempire");
    }
    if (!dialog_.IsVisible(control)) throw ScriptError(step.text, "il controllo " + control.Name() + " è nascosto");
    if (!dialog_.IsEnabled(control)) throw ScriptError(step.text, "il controllo " + control.Name() + " è disattivato");
    return control;
}

}  // namespace vlm::ui
