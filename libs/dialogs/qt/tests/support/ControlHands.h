#pragma once

#include <string>

#include "qt/QtToolkit.h"

/// A user's hands on the widgets of controls, which only click and press keys, and the eyes.
namespace vlm::ui::test {

/// Sets a control of any kind from a step's value ("#2", "0,2", "01/02/2012", ...); positions, keys and texts must fit.
void Enter(ControlWidget& widget, const std::string& value);
/// A click on a button; a double click on a grid's current row.
void ClickOnce(ControlWidget& widget);
/// A click on a row of a grid, as the grid counts them.
void ClickRow(ControlWidget& widget, int row);
/// Types over what stands in the widget that has the focus.
void TypeOver(QWidget& field, const std::string& text);

/// Where the widgets of the dialog on top do not show what their controls hold, a line for each; "" where all do.
std::string Differences(const Dialog& dialog, const QtToolkit& toolkit);

}  // namespace vlm::ui::test
