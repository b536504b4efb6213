#pragma once

#include <functional>
#include <string>

#include "dialogs/Grid.h"

namespace vlm::ui {

/// Writes the shown columns of a grid as a PDF: A4 across, the title and the columns' heads on every page, a box as a
/// cross. `rowAt` gives the row in each place. Throws Error naming the path when it cannot be written.
void PrintGrid(const Grid& grid, const std::string& title, const std::string& path,
               const std::function<int(int place)>& rowAt);

}  // namespace vlm::ui
