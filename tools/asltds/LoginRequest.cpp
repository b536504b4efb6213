#include "LoginRequest.h"

#include <algorithm>

#include "asltds/WireBytes.h"

namespace vlm::host::tds {

namespace {

constexpr std::size_t kDirectory = 36;  // where the places of the texts stand
enum DirectoryEntry { kHost, kUser, kPassword, kProgram, kServer, kExtension, kLibrary, kLanguage, kDatabase };

std::string_view Part(std::string_view message, int entry) {
    ByteReader directory(message);
    directory.Take(kDirectory + 4 * static_cast<std::size_t>(entry));
    const std::uint64_t offset = directory.Number(2);
    const std::uint64_t length = directory.Number(2);
    ByteReader part(message);
    part.Take(offset);
    return part.Take(2 * length);
}

/// Each byte was turned by half and crossed with A5.
std::string Revealed(std::string_view hidden) {
    std::string bytes(hidden);
    for (char& each : bytes) {
        const unsigned crossed = static_cast<unsigned char>(each) ^ 0xA5u;
        each = static_cast<char>((crossed >> 4 | crossed << 4) & 0xFF);
    }
    return bytes;
}

}  // namespace

LoginRequest LoginRequest::Parse(std::string_view message) {
    ByteReader fixed(message);
    if (fixed.Number(4) != message.size()) throw ProtocolError("a login's length is not its own");
    LoginRequest request;
    request.version = std::min(static_cast<std::uint32_t>(fixed.Number(4)), kVersion74);
    if (request.version < 0x71000000) throw ProtocolError("a login asks for an old protocol");
    request.packetSize = fixed.Number(4);
    request.user = FromWide(Part(message, kUser));
    request.password = FromWide(Revealed(Part(message, kPassword)));
    request.database = FromWide(Part(message, kDatabase));
    return request;
}

std::string PreLoginAnswer() {
    struct Option {
        int name;
        std::string_view value;
    };
    using namespace std::string_view_literals;
    constexpr Option kOptions[] = {
        {0, "\x0F\x00\x07\xD0\x00\x00"sv},  // version
        {1, "\x02"sv},                      // encryption is not supported
        {2, "\x00"sv},                      // the instance asked for
        {4, "\x00"sv},                      // row sets side by side: no
    };
    std::size_t offset = 5 * std::size(kOptions) + 1;
    std::string places, values;
    for (const Option& option : kOptions) {
        const std::size_t numbers[] = {offset, option.value.size()};
        places += static_cast<char>(option.name);
        for (const std::size_t number : numbers) {
            places += static_cast<char>(number >> 8);
            places += static_cast<char>(number & 0xFF);
        }
        values += option.value;
        offset += option.value.size();
    }
    return places + '\xFF' + values;
}

}  // namespace vlm::host::tds
