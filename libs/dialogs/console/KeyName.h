#pragma once

#include <optional>
#include <string_view>

#include "dialogs/Keys.h"

namespace vlm::ui {

/// "Ctrl+R", "Alt+F4", "Escape" (or "Esc"), "Return" (or "Enter"), "Tab", "F1" to "F12", a letter, a digit; without
/// regard to case. Nothing for any other text.
std::optional<KeyEvent> ParseKeyName(std::string_view name);

}  // namespace vlm::ui
