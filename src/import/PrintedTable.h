#pragma once

#include <string>
#include <vector>

#include "dialogs/Grid.h"

namespace vlm {

/// The rows that a grid shows as lines of text: the visible columns under their titles, as wide as their longest cell,
/// two blanks between them. Selected boxes are "x".
std::vector<std::string> PrintedTable(const ui::GridModel& model);

}  // namespace vlm
