#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vlm::ui {

/// Key codes and shift bits as the host's frame numbers them.
enum Key : int {
    kKeyNone = 0,
    kKeyTab = 9,
    kKeyReturn = 13,
    kKeyEscape = 27,
    kKeyR = 82,  // letters and digits have the codes of their capitals
    kKeyF1 = 112,
    kKeyF3 = 114,
    kKeyF4 = 115,
    kKeyF12 = 123
};
enum Shift : int { kShiftNone = 0, kShift = 1, kCtrl = 2, kAlt = 4 };

/// A key on its way through a dialog; a code of 0 means that it was swallowed.
struct KeyEvent {
    int code = kKeyNone;
    int shift = kShiftNone;
    bool Swallowed() const noexcept { return code == kKeyNone; }
    void Swallow() noexcept { code = kKeyNone, shift = kShiftNone; }
};

/// "Ctrl+R", "Alt+F4", "Escape" (or "Esc"), "Return" (or "Enter"), "Tab", "F1" to "F12", a letter, a digit; without
/// regard to case. Nothing for any other text.
std::optional<KeyEvent> ParseKeyName(std::string_view name);

// Captions carry "&" before the letter that, with Alt, reaches their control; "&&" is the character itself.

/// The caption as it is read, without the marks.
std::string WithoutMnemonic(std::string_view caption);

/// The mnemonic in capitals when it is a Latin letter or a digit (the code of its key), 0 when there is none.
int MnemonicKey(std::string_view caption) noexcept;

}  // namespace vlm::ui
