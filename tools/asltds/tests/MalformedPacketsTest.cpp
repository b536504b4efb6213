#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "PacketStream.h"
#include "WireBytes.h"
#include "asltds/TdsServer.h"
#include "support/DatabaseFolder.h"

namespace vlm::host::tds::testing {
namespace {

/// A connection without a driver that would check what is sent.
int ConnectTo(const TdsServer& server) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(server.Port()));
    const int handle = ::socket(AF_INET, SOCK_STREAM, 0);
    EXPECT_EQ(::connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    return handle;
}

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

TEST(MalformedPackets, EndTheConnectionAndNothingElse) {
    const std::string headers = Number(4, 4), login = Login(), batch = Packet(1, headers + Wide("SELECT 1 AS N"));
    const std::string call = headers + Number(0xFFFF, 2) + Number(10, 2) + Number(0, 2);
    struct Case {
        std::string name, bytes;
        bool loggedIn = true;
    };
    std::vector<Case> cases = {
        {"no packet", "GET / HTTP/1.1\r\n\r\n", false},
        {"a packet without room for its header", std::string("\x10\x01\x00\x07\0\0\0\0", 8), false},
        {"a batch without login", batch, false},
        {"a login's text behind its end", Packet(16, Login(90, 9000)), false},
        {"a login of an old protocol", Packet(16, Login(94, 0, 0x70000000)), false},
        {"a type that is none", Packet(99, "x")},
        {"a message that changes its type", Packet(1, headers, 0) + Packet(3, headers)},
        {"headers longer than the batch", Packet(1, Number(400, 4) + Wide("SELECT 1"))},
        {"headers shorter than their length", Packet(1, Number(3, 4) + Wide("SELECT 1"))},
        {"half a character", Packet(1, headers + Wide("SELECT 1") + "x")},
        {"a transaction without a request", Packet(14, headers + "x")},
        {"a name", Packet(3, call + "\x40")},
        {"an integer of three bytes", Packet(3, call + std::string("\0\0\x26\x03\x03xyz", 8))},
        {"a text", Packet(3, call + std::string("\0\0\xE7\x08\0AAAAA\x40\0xx", 14))},
        {"a text's piece",
         Packet(3, call + std::string("\0\0\xE7\xFF\xFF-----", 10) + Number(8, 8) + Number(0x7FFFFFFF, 4))},
        {"a date of nine bytes", Packet(3, call + std::string("\0\0\x6F\x09\x09", 5) + "123456789")},
        {"a time of 200 bytes", Packet(3, call + std::string("\0\0\x29\x07\xC8", 5) + std::string(200, 'x'))},
        {"a moment after the last day", Packet(3, call + std::string("\0\0\x6F\x08\x08", 5) + std::string(8, '\x7F'))},
        {"a number of 18 bytes", Packet(3, call + std::string("\0\0\x6A\x11\x26\x04\x12", 7) + std::string(18, 'x'))},
    };
    // What ends early, wherever it does.
    for (std::size_t size = 0; size < login.size(); size += 9)
        cases.push_back({"login", Packet(16, login.substr(0, size)), false});
    for (std::size_t size = 1; size < batch.size(); size += 3) cases.push_back({"packet", batch.substr(0, size)});
    for (std::size_t size = 0; size < call.size(); ++size)
        if (size != headers.size())
            cases.push_back({"a call of " + std::to_string(size), Packet(3, call.substr(0, size))});

    const data::testing::DatabaseFolder folder;
    const TdsServer server(folder.Path().string(), {});
    const std::string welcome = Packet(16, login);
    for (const Case& each : cases) {
        const int handle = ConnectTo(server);
        Socket client(handle);
        if (each.loggedIn) {
            client.Send(welcome);
            PacketStream(client).Read();
        }
        client.Send(each.bytes);
        ::shutdown(handle, SHUT_WR);
        char answer = 0;
        EXPECT_FALSE(client.Receive(&answer, 1)) << each.name;
    }
    Socket client(ConnectTo(server));
    client.Send(welcome);
    PacketStream(client).Read();
    client.Send(batch);
    EXPECT_EQ(static_cast<unsigned char>(PacketStream(client).Read().bytes.front()), 0x81);
}

}  // namespace
}  // namespace vlm::host::tds::testing
