#pragma once

#include "FormLayout.h"
#include "ModalWindow.h"
#include "dialogs/Dialog.h"
#include "system/SettingsStore.h"

namespace vlm::ui {

/// The one showing of a dialog in a window. However that ends, a dialog that has opened is told once that it closed.
class Win32Dialog : private ModalWindow, private DialogView, private WindowHost {
public:
    /// `owner` is the window below, null for none; `hourglass` tells whether work is under way. The size that the user
    /// gives the window is kept in `settings` for the next showing, under "Window.NAME" as "WIDTHxHEIGHT" of its inside
    /// at 96 dots an inch; settings that fail forget it.
    Win32Dialog(Dialog& dialog, sys::SettingsStore& settings, HWND owner, const bool& hourglass);
    ~Win32Dialog() override;

    /// Opens, shows and closes the dialog. What a handler throws ends the showing and goes through.
    void Show();

    using ModalWindow::Handle;

private:
    // ModalWindow
    std::optional<LRESULT> Received(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool Takes(const MSG& message) override;
    void Failed(std::exception_ptr failure) override;
    // DialogView
    void ControlChanged(Control& control) override;
    void FocusMoved(Control& control) override;
    void Repaint() override;
    void Close() override { End(); }
    std::intptr_t WindowHandle() const override { return reinterpret_cast<std::intptr_t>(Handle()); }
    // WindowHost
    HWND Parent() const override { return Handle(); }
    const Look& Looks() const override { return *look_; }
    void Act(const std::function<void()>& action) override;
    void Click(Button& button) override;
    void Later(ControlWindow& window) override;
    int IdOf(const Control& control) const override;

    std::optional<LRESULT> Colour(HDC context, HWND window) const;
    bool KeyPressed(WPARAM code);
    void KeyReleased(WPARAM code);
    bool IsLost(const MSG& message) const;
    Control* Focus() const;
    /// An entry that is no value of its field holds the dialog's own buttons up, but never the one that cancels. Moves
    /// the focus there and tells why.
    bool IsHeldUp(const Button& button);

    void Build();
    void PlaceFocus();
    void TakeFocus(const ControlWindow& window);
    SIZE Inside() const;
    SIZE KeptSize() const;
    void KeepSize();
    void Rescale(int dpi, const RECT& place);

    Dialog& dialog_;
    sys::SettingsStore& settings_;
    const bool& hourglass_;
    std::unique_ptr<Look> look_;
    std::unique_ptr<FormLayout> form_;
    Control* focusWanted_ = nullptr;
    SIZE naturalSize_{};
    int looks_ = 0;  // of long steps at what happened in the window, one inside the other
    std::exception_ptr failure_;
};

}  // namespace vlm::ui
