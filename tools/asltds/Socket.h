#pragma once

#include <cstddef>
#include <string_view>

namespace vlm::host::tds {

/// One end of a connection. Shut down from any thread: whoever waits on it wakes up and finds it ended.
class Socket {
public:
    explicit Socket(int handle) : handle_(handle) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket();

    /// Listens on 127.0.0.1; port 0 takes a free one. Throws vlm::Error.
    static int Listen(int port);

    int Port() const;
    /// The handle of the next connection; -1 when the socket has been shut down.
    int Accept() const;
    void Shutdown() noexcept;

    /// False when the connection ended first.
    bool Receive(char* bytes, std::size_t count) const;
    bool Send(std::string_view bytes) const;
    /// How many of the next bytes are there, up to `count`, without waiting and without taking them; -1 when the
    /// connection ended.
    int Peek(char* bytes, std::size_t count) const;

private:
    int handle_;
};

}  // namespace vlm::host::tds
