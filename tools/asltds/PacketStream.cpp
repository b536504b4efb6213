#include "PacketStream.h"

#include <algorithm>

#include "WireBytes.h"

namespace vlm::host::tds {

namespace {

constexpr std::size_t kHeader = 8;
constexpr std::size_t kBlock = 32 * 1024;  // sent at once
constexpr std::size_t kLongestMessage = 16 * 1024 * 1024;
constexpr std::uint8_t kLast = 1;

std::size_t LengthIn(const char* header) {
    return static_cast<std::size_t>(static_cast<unsigned char>(header[2])) << 8 | static_cast<unsigned char>(header[3]);
}

}  // namespace

Message PacketStream::Read() {
    Message message;
    for (bool last = false; !last;) ReadPacket(message, last);
    return message;
}

void PacketStream::ReadPacket(Message& message, bool& last) {
    char header[kHeader];
    if (!socket_->Receive(header, kHeader)) throw ConnectionEnded();
    const std::size_t length = LengthIn(header);
    if (length < kHeader || length > kLargest) throw ProtocolError("a packet's length cannot be");
    const auto type = static_cast<MessageType>(header[0]);
    if (type == MessageType::Attention) message.bytes.clear();  // given up while it was being sent
    if (type != message.type && !message.bytes.empty()) throw ProtocolError("a message changes its type");
    message.type = type;
    const std::size_t start = message.bytes.size();
    if (start + length > kLongestMessage) throw ProtocolError("a message is too long");
    message.bytes.resize(start + length - kHeader);
    if (!socket_->Receive(message.bytes.data() + start, length - kHeader)) throw ConnectionEnded();
    last = (static_cast<std::uint8_t>(header[1]) & kLast) != 0 || type == MessageType::Attention;
}

void PacketStream::SetPacketSize(std::size_t size) { packetSize_ = std::clamp(size, kSmallest, kLargest); }

void PacketStream::Put(std::string_view bytes) {
    while (!bytes.empty()) {
        if (out_.size() == packetStart_) out_.append(kHeader, '\0');
        const std::size_t room = packetSize_ - (out_.size() - packetStart_);
        if (room == 0) {
            ClosePacket(false);
            if (out_.size() >= kBlock) SendBlock();
            continue;
        }
        const std::size_t count = std::min(room, bytes.size());
        out_ += bytes.substr(0, count);
        bytes.remove_prefix(count);
    }
}

void PacketStream::Flush() {
    if (out_.size() > packetStart_) ClosePacket(false);
    SendBlock();
}

void PacketStream::End() {
    if (out_.size() == packetStart_) out_.append(kHeader, '\0');
    ClosePacket(true);
    SendBlock();
    packetNumber_ = 0;
    blockSent_ = false;
}

void PacketStream::ClosePacket(bool last) {
    const std::size_t length = out_.size() - packetStart_;
    char* const header = out_.data() + packetStart_;
    header[0] = static_cast<char>(MessageType::Answer);
    header[1] = static_cast<char>(last ? kLast : 0);
    header[2] = static_cast<char>(length >> 8);
    header[3] = static_cast<char>(length & 0xFF);
    header[6] = static_cast<char>(++packetNumber_);
    packetStart_ = out_.size();
}

void PacketStream::SendBlock() {
    const bool sent = socket_->Send(out_);
    out_.clear();
    packetStart_ = 0;
    blockSent_ = true;
    if (!sent) throw ConnectionEnded();
}

bool PacketStream::WasCancelled() {
    if (!blockSent_) return false;
    blockSent_ = false;
    char header[kHeader];
    const int there = socket_->Peek(header, kHeader);
    if (there < 0) throw ConnectionEnded();
    if (there < static_cast<int>(kHeader) || static_cast<MessageType>(header[0]) != MessageType::Attention)
        return false;
    Read();
    return true;
}

}  // namespace vlm::host::tds
