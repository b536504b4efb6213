#include "SourceText.h"

#include "values/Utf8.h"

namespace vlm {

std::string JoinWords(std::string_view value) {
    std::string joined;
    int words = 0;
    for (value = text::Trim(value); !value.empty(); value = text::TrimLeft(value)) {
        const std::string_view word = value.substr(0, value.find(' '));
        if (words++ > 0) joined += ' ';
        joined += word;
        value.remove_prefix(word.size());
    }
    return words > 1 ? joined : std::string();
}

std::string WithApostrophes(std::string_view value) {
    std::string result;
    while (!value.empty()) {
        const char32_t character = text::Decode(value);
        text::Encode(character == 0xB4 || character == U'`' ? U'\'' : character, result);
    }
    return result;
}

std::string ExemptionCode(std::string_view value) {
    const bool isShort = value.size() == 2 && value[0] == 'E' && value[1] >= '1' && value[1] <= '5';
    return isShort ? std::string("E0") + value[1] : std::string(value);
}

}  // namespace vlm
