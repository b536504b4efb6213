#pragma once

#include <string>
#include <string_view>

#include "values/Utf8.h"

/// UTF-16 in whichever type a system has for its units. Half a surrogate pair and malformed bytes become U+FFFD.
namespace vlm::text {

namespace detail {
inline constexpr char32_t kPairStart = 0x10000;
constexpr bool IsHigh(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsLow(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }
}  // namespace detail

template <typename Unit>
std::basic_string<Unit> ToUtf16(std::string_view utf8) {
    static_assert(sizeof(Unit) == 2);
    std::basic_string<Unit> wide;
    wide.reserve(utf8.size());
    const std::size_t plain = AsciiPrefix(utf8);
    for (const char each : utf8.substr(0, plain)) wide += static_cast<Unit>(each);
    for (std::string_view rest = utf8.substr(plain); !rest.empty();) {
        const char32_t character = Decode(rest);
        if (character < detail::kPairStart) {
            wide += static_cast<Unit>(character);
            continue;
        }
        wide += static_cast<Unit>(0xD800 + ((character - detail::kPairStart) >> 10));
        wide += static_cast<Unit>(0xDC00 + ((character - detail::kPairStart) & 0x3FF));
    }
    return wide;
}

template <typename Unit>
void AppendFromUtf16(std::basic_string_view<Unit> wide, std::string& utf8) {
    static_assert(sizeof(Unit) == 2);
    char16_t bits = 0;
    for (const Unit unit : wide) bits |= static_cast<char16_t>(unit);
    if (bits < 0x80) {  // ASCII, as nearly all texts of a database are
        const std::size_t before = utf8.size();
        utf8.resize(before + wide.size());
        for (std::size_t i = 0; i < wide.size(); ++i) utf8[before + i] = static_cast<char>(wide[i]);
        return;
    }
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const char32_t unit = static_cast<char16_t>(wide[i]);
        if (unit < 0x80) {
            utf8 += static_cast<char>(unit);
        } else if (detail::IsHigh(unit) && i + 1 < wide.size() && detail::IsLow(static_cast<char16_t>(wide[i + 1]))) {
            const char32_t low = static_cast<char16_t>(wide[++i]);
            Encode(detail::kPairStart + ((unit - 0xD800) << 10) + (low - 0xDC00), utf8);
        } else {
            Encode(detail::IsHigh(unit) || detail::IsLow(unit) ? kReplacement : unit, utf8);
        }
    }
}

template <typename Unit>
std::string FromUtf16(std::basic_string_view<Unit> wide) {
    std::string utf8;
    utf8.reserve(wide.size());
    AppendFromUtf16(wide, utf8);
    return utf8;
}

}  // namespace vlm::text
