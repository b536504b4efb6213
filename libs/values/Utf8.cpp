#include "values/Utf8.h"

#include <cstdint>
#include <cstring>

namespace vlm::text {

namespace {

constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;

bool IsContinuation(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// Bytes of the character that `rest` starts with; 1 for a malformed byte.
std::size_t CharacterSize(std::string_view rest) noexcept {
    const auto lead = static_cast<unsigned char>(rest.front());
    const std::size_t size = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
    if (size == 0 || size > rest.size()) return 1;
    for (std::size_t i = 1; i < size; ++i) {
        if (!IsContinuation(rest[i])) return 1;
    }
    return size;
}

/// Bytes that the first `count` characters take.
std::size_t BytesOf(std::string_view value, std::size_t count) noexcept {
    std::size_t bytes = 0;
    while (count > 0 && bytes < value.size()) {
        bytes += CharacterSize(value.substr(bytes));
        --count;
    }
    return bytes;
}

}  // namespace

std::size_t AsciiPrefix(std::string_view value) noexcept {
    std::size_t at = 0;
    for (; at + 8 <= value.size(); at += 8) {
        std::uint64_t block = 0;
        std::memcpy(&block, value.data() + at, 8);
        if ((block & kHighBits) != 0) break;
    }
    while (at < value.size() && (static_cast<unsigned char>(value[at]) & 0x80U) == 0) ++at;
    return at;
}

std::size_t Length(std::string_view value) noexcept {
    const std::size_t ascii = AsciiPrefix(value);
    std::size_t count = ascii;
    for (std::size_t at = ascii; at < value.size(); at += CharacterSize(value.substr(at))) ++count;
    return count;
}

std::string_view Left(std::string_view value, std::size_t count) noexcept {
    if (value.size() <= count) return value;
    if (IsAscii(value.substr(0, count + 1))) return value.substr(0, count);
    return value.substr(0, BytesOf(value, count));
}

std::string_view Right(std::string_view value, std::size_t count) noexcept {
    if (value.size() <= count) return value;
    const std::size_t length = Length(value);
    return length <= count ? value : value.substr(BytesOf(value, length - count));
}

std::string_view Mid(std::string_view value, std::size_t position, std::size_t count) noexcept {
    const std::size_t start = position > 1 ? BytesOf(value, position - 1) : 0;
    return Left(value.substr(start), count);
}

std::string_view TrimLeft(std::string_view value) noexcept {
    while (!value.empty() && value.front() == ' ') value.remove_prefix(1);
    return value;
}

std::string_view TrimRight(std::string_view value) noexcept {
    while (!value.empty() && value.back() == ' ') value.remove_suffix(1);
    return value;
}

std::string_view Trim(std::string_view value) noexcept { return TrimLeft(TrimRight(value)); }

char32_t Decode(std::string_view& rest) noexcept {
    const std::size_t size = CharacterSize(rest);
    const auto lead = static_cast<unsigned char>(rest.front());
    char32_t character = lead;
    if (size == 1) {
        if (lead >= 0x80) character = kReplacement;
    } else {
        character = lead & (0x7FU >> size);
        for (std::size_t i = 1; i < size; ++i) {
            character = (character << 6U) | (static_cast<unsigned char>(rest[i]) & 0x3FU);
        }
        const bool overlong = (size == 3 && character < 0x800) || (size == 4 && character < 0x10000);
        if (overlong || character > 0x10FFFF || (character >= 0xD800 && character < 0xE000)) character = kReplacement;
    }
    rest.remove_prefix(size);
    return character;
}

void Encode(char32_t character, std::string& out) {
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xC0U | (character >> 6U));
        out += static_cast<char>(0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
        out += static_cast<char>(0xE0U | (character >> 12U));
        out += static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
        out += static_cast<char>(0x80U | (character & 0x3FU));
    } else {
        out += static_cast<char>(0xF0U | (character >> 18U));
        out += static_cast<char>(0x80U | ((character >> 12U) & 0x3FU));
        out += static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
        out += static_cast<char>(0x80U | (character & 0x3FU));
    }
}

std::string Without(std::string_view value, char what) {
    std::string result;
    result.reserve(value.size());
    for (const char c : value) {
        if (c != what) result += c;
    }
    return result;
}

}  // namespace vlm::text
