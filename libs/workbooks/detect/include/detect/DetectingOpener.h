#pragma once

#include <memory>
#include <string>

#include "workbooks/Workbook.h"

namespace vlm::files {

/// Knows the kind of a workbook by its file's first bytes, whatever its extension.
class DetectingOpener : public WorkbookOpener {
public:
    std::unique_ptr<Workbook> Open(const std::string& path) const override;
};

}  // namespace vlm::files
