#pragma once

#include "SiciliaRecord.h"

namespace vlm::sicilia {

/// The region's consistency checks of a detailed record, which never change the line nor stop the run: the anomaly
/// lines of the current row, in the region's order, each with the document's label and a line end.
std::string Anomalies(const Record& record);

}  // namespace vlm::sicilia
