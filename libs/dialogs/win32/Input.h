#pragma once

#include <windows.h>

#include "dialogs/Keys.h"

/// What comes from the keyboard and the mouse.
namespace vlm::ui {

/// A key that is going down or up now, with its shifts, as the host's frame numbers it; nothing (code 0) for a key that
/// the frame does not know.
KeyEvent KeyOf(WPARAM code) noexcept;

/// Whether a message is input that is lost while a long step looks at what happened in its window: all that does not
/// close the window with its title bar, Escape or the button that cancels (`onCancel`).
bool IsLostDuringWork(const MSG& message, bool onCancel) noexcept;

}  // namespace vlm::ui
