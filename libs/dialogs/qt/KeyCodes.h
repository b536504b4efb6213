#pragma once

#include <QKeyEvent>

#include "dialogs/Keys.h"

namespace vlm::ui {

/// A key as the host's frame numbers it; nothing (code 0) for a key that the frame does not know.
KeyEvent KeyOf(const QKeyEvent& event) noexcept;

}  // namespace vlm::ui
