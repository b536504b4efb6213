#include "Input.h"

namespace vlm::ui {

namespace {

bool IsDown(int key) { return GetKeyState(key) < 0; }

bool IsKnown(WPARAM code) {
    const bool character = (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9');
    const bool function = code >= VK_F1 && code <= VK_F12;
    const bool moves = code >= VK_SPACE && code <= VK_DOWN;
    return character || function || moves || code == VK_ESCAPE || code == VK_RETURN || code == VK_TAB ||
           code == VK_BACK || code == VK_INSERT || code == VK_DELETE;
}

}  // namespace

/// The frame numbers keys as the system does.
KeyEvent KeyOf(WPARAM code) noexcept {
    KeyEvent key;
    if (!IsKnown(code)) return key;
    key.code = static_cast<int>(code);
    if (IsDown(VK_SHIFT)) key.shift |= kShift;
    if (IsDown(VK_CONTROL)) key.shift |= kCtrl;
    if (IsDown(VK_MENU)) key.shift |= kAlt;
    return key;
}

bool IsLostDuringWork(const MSG& message, bool onCancel) noexcept {
    if (message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST) return message.wParam != VK_ESCAPE;
    if (message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST) return !onCancel;
    return message.message == WM_CONTEXTMENU || message.message == WM_DROPFILES;
}

}  // namespace vlm::ui
