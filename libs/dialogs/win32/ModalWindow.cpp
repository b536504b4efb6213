#include "ModalWindow.h"

#include <algorithm>

#include "Look.h"
#include "values/Error.h"

namespace vlm::ui {

namespace {

/// The messages whose answer a dialog procedure returns as it is.
bool ReturnsPlain(UINT message) {
    return (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) || message == WM_INITDIALOG;
}

RECT WorkAreaAround(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

BOOL CALLBACK LookAt(HWND window, LPARAM look) {
    return (*reinterpret_cast<const std::function<bool(HWND)>*>(look))(window) ? TRUE : FALSE;
}

}  // namespace

void EachWindowOfThread(const std::function<bool(HWND)>& look) {
    EnumThreadWindows(GetCurrentThreadId(), LookAt, reinterpret_cast<LPARAM>(&look));
}

HWND ActiveOwner() {
    HWND owner = GetActiveWindow();
    if (owner != nullptr) return GetAncestor(owner, GA_ROOT);
    EachWindowOfThread([&owner](HWND window) {
        const bool stands = IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
        if (stands) owner = window;
        return !stands;
    });
    return owner;
}

ModalWindow::ModalWindow(HWND owner, const std::wstring& title, DWORD style) : owner_(owner) {
    struct {
        DLGTEMPLATE head;
        WORD menu, windowClass, title;
    } empty{};
    const CurrentControls current;
    empty.head.style = style | WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    handle_ = CreateDialogIndirectParamW(OwnModule(), &empty.head, owner, Procedure, 0);
    if (handle_ == nullptr) {
        throw Error("Impossibile aprire la finestra: errore di sistema " + std::to_string(GetLastError()) + ".");
    }
    SetWindowTextW(handle_, title.c_str());
}

ModalWindow::~ModalWindow() { DestroyWindow(handle_); }

INT_PTR CALLBACK ModalWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* self = reinterpret_cast<ModalWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr) return FALSE;
    std::optional<LRESULT> answer;
    try {
        answer = self->Received(message, wParam, lParam);
    } catch (...) {
        self->Failed(std::current_exception());
        answer = 0;
    }
    if (!answer) return FALSE;
    if (ReturnsPlain(message)) return *answer;
    SetWindowLongPtrW(window, DWLP_MSGRESULT, *answer);
    return TRUE;
}

void ModalWindow::Pass(MSG& message) {
    const bool own = message.hwnd == handle_ || IsChild(handle_, message.hwnd) != FALSE;
    if (own && Takes(message)) return;
    if (IsDialogMessageW(handle_, &message) != FALSE) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void ModalWindow::Run() {
    if (ended_) return;
    SetWindowLongPtrW(handle_, DWLP_USER, reinterpret_cast<LONG_PTR>(this));
    DisableOthers();
    ShowWindow(handle_, SW_SHOW);
    MSG message;
    while (!ended_) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
        if (got <= 0) break;
        Pass(message);
    }
    ended_ = true;
    EnableOthers();
    ShowWindow(handle_, SW_HIDE);
    SetWindowLongPtrW(handle_, DWLP_USER, 0);
}

void ModalWindow::End() {
    if (ended_) return;
    ended_ = true;
    PostMessageW(handle_, WM_NULL, 0, 0);  // the loop looks again
}

void ModalWindow::DisableOthers() {
    EachWindowOfThread([this](HWND window) {
        const bool waits = window != handle_ && IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
        if (waits) disabled_.push_back(window);
        return true;
    });
    for (const HWND window : disabled_) EnableWindow(window, FALSE);
}

void ModalWindow::EnableOthers() {
    for (const HWND window : disabled_) EnableWindow(window, TRUE);
    disabled_.clear();
}

SIZE ModalWindow::WithBorder(SIZE inside) const {
    RECT outside{0, 0, inside.cx, inside.cy};
    AdjustWindowRectEx(&outside, static_cast<DWORD>(GetWindowLongPtrW(handle_, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(handle_, GWL_EXSTYLE)));
    return {outside.right - outside.left, outside.bottom - outside.top};
}

void ModalWindow::SizeInside(SIZE inside) {
    const RECT screen = WorkAreaAround(owner_ != nullptr ? owner_ : handle_);
    RECT middle = screen;
    if (owner_ != nullptr && IsIconic(owner_) == FALSE) GetWindowRect(owner_, &middle);
    const SIZE whole = WithBorder(inside);
    const LONG width = std::min(whole.cx, screen.right - screen.left);
    const LONG height = std::min(whole.cy, screen.bottom - screen.top);
    const LONG left = std::clamp((middle.left + middle.right - width) / 2, screen.left, screen.right - width);
    const LONG top = std::clamp((middle.top + middle.bottom - height) / 2, screen.top, screen.bottom - height);
    SetWindowPos(handle_, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace vlm::ui
