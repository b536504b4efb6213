#pragma once

#include "readers/ImportTemplate.h"
#include "readers/SourceFormat.h"

namespace vlm {

/// What a template of each type describes. Positions are 1, 2, ... ("TD"), "start,length" ("TF") or a column's letters
/// ("E"). Throws Error naming the key for a position that no source can have.
SourceFormat DelimitedFormatOf(const ImportTemplate& source);  // needs a DELIMITER
SourceFormat FixedFormatOf(const ImportTemplate& source);
SourceFormat WorkbookFormatOf(const ImportTemplate& source);

inline constexpr const char* kDelimiterKey = "DELIMITER";

}  // namespace vlm
