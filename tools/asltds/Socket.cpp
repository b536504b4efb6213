#include "Socket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "values/Error.h"

namespace vlm::host::tds {

namespace {

constexpr int kWaiting = 64;  // connections that nobody has accepted yet

int Fail(int handle, int port) {
    const std::string reason = errno == EADDRINUSE ? "è già in uso"
                               : errno == EACCES   ? "è riservata al sistema"
                                                   : std::strerror(errno);
    if (handle >= 0) ::close(handle);
    throw Error("La porta " + std::to_string(port) + " non si può aprire: " + reason + ".");
}

}  // namespace

Socket::~Socket() { ::close(handle_); }

int Socket::Listen(int port) {
    const int handle = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle < 0) return Fail(handle, port);
    const int on = 1;
    ::setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    if (::bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return Fail(handle, port);
    if (::listen(handle, kWaiting) != 0) return Fail(handle, port);
    return handle;
}

int Socket::Port() const {
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    ::getsockname(handle_, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

int Socket::Accept() const {
    for (;;) {
        const int accepted = ::accept4(handle_, nullptr, nullptr, SOCK_CLOEXEC);
        if (accepted < 0 && (errno == EINTR || errno == ECONNABORTED)) continue;
        const int on = 1;  // an answer's last packet does not wait for company
        if (accepted >= 0) ::setsockopt(accepted, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        return accepted;
    }
}

void Socket::Shutdown() noexcept { ::shutdown(handle_, SHUT_RDWR); }

bool Socket::Receive(char* bytes, std::size_t count) const {
    while (count > 0) {
        const ssize_t received = ::recv(handle_, bytes, count, 0);
        if (received < 0 && errno == EINTR) continue;
        if (received <= 0) return false;
        bytes += received;
        count -= static_cast<std::size_t>(received);
    }
    return true;
}

bool Socket::Send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(handle_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

int Socket::Peek(char* bytes, std::size_t count) const {
    const ssize_t received = ::recv(handle_, bytes, count, MSG_PEEK | MSG_DONTWAIT);
    if (received > 0) return static_cast<int>(received);
    return received < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) ? 0 : -1;
}

}  // namespace vlm::host::tds
