#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

#include "WireBytes.h"
#include "asltds/TdsServer.h"
#include "support/DatabaseFolder.h"

namespace vlm::host::tds::testing {

namespace {

/// Bytes to the server, without a driver that would check them.
class RawClient {
public:
    explicit RawClient(int port) : handle_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        EXPECT_EQ(::connect(handle_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;
    ~RawClient() { ::close(handle_); }

    void Send(const std::string& bytes) const { ::send(handle_, bytes.data(), bytes.size(), MSG_NOSIGNAL); }
    void EndSending() const { ::shutdown(handle_, SHUT_WR); }
    std::string ReceiveMessage() const {
        char header[8];
        if (::recv(handle_, header, sizeof header, MSG_WAITALL) != sizeof header) return {};
        std::string message((static_cast<unsigned char>(header[2]) << 8 | static_cast<unsigned char>(header[3])) - 8,
                            0);
        ::recv(handle_, message.data(), message.size(), MSG_WAITALL);
        return message;
    }
    /// Waits until the server ends the connection; whether it answered first.
    bool AnswersBeforeItEnds() const {
        char byte = 0;
        bool answered = false;
        while (::recv(handle_, &byte, 1, 0) > 0) answered = true;
        return answered;
    }

private:
    int handle_;
};

std::string Packet(int type, const std::string& payload, int status = 1) {
    const std::size_t length = payload.size() + 8;
    return std::string{static_cast<char>(type), static_cast<char>(status), static_cast<char>(length >> 8),
                       static_cast<char>(length & 0xFF)} +
           std::string(4, '\0') + payload;
}

std::string Number(std::uint64_t value, int width) {
    ByteString bytes;
    bytes.Add(value, width);
    return std::string(bytes.View());
}

std::string Wide(const std::string& text) {
    ByteString bytes;
    bytes.AddWide(text);
    return std::string(bytes.View());
}

/// A login of nobody to "master", all of whose texts begin at `offset` and are `length` long.
std::string Login(std::uint64_t offset = 94, std::uint64_t length = 0, std::uint64_t version = 0x74000004) {
    std::string rest = Number(version, 4) + Number(4096, 4) + std::string(24, '\0');
    for (int text = 0; text < 9; ++text) rest += Number(offset, 2) + Number(length, 2);
    rest.resize(90, '\0');
    return Number(rest.size() + 4, 4) + rest;
}

const std::string kHeaders = Number(4, 4);

TEST(MalformedPackets, EndTheConnectionAndNothingElse) {
    const data::testing::DatabaseFolder folder;
    const TdsServer server(folder.Path().string(), {});
    const auto ends = [&](bool loggedIn, const std::string& bytes, const std::string& name) {
        const RawClient client(server.Port());
        if (loggedIn) {
            client.Send(Packet(16, Login()));
            ASSERT_NE(client.ReceiveMessage(), "") << name;
        }
        client.Send(bytes);
        client.EndSending();
        EXPECT_FALSE(client.AnswersBeforeItEnds()) << name;
    };
    ends(false, "GET / HTTP/1.1\r\n\r\n", "no packet");
    ends(false, std::string("\x10\x01\x00\x07\0\0\0\0", 8), "a packet without room for its header");
    ends(false, Packet(1, kHeaders + Wide("SELECT 1")), "a batch without login");
    ends(false, Packet(16, Login(90, 9000)), "a login's text behind its end");
    ends(false, Packet(16, Login(94, 0, 0x70000000)), "a login of an old protocol");
    ends(true, Packet(99, "x"), "a type that is none");
    ends(true, Packet(1, kHeaders, 0) + Packet(3, kHeaders), "a message that changes its type");
    ends(true, Packet(1, Number(400, 4) + Wide("SELECT 1")), "headers longer than the batch");
    ends(true, Packet(1, Number(3, 4) + Wide("SELECT 1")), "headers shorter than their length");
    ends(true, Packet(1, kHeaders + Wide("SELECT 1") + "x"), "half a character");

    // What ends early, wherever it does.
    const std::string login = Login(), batch = Packet(1, kHeaders + Wide("SELECT 1 AS N"));
    for (std::size_t size = 0; size < login.size(); size += 9) ends(false, Packet(16, login.substr(0, size)), "login");
    for (std::size_t size = 1; size < batch.size(); size += 3) ends(true, batch.substr(0, size), "packet");
    const std::pair<const char*, std::string> parameters[] = {
        {"a name", "\x40"},
        {"an integer of three bytes", std::string("\0\0\x26\x03\x03xyz", 8)},
        {"a text", std::string("\0\0\xE7\x08\0AAAAA\x40\0xx", 14)},
        {"a text's piece", std::string("\0\0\xE7\xFF\xFF-----", 10) + Number(8, 8) + Number(0x7FFFFFFF, 4)},
        {"a date of nine bytes", std::string("\0\0\x6F\x09\x09", 5) + "123456789"},
        {"a time of 200 bytes", std::string("\0\0\x29\x07\xC8", 5) + std::string(200, 'x')},
        {"a moment after the last day", std::string("\0\0\x6F\x08\x08", 5) + std::string(8, '\x7F')},
        {"a number of 18 bytes", std::string("\0\0\x6A\x11\x26\x04\x12", 7) + std::string(18, 'x')},
    };
    const std::string call = kHeaders + Number(0xFFFF, 2) + Number(10, 2) + Number(0, 2);
    for (std::size_t size = 0; size < call.size(); ++size) {
        if (size != kHeaders.size()) ends(true, Packet(3, call.substr(0, size)), "a call of " + std::to_string(size));
    }
    for (const auto& [name, bytes] : parameters) ends(true, Packet(3, call + bytes), name);
    ends(true, Packet(14, kHeaders + "x"), "a transaction without a request");

    const RawClient client(server.Port());
    client.Send(Packet(16, Login()));
    client.ReceiveMessage();
    client.Send(batch);
    EXPECT_EQ(static_cast<unsigned char>(client.ReceiveMessage().front()), 0x81);
}

}  // namespace

}  // namespace vlm::host::tds::testing
