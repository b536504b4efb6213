#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Socket.h"

namespace vlm::host::tds {

enum class MessageType : std::uint8_t {
    Batch = 1,
    RemoteCall = 3,
    Answer = 4,
    Attention = 6,
    Transaction = 14,
    Login = 16,
    PreLogin = 18,
};

struct Message {
    MessageType type = MessageType::Batch;
    std::string bytes;
};

/// The connection ended, on this side or the other.
class ConnectionEnded {};

/// Messages cut into packets of the agreed size, a header of eight bytes before each.
class PacketStream {
public:
    static constexpr std::size_t kDefaultSize = 4096;
    static constexpr std::size_t kSmallest = 512, kLargest = 32767;

    explicit PacketStream(Socket& socket) : socket_(&socket) {}

    /// The packets of the next message put together. ConnectionEnded; ProtocolError for what is no packet.
    Message Read();

    std::size_t PacketSize() const { return packetSize_; }
    /// From the next message on.
    void SetPacketSize(std::size_t size);

    /// Adds to the answer. Full packets are sent in blocks. Throws ConnectionEnded.
    void Put(std::string_view bytes);
    /// Sends what there is of the answer, which goes on.
    void Flush();
    void End();

    /// Whether the other side gave up on the answer. Looked for once for each block that was sent.
    bool WasCancelled();

private:
    void ReadPacket(Message& message, bool& last);
    void ClosePacket(bool last);
    void SendBlock();

    Socket* socket_;
    std::size_t packetSize_ = kDefaultSize;
    std::string out_;              // whole packets, and the open one at the end
    std::size_t packetStart_ = 0;  // of the open one in out_
    bool blockSent_ = false;
    std::uint8_t packetNumber_ = 0;
};

}  // namespace vlm::host::tds
