#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vlm::host::tds {

/// Versions of the protocol as a client asks for them.
inline constexpr std::uint32_t kVersion71 = 0x71000001;
inline constexpr std::uint32_t kVersion72 = 0x72090002;
inline constexpr std::uint32_t kVersion74 = 0x74000004;

/// Who comes, and what for.
struct LoginRequest {
    std::uint32_t version = 0;  // the newest one that both sides speak
    std::size_t packetSize = 0;
    std::string user, password, database;

    /// Throws ProtocolError for a request that contradicts itself, and for a version before 7.1.
    static LoginRequest Parse(std::string_view message);
};

/// The answer to what is asked before the login: no encryption, one row set at a time.
std::string PreLoginAnswer();

}  // namespace vlm::host::tds
