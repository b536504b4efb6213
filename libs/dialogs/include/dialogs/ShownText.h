#pragma once

#include <string>

#include "dialogs/Control.h"

namespace vlm::ui {

/// What the user sees in a control: the chosen entries, a number (nothing for 0), a date as dd/mm/yyyy, the text; "1"
/// or "0" for a check box, the caption for a label, "" for buttons, frames and grids.
std::string ShownText(const Control& control);

}  // namespace vlm::ui
