#pragma once

#include <string>

#include "qt/ControlWidget.h"

/// What a user's hands do to the widgets of controls: clicks and keys, nothing else.
namespace vlm::ui::test {

/// Sets a control of any kind from a step's value ("#2", "0,2", "01/02/2012", ...); positions, keys and texts must fit.
void Enter(ControlWidget& widget, const std::string& value);
/// A click on a button; a double click on a grid's current row.
void ClickOnce(ControlWidget& widget);
/// A click on a row of a grid, as the grid counts them.
void ClickRow(ControlWidget& widget, int row);
/// Types over what stands in the widget that has the focus.
void TypeOver(QWidget& field, const std::string& text);

}  // namespace vlm::ui::test
