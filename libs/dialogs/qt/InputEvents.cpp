#include "InputEvents.h"

#include <QWidget>
#include <array>

namespace vlm::ui {

namespace {

struct Pair {
    int qt;
    int code;
};

constexpr std::array kKeys = {
    Pair{Qt::Key_Escape, kKeyEscape},
    Pair{Qt::Key_Return, kKeyReturn},
    Pair{Qt::Key_Enter, kKeyReturn},
    Pair{Qt::Key_Tab, kKeyTab},
    Pair{Qt::Key_Backtab, kKeyTab},
    Pair{Qt::Key_Backspace, 8},
    Pair{Qt::Key_Space, 32},
    Pair{Qt::Key_PageUp, 33},
    Pair{Qt::Key_PageDown, 34},
    Pair{Qt::Key_End, 35},
    Pair{Qt::Key_Home, 36},
    Pair{Qt::Key_Left, 37},
    Pair{Qt::Key_Up, 38},
    Pair{Qt::Key_Right, 39},
    Pair{Qt::Key_Down, 40},
    Pair{Qt::Key_Insert, 45},
    Pair{Qt::Key_Delete, 46},
};

int CodeOf(int key) noexcept {
    const bool own = (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
    if (own) return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return key - Qt::Key_F1 + kKeyF1;
    for (const Pair& each : kKeys) {
        if (each.qt == key) return each.code;
    }
    return kKeyNone;
}

}  // namespace

KeyEvent KeyOf(const QKeyEvent& event) noexcept {
    KeyEvent key;
    key.code = CodeOf(event.key());
    if (key.code == kKeyNone) return key;
    if (event.modifiers() & Qt::ShiftModifier) key.shift |= kShift;
    if (event.modifiers() & Qt::ControlModifier) key.shift |= kCtrl;
    if (event.modifiers() & Qt::AltModifier) key.shift |= kAlt;
    return key;
}

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
