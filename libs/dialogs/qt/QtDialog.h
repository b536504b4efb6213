#pragma once

#include <QDialog>
#include <QEventLoop>
#include <exception>
#include <functional>
#include <memory>

#include "DialogForm.h"
#include "dialogs/Dialog.h"
#include "system/SettingsStore.h"

class QKeyEvent;

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

/// The one showing of a dialog in a window. However that ends, a dialog that has opened is told once that it closed.
class QtDialog : private QObject, private DialogView, private WidgetHost {
public:
    /// `parent` is the window below, null for none. The size that the user gives the window is kept in `settings` for
    /// the next showing, under "Window.NAME" as "WIDTHxHEIGHT" in pixels; settings that fail forget it.
    QtDialog(Dialog& dialog, sys::SettingsStore& settings, QWidget* parent);
    ~QtDialog() override;

    /// Opens, shows and closes the dialog. What a handler throws ends the showing and goes through.
    void Show();

    QWidget* Window() noexcept { return &window_; }
    /// Null before the dialog has opened, and for a control that stands nowhere in it.
    ControlWidget* Find(const Control& control) const { return form_ ? form_->Find(control) : nullptr; }

private:
    // DialogView
    void ControlChanged(Control& control) override;
    void FocusMoved(Control& control) override;
    void Repaint() override;
    void Close() override { window_.End(); }
    std::intptr_t WindowHandle() const override { return static_cast<std::intptr_t>(window_.winId()); }
    // WidgetHost
    void Act(const std::function<void()>& action) override;
    void Click(Button& button) override;

    bool eventFilter(QObject* receiver, QEvent* event) override;
    bool IsLost(const QObject* receiver, const QEvent& event) const;
    bool IsForFocus(const QObject* receiver) const;
    /// True when nobody further should see the key.
    bool KeyPressed(const QKeyEvent& event);
    void KeyReleased(const QKeyEvent& event);
    bool SearchTakes(const QKeyEvent& event);
    Control* Focus() const;
    /// An entry that is no value of its field holds the dialog's own buttons up, but never the one that cancels. Moves
    /// the focus there and tells why.
    bool IsHeldUp(const Button& button);

    void Build();
    void PlaceFocus();
    QSize KeptSize() const;
    void KeepSize();

    Dialog& dialog_;
    sys::SettingsStore& settings_;
    std::unique_ptr<DialogForm> form_;  // outlives the window's widgets, which call it
    DialogWindow window_;
    Control* focusWanted_ = nullptr;
    QSize naturalSize_;
    int looks_ = 0;  // of long steps at what happened in the window, one inside the other
    std::exception_ptr failure_;
};

}  // namespace vlm::ui
