#pragma once

#include <string>

#include "elements/ElementList.h"
#include "readers/ReadContext.h"
#include "readers/SourceFormat.h"
#include "workbooks/Workbook.h"

namespace vlm {

/// Reads a whole source into a new element list. Throws Error for a source that cannot be read and for a failing
/// query; what single cells have wrong goes into the context's findings.
ElementListPtr ReadText(const SourceFormat& format, const std::string& path, ReadContext& context);
ElementListPtr ReadWorkbook(const SourceFormat& format, const std::string& path, ReadContext& context,
                            const files::WorkbookOpener& opener);

}  // namespace vlm
