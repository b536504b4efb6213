#pragma once

#include "console/TextLayout.h"
#include "dialogs/Dialog.h"
#include "dialogs/Grid.h"

/// Dialogs and their controls as text, for people at a terminal.
namespace vlm::ui {

/// The control's own caption, else the label of its row, else its name; without mnemonic marks.
std::string TitleOf(const Control& control);

/// What stands in the control, passwords as stars.
std::string ShownValue(const Control& control);

/// A control in one line: "[Gennaio ▾]", "[x] Simulazione", "(•) Mensile  ( ) Trimestrale".
std::string DrawControl(const Control& control);

/// Headings and the first `most` rows of the columns that are shown, and how many rows follow.
Lines DrawGrid(const Grid& grid, int most);

/// The visible rows with their labels, and the buttons, in a frame that carries the title.
Lines DrawDialog(const Dialog& dialog);

}  // namespace vlm::ui
