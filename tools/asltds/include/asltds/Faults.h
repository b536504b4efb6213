#pragma once

#include <cstdint>
#include <string>

namespace vlm::host::tds {

/// What can go wrong with a server, to test clients with. Without any it all goes well.
struct Faults {
    std::int64_t endAfterRows = 0;    // it goes away when one row set has sent so many rows
    std::int64_t failAfterRows = 0;   // a row set ends after so many rows, because another user's work came first
    std::string endAtStatement = {};  // it goes away instead of running a batch with this text
    bool endAtCommit = false;         // it goes away instead of committing
    bool endAfterCommit = false;      // it commits, says so, and goes away
};

}  // namespace vlm::host::tds
