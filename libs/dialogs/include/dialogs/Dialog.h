#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/Control.h"
#include "dialogs/Keys.h"

namespace vlm::ui {

/// The face that a toolkit gives a dialog while it is shown.
class DialogView {
public:
    virtual ~DialogView() = default;
    /// Caption, value, enabled or visible changed.
    virtual void ControlChanged(Control& control) = 0;
    virtual void FocusMoved(Control& control) = 0;
    /// Paint now: the working thread does not come back to the event loop for a while.
    virtual void Repaint() = 0;
    /// End the modal showing. The toolkit runs Dialog::Closed once the showing has ended.
    virtual void Close() = 0;
    virtual std::intptr_t WindowHandle() const { return 0; }
};

/// A modal dialog: named controls, their state and events, laid out as labelled rows. Written once for every toolkit.
///
/// A toolkit shows it so: Opening(), then the view appears; the user's actions go to the controls (SetText, Click, ...)
/// and keys to KeyDown / KeyUp; the title bar's close goes to FrameClose(); when the showing has ended, Closed().
class Dialog {
public:
    /// Controls that take the same place stand in one cell; at most one of them is visible at a time.
    struct Cell {
        std::vector<Control*> stack;
    };
    struct Row {
        std::string label;  // with "&" before the mnemonic letter, where it has one
        std::vector<Cell> cells;
        Frame* frame = nullptr;  // rows of one frame stand together inside its border
    };

    Dialog(std::string name, std::string title) : name_(std::move(name)), title_(std::move(title)) {}
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    const std::string& Name() const noexcept { return name_; }
    const std::string& Title() const noexcept { return title_; }
    const std::vector<Control*>& Controls() const noexcept { return controls_; }  // in tab order
    Control* Find(std::string_view name) const;                                   // without regard to case
    /// Neither the control nor the frame around it is hidden.
    bool IsVisible(const Control& control) const;
    /// Neither the control nor the frame around it is disabled.
    bool IsEnabled(const Control& control) const;
    const std::vector<Row>& Rows() const noexcept { return rows_; }
    const std::vector<Button*>& Buttons() const noexcept { return buttons_; }  // the row of buttons at the bottom
    Button* DefaultButton() const noexcept { return defaultButton_; }
    Button* CancelButton() const noexcept { return cancelButton_; }

    // Called by the toolkit. When Opening throws nothing was shown and Closed does not run; after any other end of the
    // showing, also by an exception, Closed runs once.
    void Attach(DialogView* view) noexcept { view_ = view; }
    virtual void Opening() {}
    virtual void Closed() {}
    /// The title bar's close, or a script that ran out of steps.
    virtual void FrameClose() { Close(); }
    /// The frame's help request.
    virtual void HelpRequested() {}
    /// A key went down with `focus` (may be null) holding the focus: the dialog's own preview, then what every dialog
    /// does (Alt+F4 closes, Escape clicks the cancel button, Return the button that has the focus or else the default
    /// button, F1 asks for help).
    /// True when the key has been dealt with, so that neither the control nor the toolkit should see it.
    bool KeyDown(Control* focus, KeyEvent key);
    /// A key came up in `focus`.
    virtual void KeyUp(Control* /*focus*/, KeyEvent /*key*/) {}

    // Called by the dialog and its controls.
    /// Ends the showing; a second call does nothing. A dialog object is shown once.
    void Close();
    bool IsClosing() const noexcept { return closing_; }
    /// The shown window as the machine numbers it, 0 where there is none.
    std::intptr_t WindowHandle() const { return view_ != nullptr ? view_->WindowHandle() : 0; }
    void Register(Control& control) { controls_.push_back(&control); }
    void NotifyChanged(Control& control);
    void NotifyFocus(Control& control);
    void Repaint();

protected:
    /// Sees every key before the control does and may swallow it.
    virtual void PreviewKey(KeyEvent& /*key*/) {}

    void AddRow(std::string label, std::initializer_list<Cell> cells, Frame* frame = nullptr);
    void SetButtons(std::initializer_list<Button*> buttons, Button* defaultButton, Button* cancelButton);

private:
    /// The frame around a control, null for none.
    const Frame* FrameOf(const Control& control) const;

    std::string name_;
    std::string title_;
    std::vector<Control*> controls_;
    std::vector<Row> rows_;
    std::vector<Button*> buttons_;
    Button* defaultButton_ = nullptr;
    Button* cancelButton_ = nullptr;
    DialogView* view_ = nullptr;
    bool closing_ = false;
};

}  // namespace vlm::ui
