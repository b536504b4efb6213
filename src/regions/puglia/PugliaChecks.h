#pragma once

#include <string>

namespace vlm {

class ASLLInePuglia;

/// The region's date checks of a prescription. They never change the line nor stop the run.
struct PugliaChecks {
    /// The anomaly lines of the document as read so far: the document's first, then those of each service, each with
    /// the document's label and a line end.
    static std::string Run(const ASLLInePuglia& record);

    struct DocumentCheck;
    struct ServiceCheck;
    static const DocumentCheck kDocumentChecks[];
    static const ServiceCheck kServiceChecks[];
};

}  // namespace vlm
