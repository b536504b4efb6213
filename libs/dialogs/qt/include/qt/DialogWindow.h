#pragma once

#include <QDialog>
#include <QEventLoop>
#include <functional>

namespace vlm::ui {

/// The window of a dialog: what the desktop asks of it goes to the dialog, and no key closes it by itself.
class DialogWindow : public QDialog {
public:
    DialogWindow(QWidget* parent, bool resizes);

    /// Shows the window and returns when End was called.
    void ShowModal();
    void End();

    /// The title bar's close.
    std::function<void()> onClose;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void reject() override {}

private:
    QEventLoop loop_;
    bool ended_ = false;
};

}  // namespace vlm::ui
