#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>
#include <windows.h>

namespace vlm::ui {

/// A window of ours that the other windows of the thread wait for. What is thrown in it is kept and comes out of Run.
class ModalWindow {
public:
    /// `owner` is the window below, null for none. Made hidden, in the middle of the owner.
    ModalWindow(HWND owner, const std::wstring& title, DWORD style);
    virtual ~ModalWindow();
    ModalWindow(const ModalWindow&) = delete;
    ModalWindow& operator=(const ModalWindow&) = delete;

    HWND Handle() const noexcept { return handle_; }

protected:
    /// Shows the window and returns when End was called, or when the program is being left: then that stands in the
    /// queue again for the loop below.
    void Run();
    void End();
    bool Ended() const noexcept { return ended_; }
    /// Gives one message to whom it is for.
    void Pass(MSG& message);
    /// Makes the inside so large and puts the window over the middle of its owner, inside the screen.
    void SizeInside(SIZE inside);
    SIZE WithBorder(SIZE inside) const;

    /// A message to the window; nothing for the system's own answer.
    virtual std::optional<LRESULT> Received(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    /// A message to the window or one in it, before the system's dialog keys; true when it is dealt with.
    virtual bool Takes(const MSG& /*message*/) { return false; }
    /// What a handler threw. The window ends.
    virtual void Failed(std::exception_ptr failure) = 0;

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void DisableOthers();
    void EnableOthers();

    HWND owner_;
    HWND handle_ = nullptr;
    bool ended_ = false;
    std::vector<HWND> disabled_;
};

/// Looks at the thread's windows from the top one on, as long as that returns true.
void EachWindowOfThread(const std::function<bool(HWND window)>& look);

/// The window that a new one stands over: the active one of the thread, or while the user works elsewhere the one that
/// would be. Null for none.
HWND ActiveOwner();

}  // namespace vlm::ui
