#pragma once

#include "PugliaRecord.h"

namespace vlm::puglia {

/// The region's date checks of a prescription, which never change the line nor stop the run: the anomaly lines of the
/// document as read so far, the document's first, then those of each service, each with the document's label and a line
/// end.
std::string Anomalies(const Ricetta& ricetta);

}  // namespace vlm::puglia
