#pragma once

#include <string>

namespace vlm {

class ASLLineSicilia;

/// The region's consistency checks of a detailed record. They never change the line nor stop the run.
struct SiciliaChecks {
    /// The anomaly lines of the current row, in the region's order, each with the document's label and a line end.
    static std::string Run(const ASLLineSicilia& record);

    struct Check;
    static const Check kChecks[];
};

}  // namespace vlm
