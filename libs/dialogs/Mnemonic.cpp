#include "dialogs/Mnemonic.h"

namespace vlm::ui {

std::string WithoutMnemonic(std::string_view caption) {
    std::string plain;
    plain.reserve(caption.size());
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && i + 1 < caption.size()) ++i;
        plain += caption[i];
    }
    return plain;
}

int MnemonicKey(std::string_view caption) noexcept {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        const char letter = caption[++i];
        if (letter >= 'a' && letter <= 'z') return letter - 'a' + 'A';
        if ((letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9')) return letter;
    }
    return 0;
}

}  // namespace vlm::ui
