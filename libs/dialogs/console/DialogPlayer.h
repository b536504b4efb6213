#pragma once

#include <map>
#include <vector>

#include "console/ConsoleScript.h"
#include "console/EventLog.h"
#include "dialogs/Dialog.h"

namespace vlm::ui {

/// The one showing of a dialog: opens it, plays its steps, closes it. However that ends, a dialog that has opened is
/// told once that it closed.
class DialogPlayer : private DialogView {
public:
    DialogPlayer(Dialog& dialog, ConsoleScript& script, EventLog& log, bool nested);
    /// Throws ScriptError for a step that cannot be done; what a handler throws goes through.
    void Play();

private:
    void ControlChanged(Control& control) override;
    void FocusMoved(Control& control) override { log_.FocusMoved(control); }
    void Repaint() override {}
    void Close() override {}  // the steps see that the dialog is closing

    void PlaySteps();
    void PlayStep(const ScriptStep& step);
    void Click(Control& control, const ScriptStep& step);
    void MakeCurrent(Control& control, const ScriptStep& step);
    void Press(const ScriptStep& step);
    void ClickMnemonic(KeyEvent key);
    Control& Named(const ScriptStep& step) const;
    /// The control of a step that a user could do now: neither it nor the frame around it disabled or hidden.
    Control& Usable(const ScriptStep& step) const;
    void CloseAfterError() noexcept;

    Dialog& dialog_;
    ConsoleScript& script_;
    EventLog& log_;
    std::vector<ScriptStep> steps_;
    std::map<const Control*, int> percents_;
    bool shown_ = false;
};

}  // namespace vlm::ui
