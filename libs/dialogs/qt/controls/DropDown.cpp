#include "controls/DropDown.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace vlm::ui {

namespace {

constexpr int kEntriesAtOnce = 20;
constexpr int kLeastCharacters = 8;

}  // namespace

DropDown::DropDown(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(kEntriesAtOnce);
    setMinimumContentsLength(kLeastCharacters);
    setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);  // later its row says how wide it is
    connect(this, &QComboBox::activated, [this](int position) { onChosen(position); });
}

void DropDown::keyPressEvent(QKeyEvent* event) {
    const bool clears = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    if (!clears) return QComboBox::keyPressEvent(event);
    setCurrentIndex(-1);
    onChosen(-1);
}

void DropDown::wheelEvent(QWheelEvent* event) { hasFocus() ? QComboBox::wheelEvent(event) : event->ignore(); }

}  // namespace vlm::ui
