#pragma once

#include <cstdint>
#include <string_view>

#include "export/ViewGrid.h"

/// A Puglia file in the grid viewer, a row for each prescription.
namespace vlm::puglia {

/// Columns with titles and widths, and the number of rows.
void InitPreview(ViewGrid& grid, std::int32_t records);

/// Fills `row`, counted from 1, from a written line. Any text is taken: what a line is too short for, and what is blank
/// in it, shows as nothing; what should be a number shows the digits that it starts with, or 0.
void FillPreview(std::string_view line, ViewGrid& grid, std::int32_t row);

}  // namespace vlm::puglia
