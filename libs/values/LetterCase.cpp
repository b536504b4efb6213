#include <algorithm>

#include "values/Utf8.h"

namespace vlm::text {

namespace {

char AsciiUpper(char c) noexcept { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char AsciiLower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool In(char32_t c, char32_t first, char32_t last) noexcept { return c >= first && c <= last; }

/// Blocks where capitals have even codes and the small letter follows.
bool CapitalsAreEven(char32_t c) noexcept {
    return In(c, 0x100, 0x137) || In(c, 0x14A, 0x177) || In(c, 0x1E00, 0x1E95) || In(c, 0x1EA0, 0x1EFF);
}
bool CapitalsAreOdd(char32_t c) noexcept { return In(c, 0x139, 0x148) || In(c, 0x179, 0x17E); }

template <class Ascii, class Wide>
std::string Convert(std::string_view value, Ascii ascii, Wide wide) {
    std::string result;
    result.reserve(value.size());
    while (!value.empty()) {
        if (static_cast<unsigned char>(value.front()) < 0x80) {
            result += ascii(value.front());
            value.remove_prefix(1);
            continue;
        }
        const std::string_view before = value;
        const char32_t character = Decode(value);
        if (character == kReplacement) {
            result += before.substr(0, before.size() - value.size());
        } else {
            Encode(wide(character), result);
        }
    }
    return result;
}

char32_t Next(std::string_view& rest) noexcept {
    const auto lead = static_cast<unsigned char>(rest.front());
    if (lead < 0x80) {
        rest.remove_prefix(1);
        return static_cast<unsigned char>(AsciiLower(static_cast<char>(lead)));
    }
    return ToLower(Decode(rest));
}

}  // namespace

char32_t ToUpper(char32_t c) noexcept {
    if (c < 0x80) return static_cast<unsigned char>(AsciiUpper(static_cast<char>(c)));
    if (In(c, 0xE0, 0xFE)) return c == 0xF7 ? c : c - 0x20;
    if (c == 0xFF) return 0x178;
    if (c == 0x131 || c == 0x130 || c == 0x138 || c == 0x149 || c == 0x17F) return c;
    if (CapitalsAreEven(c)) return c & ~char32_t{1};
    if (CapitalsAreOdd(c)) return (c & 1U) != 0 ? c : c - 1;
    if (In(c, 0x3B1, 0x3C9) && c != 0x3C2) return c - 0x20;
    if (In(c, 0x430, 0x44F)) return c - 0x20;
    if (In(c, 0x450, 0x45F)) return c - 0x50;
    return c;
}

char32_t ToLower(char32_t c) noexcept {
    if (c < 0x80) return static_cast<unsigned char>(AsciiLower(static_cast<char>(c)));
    if (In(c, 0xC0, 0xDE)) return c == 0xD7 ? c : c + 0x20;
    if (c == 0x178) return 0xFF;
    if (c == 0x131 || c == 0x130 || c == 0x138 || c == 0x149 || c == 0x17F) return c;
    if (CapitalsAreEven(c)) return c | 1U;
    if (CapitalsAreOdd(c)) return (c & 1U) != 0 ? c + 1 : c;
    if (In(c, 0x391, 0x3A9) && c != 0x3A2) return c + 0x20;
    if (In(c, 0x410, 0x42F)) return c + 0x20;
    if (In(c, 0x400, 0x40F)) return c + 0x50;
    return c;
}

std::string ToUpper(std::string_view value) {
    return Convert(value, AsciiUpper, [](char32_t c) { return ToUpper(c); });
}

std::string ToLower(std::string_view value) {
    return Convert(value, AsciiLower, [](char32_t c) { return ToLower(c); });
}

std::string FoldCase(std::string_view value) { return ToLower(TrimRight(value)); }

int CompareNoCase(std::string_view left, std::string_view right) noexcept {
    left = TrimRight(left);
    right = TrimRight(right);
    while (!left.empty() && !right.empty()) {
        const char32_t a = Next(left);
        const char32_t b = Next(right);
        if (a != b) return a < b ? -1 : 1;
    }
    return left.empty() ? (right.empty() ? 0 : -1) : 1;
}

bool EqualNoCase(std::string_view left, std::string_view right) noexcept { return CompareNoCase(left, right) == 0; }

}  // namespace vlm::text
