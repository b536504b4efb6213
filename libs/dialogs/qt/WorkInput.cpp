#include "WorkInput.h"

#include <QKeyEvent>
#include <QWidget>

namespace vlm::ui {

/// An event comes to the window first and then to the widget: only the second is looked at.
bool IsLostDuringWork(const QObject* receiver, const QEvent& event, const QWidget* cancels) {
    if (!receiver->isWidgetType() || receiver == cancels) return false;
    switch (event.type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            return static_cast<const QKeyEvent&>(event).key() != Qt::Key_Escape;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::InputMethod:
        case QEvent::DragEnter:
        case QEvent::Drop:
            return true;
        default:
            return false;
    }
}

}  // namespace vlm::ui
