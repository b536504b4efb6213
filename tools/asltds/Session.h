#pragma once

#include <functional>
#include <string>

#include "RemoteCalls.h"

namespace vlm::host::tds {

/// What a connection needs of its server. `user` empty: everybody may come.
struct SessionSetup {
    ServedFolder& folder;
    std::string user, password;
    bool dayFirst = false;
    Faults faults = {};
    std::function<void()> goAway;
};

/// One connection from its login to its end.
class Session {
public:
    Session(const SessionSetup& setup, Socket& socket);

    /// Answers until the connection ends. A message that is not of the protocol ends it too. Never throws.
    void Run() noexcept;

private:
    void Serve();
    bool LogIn();
    bool Accept(std::string_view message);
    void Refuse(const ServerError& error);
    void Answer(const Message& message);
    void RunBatch(ByteReader reader);
    void RunCalls(ByteReader reader);
    void RunTransaction(ByteReader reader);
    /// Throws ConnectionEnded.
    [[noreturn]] void GoAway();
    void SkipHeaders(ByteReader& reader) const;

    const SessionSetup& setup_;
    PacketStream packets_;
    TokenWriter writer_;
    CurrentDatabase database_;
    RowSender rows_;
    ServerStatements statements_;
    RemoteCalls calls_;
};

}  // namespace vlm::host::tds
