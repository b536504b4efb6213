#pragma once

#include <cstdint>
#include <memory>
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

/// A database server over a folder of embedded databases, on this machine only, for clients that speak TDS 7.1 to 7.4.
/// A thread accepts connections, each connection has one of its own.
class TdsServer {
public:
    struct Options {
        int port = 0;                          // 0 takes a free one
        std::string user = {}, password = {};  // a user who is empty lets everybody in
        bool dayFirst = false;  // the login's language writes the day before the month, until it is told otherwise
        Faults faults = {};
    };

    /// Throws vlm::Error for a folder that is not there or a port that is taken.
    TdsServer(const std::string& folder, const Options& options);
    TdsServer(const TdsServer&) = delete;
    TdsServer& operator=(const TdsServer&) = delete;
    /// Ends every connection, whatever its client is doing.
    ~TdsServer();

    int Port() const;
    /// Breaks every connection off and accepts no more. Any thread may call it.
    void GoAway() noexcept;

private:
    class Clients;
    std::unique_ptr<Clients> clients_;
};

}  // namespace vlm::host::tds
