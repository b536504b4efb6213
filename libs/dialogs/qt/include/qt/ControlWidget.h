#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "dialogs/Control.h"

namespace vlm::ui {

/// What a control's widget asks of its dialog.
class WidgetHost {
public:
    virtual ~WidgetHost() = default;
    /// Runs what the user's action does to a control. What a handler throws ends the showing and goes through.
    virtual void Act(const std::function<void()>& action) = 0;
    /// A click that a command button of the dialog takes; not while an entry stands in a field that is none.
    virtual void Click(Button& button) = 0;
};

/// The widget of one control: follows the control's state and tells the control what the user does. The widget belongs
/// to its parent in the window, which goes first.
class ControlWidget {
public:
    ControlWidget(Control& control, WidgetHost& host) : control_(control), host_(host) {}
    virtual ~ControlWidget() = default;
    ControlWidget(const ControlWidget&) = delete;
    ControlWidget& operator=(const ControlWidget&) = delete;

    Control& Shown() const noexcept { return control_; }
    virtual QWidget& Widget() = 0;
    /// Shows the control's value and texts, without telling the control.
    virtual void Refresh() = 0;

    /// What the focus goes to, in tab order; none for a control that takes no focus.
    virtual std::vector<QWidget*> FocusStops() { return {}; }
    /// Takes the focus when the dialog moves it here.
    virtual void TakeFocus();
    /// Why what stands in the field is no value of the control; empty when it is one.
    virtual QString Complaint() const { return {}; }
    /// Takes the room that is left in its row / in its dialog.
    virtual bool Widens() const { return false; }
    virtual bool Heightens() const { return false; }

protected:
    WidgetHost& Host() const noexcept { return host_; }

private:
    Control& control_;
    WidgetHost& host_;
};

}  // namespace vlm::ui
