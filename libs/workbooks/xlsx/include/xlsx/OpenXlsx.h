#pragma once

#include <memory>
#include <string>

#include "workbooks/Workbook.h"

namespace vlm::files {

/// A workbook whose parts are XML in a zip archive. Throws Error naming the file.
std::unique_ptr<Workbook> OpenXlsx(const std::string& path);

}  // namespace vlm::files
