#include "ModCrypt.h"

#include "values/CodePage1252.h"
#include "values/Error.h"

namespace vlm {

namespace {

constexpr char kMarker = 1;
constexpr int kFlip = 128;

char CodeOf(int code) {
    if (code < 0 || code > 255) throw Error("Il testo è troppo lungo per essere codificato.");
    return static_cast<char>(code);
}

}  // namespace

std::string CryptText(std::string_view value) {
    if (value.empty()) return {};
    const std::string codes = text::ToAnsi(value);
    const bool scrambled = codes.front() == kMarker;
    std::string result(scrambled ? "" : std::string(1, kMarker));
    int position = 0;
    for (std::size_t at = scrambled ? 1 : 0; at < codes.size(); ++at) {
        const int code = static_cast<unsigned char>(codes[at]);
        ++position;
        result += CodeOf(scrambled ? (code + position) ^ kFlip : (code ^ kFlip) - position);
    }
    return text::FromAnsi(result);
}

}  // namespace vlm
