#include "dialogs/Keys.h"

#include <array>
#include <charconv>

#include "values/Utf8.h"

namespace vlm::ui {

namespace {

struct NamedCode {
    std::string_view name;
    int code;
};

constexpr std::array<NamedCode, 3> kShifts{{{"Ctrl", kCtrl}, {"Alt", kAlt}, {"Shift", kShift}}};
constexpr std::array<NamedCode, 5> kKeys{
    {{"Escape", kKeyEscape}, {"Esc", kKeyEscape}, {"Return", kKeyReturn}, {"Enter", kKeyReturn}, {"Tab", kKeyTab}}};

template <std::size_t N>
int CodeOf(const std::array<NamedCode, N>& table, std::string_view name) {
    for (const NamedCode& each : table) {
        if (text::EqualNoCase(each.name, name)) return each.code;
    }
    return 0;
}

int FunctionKey(std::string_view name) {
    if (name.size() < 2 || (name[0] != 'F' && name[0] != 'f') || name[1] == '0') return kKeyNone;
    int number = 0;
    const auto [end, error] = std::from_chars(name.data() + 1, name.data() + name.size(), number);
    const bool whole = error == std::errc() && end == name.data() + name.size();
    if (!whole || number < 1 || number > kKeyF12 - kKeyF1 + 1) return kKeyNone;
    return kKeyF1 + number - 1;
}

/// Letters and digits have the codes of their capitals.
int CharacterKey(char character) noexcept {
    if (character >= 'a' && character <= 'z') return character - 'a' + 'A';
    const bool own = (character >= 'A' && character <= 'Z') || (character >= '0' && character <= '9');
    return own ? character : 0;
}

}  // namespace

std::optional<KeyEvent> ParseKeyName(std::string_view name) {
    KeyEvent key;
    for (std::size_t plus = name.find('+'); plus != std::string_view::npos; plus = name.find('+')) {
        const int shift = CodeOf(kShifts, name.substr(0, plus));
        if (shift == 0) return std::nullopt;
        key.shift |= shift;
        name.remove_prefix(plus + 1);
    }
    key.code = CodeOf(kKeys, name);
    if (key.code == kKeyNone) key.code = FunctionKey(name);
    if (key.code == kKeyNone && name.size() == 1) key.code = CharacterKey(name[0]);
    if (key.code == kKeyNone) return std::nullopt;
    return key;
}

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
        if (const int key = CharacterKey(caption[++i])) return key;
    }
    return 0;
}

}  // namespace vlm::ui
