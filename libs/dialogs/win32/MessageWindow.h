#pragma once

#include <windows.h>

#include "dialogs/Toolkit.h"

namespace vlm::ui {

/// Returns what the user answers, in a window over `owner` (null for none); closing a question is a no. A window of our
/// own: the system's would have its buttons in the language of the machine.
Answer AskInWindow(const Message& message, HWND owner);

}  // namespace vlm::ui
