#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "workbooks/WorkbookFault.h"

/// Numbers as the file writes them, lowest byte first, wherever they stand.
namespace vlm::files {

/// Throws WorkbookFault where the bytes end before the number does.
template <class Number>
Number ReadNumber(std::string_view bytes, std::size_t at) {
    if (bytes.size() < sizeof(Number) || at > bytes.size() - sizeof(Number)) {
        throw WorkbookFault("il file è incompleto o danneggiato");
    }
    std::uint64_t value = 0;
    for (std::size_t i = sizeof(Number); i > 0; --i) {
        value = (value << 8) | static_cast<unsigned char>(bytes[at + i - 1]);
    }
    return static_cast<Number>(value);
}

inline std::uint8_t Read8(std::string_view bytes, std::size_t at) { return ReadNumber<std::uint8_t>(bytes, at); }
inline std::uint16_t Read16(std::string_view bytes, std::size_t at) { return ReadNumber<std::uint16_t>(bytes, at); }
inline std::uint32_t Read32(std::string_view bytes, std::size_t at) { return ReadNumber<std::uint32_t>(bytes, at); }
inline double ReadDouble(std::string_view bytes, std::size_t at) {
    return std::bit_cast<double>(ReadNumber<std::uint64_t>(bytes, at));
}

}  // namespace vlm::files
