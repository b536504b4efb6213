#pragma once

#include <optional>
#include <string>
#include <windows.h>

#include "dialogs/Toolkit.h"

namespace vlm::ui {

/// The shell's choosers over `owner` (null for none). They return a full path, or nothing when the user cancelled. A
/// file need not be there yet: the same chooser also names files to be written.
std::optional<std::string> ChooseFileInWindow(const FileChoice& choice, HWND owner);
std::optional<std::string> ChooseFolderInWindow(const std::string& startFolder, HWND owner);

}  // namespace vlm::ui
