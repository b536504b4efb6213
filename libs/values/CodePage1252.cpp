#include "values/CodePage1252.h"

#include <algorithm>
#include <array>

#include "values/Utf8.h"

namespace vlm::text {

namespace {

/// Characters of the codes 80 to 9F; outside this range the code is the character.
constexpr std::array<char16_t, 32> kHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char AnsiOf(char32_t character) noexcept {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
    const auto* const at = std::find(kHigh.begin(), kHigh.end(), character);
    return at == kHigh.end() ? '?' : static_cast<char>(0x80 + (at - kHigh.begin()));
}

}  // namespace

void AppendAnsi(std::string_view utf8, std::string& out) {
    while (!utf8.empty()) {
        const std::size_t run = AsciiPrefix(utf8);
        out += utf8.substr(0, run);
        utf8.remove_prefix(run);
        if (!utf8.empty()) out += AnsiOf(Decode(utf8));
    }
}

std::string ToAnsi(std::string_view utf8) {
    std::string result;
    AppendAnsi(utf8, result);
    return result;
}

void AppendFromAnsi(std::string_view ansi, std::string& out) {
    while (!ansi.empty()) {
        const std::size_t run = AsciiPrefix(ansi);
        out += ansi.substr(0, run);
        ansi.remove_prefix(run);
        if (ansi.empty()) return;
        const auto code = static_cast<unsigned char>(ansi.front());
        Encode(code < 0xA0 ? kHigh.at(code - 0x80U) : char32_t{code}, out);
        ansi.remove_prefix(1);
    }
}

std::string FromAnsi(std::string_view ansi) {
    std::string result;
    AppendFromAnsi(ansi, result);
    return result;
}

}  // namespace vlm::text
