#include "ControlWindow.h"

#include <algorithm>
#include <iterator>

#include "controls/ControlWindows.h"
#include "values/Error.h"

namespace vlm::ui {

namespace {

constexpr const wchar_t* kOwnerProperty = L"VlmControl";

struct Maker {
    ControlKind kind;
    std::unique_ptr<ControlWindow> (*make)(Control&, WindowHost&);
};

constexpr Maker kMakers[] = {{ControlKind::Label, MakeLabel},
                             {ControlKind::Frame, MakeLine},
                             {ControlKind::Button, MakeButton},
                             {ControlKind::Text, MakeText},
                             {ControlKind::Number, MakeNumber},
                             {ControlKind::Date, MakeDate},
                             {ControlKind::CheckBox, MakeCheckBox},
                             {ControlKind::OptionGroup, MakeOptions},
                             {ControlKind::FixedList, MakeFixedList},
                             {ControlKind::PickList, MakePickList},
                             {ControlKind::MultiList, MakeMultiList},
                             {ControlKind::Progress, MakeProgress},
                             {ControlKind::Grid, MakeGrid}};
static_assert(std::size(kMakers) == static_cast<std::size_t>(ControlKind::Grid) + 1);  // the last kind

}  // namespace

std::unique_ptr<ControlWindow> MakeControlWindow(Control& control, WindowHost& host, bool surrounds) {
    const auto* maker = std::find_if(std::begin(kMakers), std::end(kMakers),
                                     [&control](const Maker& each) { return each.kind == control.Kind(); });
    std::unique_ptr<ControlWindow> window = surrounds ? MakeBorder(control, host) : maker->make(control, host);
    window->Create();
    window->Refresh();
    return window;
}

ControlWindow::~ControlWindow() {
    while (!windows_.empty()) Remove(windows_.back());
}

ControlWindow* ControlWindow::Of(HWND window) {
    return window == nullptr ? nullptr : static_cast<ControlWindow*>(GetPropW(window, kOwnerProperty));
}

HWND ControlWindow::Make(const wchar_t* windowClass, const std::wstring& text, DWORD style, DWORD outerStyle) {
    const CurrentControls current;
    const HWND window =
        CreateWindowExW(outerStyle, windowClass, text.c_str(), style | WS_CHILD, 0, 0, 0, 0, host_.Parent(),
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(host_.IdOf(control_))), OwnModule(), nullptr);
    if (window == nullptr) throw Error("Impossibile mostrare il campo \"" + control_.Name() + "\" nella finestra.");
    windows_.push_back(window);
    procedures_.push_back(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC)));
    SetPropW(window, kOwnerProperty, this);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure));
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(Looks().Font()), FALSE);
    return window;
}

void ControlWindow::Remove(HWND window) {
    const auto at = std::find(windows_.begin(), windows_.end(), window) - windows_.begin();
    if (IsWindow(window) != FALSE) DestroyWindow(window);  // it still asks how it does that
    windows_.erase(windows_.begin() + at);
    procedures_.erase(procedures_.begin() + at);
}

LRESULT ControlWindow::Default(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto at = std::find(windows_.begin(), windows_.end(), window) - windows_.begin();
    return CallWindowProcW(procedures_[static_cast<std::size_t>(at)], window, message, wParam, lParam);
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    ControlWindow* const self = Of(window);
    if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    try {
        if (const std::optional<LRESULT> answer = self->Received(window, message, wParam, lParam)) return *answer;
    } catch (...) {
        self->host_.Act([] { throw; });
        return 0;
    }
    if (message == WM_NCDESTROY) RemovePropW(window, kOwnerProperty);
    return self->Default(window, message, wParam, lParam);
}

void ControlWindow::ShowState(bool visible, bool enabled) {
    for (const HWND window : windows_) {
        EnableWindow(window, enabled);
        ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
    }
}

void ControlWindow::Place(const RECT& place) {
    SetWindowPos(First(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::Rescale() {
    for (const HWND window : windows_) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(Looks().Font()), TRUE);
}

void ControlWindow::Mark(bool wrong) {
    if (wrong == marked_) return;
    marked_ = wrong;
    InvalidateRect(First(), nullptr, TRUE);
}

std::wstring ControlWindow::TextIn(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

}  // namespace vlm::ui
