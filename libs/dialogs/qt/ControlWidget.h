#pragma once

#include <QWidget>
#include <functional>
#include <memory>
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

    /// What the focus goes to, in tab order: the widget where it takes the focus, unless a kind says otherwise.
    virtual std::vector<QWidget*> FocusStops();
    /// Takes the focus when the dialog moves it here; what is typed then replaces what stands in a line.
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

/// The widget for a control of any kind, showing its state. `surrounds` tells a frame that stands around rows from one
/// that is a line in a row.
std::unique_ptr<ControlWidget> MakeControlWidget(Control& control, WidgetHost& host, bool surrounds);

/// Colours a field whose entry is no value of its control, or takes the colour away.
void MarkEntry(QWidget& field, bool wrong);

}  // namespace vlm::ui
