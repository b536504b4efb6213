#include "qt/DialogWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace vlm::ui {

DialogWindow::DialogWindow(QWidget* parent, bool resizes) : QDialog(parent) {
    setWindowModality(Qt::ApplicationModal);
    if (resizes) setWindowFlag(Qt::WindowMaximizeButtonHint);
}

void DialogWindow::ShowModal() {
    if (ended_) return;
    show();
    activateWindow();
    loop_.exec();
    hide();
}

void DialogWindow::End() {
    ended_ = true;
    loop_.quit();
}

void DialogWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!ended_) onClose();
}

void DialogWindow::keyPressEvent(QKeyEvent* event) { event->ignore(); }

}  // namespace vlm::ui
