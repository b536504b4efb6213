#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// Text of the library is UTF-8; a "character" is a code point. Every operation has a fast path for ASCII, because
/// these run for every field of every line. Malformed bytes count as one character each and decode to U+FFFD.
namespace vlm::text {

constexpr char32_t kReplacement = 0xFFFD;

/// Bytes up to the first character that is not ASCII.
std::size_t AsciiPrefix(std::string_view value) noexcept;
/// In line: it is asked for every field of every line.
inline bool IsAscii(std::string_view value) noexcept {
    const char* at = value.data();
    std::size_t left = value.size();
    std::uint64_t bits = 0;
    for (; left >= 8; left -= 8, at += 8) {
        std::uint64_t block = 0;
        std::memcpy(&block, at, 8);
        bits |= block;
    }
    for (; left > 0; --left, ++at) bits |= static_cast<unsigned char>(*at);
    return (bits & 0x8080808080808080ULL) == 0;
}

/// Number of characters.
std::size_t Length(std::string_view value) noexcept;

/// The first / last `count` characters; the whole text when it has fewer.
std::string_view Left(std::string_view value, std::size_t count) noexcept;
std::string_view Right(std::string_view value, std::size_t count) noexcept;

/// `count` characters from `position` (1-based); what there is of them when the text ends before.
std::string_view Mid(std::string_view value, std::size_t position, std::size_t count = std::string_view::npos) noexcept;

/// Blanks only: tabs and no-break spaces stay.
std::string_view Trim(std::string_view value) noexcept;
std::string_view TrimLeft(std::string_view value) noexcept;
std::string_view TrimRight(std::string_view value) noexcept;

/// Letters of the Latin, Greek and Cyrillic blocks; "à" gives "À", "ß" stays.
char32_t ToUpper(char32_t character) noexcept;
char32_t ToLower(char32_t character) noexcept;
std::string ToUpper(std::string_view value);
std::string ToLower(std::string_view value);

/// Order and equality without regard to case, as the host's server compares text (blanks at the end do not count).
int CompareNoCase(std::string_view left, std::string_view right) noexcept;
bool EqualNoCase(std::string_view left, std::string_view right) noexcept;

/// The key under which texts that EqualNoCase are the same.
std::string FoldCase(std::string_view value);

/// Takes the next character off `rest`, which must not be empty.
char32_t Decode(std::string_view& rest) noexcept;
void Encode(char32_t character, std::string& out);

/// Every occurrence of `what` taken out.
std::string Without(std::string_view value, char what);

}  // namespace vlm::text
