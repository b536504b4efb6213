#pragma once

#include <string>

#include "qt/QtToolkit.h"

namespace vlm::ui::test {

/// Where the widgets of the dialog on top do not show what their controls hold, a line for each; "" where all do.
std::string Differences(const Dialog& dialog, const QtToolkit& toolkit);

}  // namespace vlm::ui::test
