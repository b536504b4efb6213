#pragma once

#include <atomic>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "asltds/ServedFolder.h"
#include "asltds/Session.h"
#include "asltds/Socket.h"

namespace vlm::host::tds {

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

    int Port() const { return listener_.Port(); }
    /// Breaks every connection off and accepts no more. Any thread may call it.
    void GoAway() noexcept { BreakOff(nullptr); }

private:
    struct Client {
        Client(int handle, const SessionSetup& settings) : socket(handle), setup(settings) {}
        Socket socket;
        SessionSetup setup;
        std::thread thread;
        std::atomic<bool> ended = false;
    };
    /// `last` is told at last, so that its client finds the others gone.
    void BreakOff(Socket* last) noexcept;
    void AcceptClients();
    void Start(int handle);
    void ForgetEnded();

    ServedFolder folder_;
    Socket listener_;
    SessionSetup setup_;
    std::mutex mutex_;  // of what follows
    bool gone_ = false;
    std::list<Client> clients_;
    std::thread accepting_;
};

}  // namespace vlm::host::tds
