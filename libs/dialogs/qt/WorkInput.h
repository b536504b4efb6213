#pragma once

class QEvent;
class QObject;
class QWidget;

namespace vlm::ui {

/// Whether an event is input that is lost while a long step looks at what happened in its window: all that does not
/// close the window with its title bar, Escape or the button that cancels (`cancels`, null for none).
bool IsLostDuringWork(const QObject* receiver, const QEvent& event, const QWidget* cancels);

}  // namespace vlm::ui
