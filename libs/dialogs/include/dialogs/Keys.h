#pragma once

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

}  // namespace vlm::ui
