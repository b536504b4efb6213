#pragma once

#include <memory>
#include <string>

#include "workbooks/Workbook.h"

namespace vlm::files {

/// A workbook in binary records inside a compound file. Throws Error naming the file.
std::unique_ptr<Workbook> OpenXls(const std::string& path);

}  // namespace vlm::files
