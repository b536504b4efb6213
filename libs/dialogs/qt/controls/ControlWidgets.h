#pragma once

#include "ControlWidget.h"

/// The widgets of the kinds of controls, each in the file of its family.
namespace vlm::ui {

/// A control of one kind in a widget of one class.
template <class Kind, class Inside>
class WidgetOf : public ControlWidget {
public:
    WidgetOf(Control& control, WidgetHost& host, Inside* widget) : ControlWidget(control, host), widget_(widget) {}

    Kind& Shown() const noexcept { return As<Kind>(ControlWidget::Shown()); }
    QWidget& Widget() override { return *widget_; }

protected:
    Inside* const widget_;
};

std::unique_ptr<ControlWidget> MakeLabel(Control& control, WidgetHost& host);
/// A frame around rows; without a caption the rows stand in no border.
std::unique_ptr<ControlWidget> MakeBorder(Control& control, WidgetHost& host);
/// A frame that stands in a row itself: a line across the dialog.
std::unique_ptr<ControlWidget> MakeLine(Control& control, WidgetHost& host);
std::unique_ptr<ControlWidget> MakeButton(Control& control, WidgetHost& host);
std::unique_ptr<ControlWidget> MakeCheckBox(Control& control, WidgetHost& host);
std::unique_ptr<ControlWidget> MakeProgress(Control& control, WidgetHost& host);
/// One line, or several; a path takes files that are dropped on it and tells what is there.
std::unique_ptr<ControlWidget> MakeText(Control& control, WidgetHost& host);
std::unique_ptr<ControlWidget> MakeNumber(Control& control, WidgetHost& host);
/// Typed as dd/mm/yyyy (or its eight digits) or taken from a calendar; an empty line is no date.
std::unique_ptr<ControlWidget> MakeDate(Control& control, WidgetHost& host);
/// Options side by side.
std::unique_ptr<ControlWidget> MakeOptions(Control& control, WidgetHost& host);
std::unique_ptr<ControlWidget> MakeFixedList(Control& control, WidgetHost& host);
/// With extra columns the popup has heads above them.
std::unique_ptr<ControlWidget> MakePickList(Control& control, WidgetHost& host);
/// Each entry is chosen and let go by a click or the space bar.
std::unique_ptr<ControlWidget> MakeMultiList(Control& control, WidgetHost& host);
std::unique_ptr<ControlWidget> MakeGrid(Control& control, WidgetHost& host);

}  // namespace vlm::ui
