#pragma once

#include <QKeyEvent>

#include "dialogs/Keys.h"

class QWidget;

/// What comes from the keyboard and the mouse.
namespace vlm::ui {

/// A key as the host's frame numbers it; nothing (code 0) for a key that the frame does not know.
KeyEvent KeyOf(const QKeyEvent& event) noexcept;

/// Whether an event is input that is lost while a long step looks at what happened in its window: all that does not
/// close the window with its title bar, Escape or the button that cancels (`cancels`, null for none).
bool IsLostDuringWork(const QObject* receiver, const QEvent& event, const QWidget* cancels);

}  // namespace vlm::ui
