#include "Win32Dialog.h"

#include <algorithm>
#include <charconv>

#include "Input.h"
#include "dialogs/Keys.h"

namespace vlm::ui {

namespace {

constexpr int kFirstId = 1000;  // of the controls' windows
constexpr UINT kSettled = WM_APP + 1;
constexpr UINT kResolutionChanged = 0x02E0;  // newer systems send it
constexpr int kNarrowest = 440;              // pixels at 96 dots an inch
constexpr int kLeastSide = 100;              // of a window that was kept
constexpr int kMostSide = 20000;
constexpr const char* kApplication = "Aldra";
constexpr const char* kSection = "Settings";
constexpr COLORREF kWrongText = RGB(120, 0, 0);
constexpr COLORREF kWrongField = RGB(255, 222, 217);

DWORD StyleFor(const Dialog& dialog) {
    const bool grows = std::any_of(dialog.Controls().begin(), dialog.Controls().end(),
                                   [](const Control* control) { return control->Kind() == ControlKind::Grid; });
    return WS_THICKFRAME | (grows ? WS_MAXIMIZEBOX : 0U);
}

HBRUSH WrongBrush() {
    static const HBRUSH brush = CreateSolidBrush(kWrongField);
    return brush;
}

/// 0 when it is no number.
int NumberIn(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

}  // namespace

Win32Dialog::Win32Dialog(Dialog& dialog, sys::SettingsStore& settings, HWND owner, const bool& hourglass)
    : ModalWindow(owner, Wide(WithoutMnemonic(dialog.Title())), StyleFor(dialog)),
      dialog_(dialog),
      settings_(settings),
      hourglass_(hourglass),
      look_(std::make_unique<Look>(DpiOf(Handle()))) {
    dialog_.Attach(this);
}

Win32Dialog::~Win32Dialog() { dialog_.Attach(nullptr); }

void Win32Dialog::Show() {
    dialog_.Opening();
    Act([this] {
        Build();
        if (!dialog_.IsClosing()) Run();
    });
    KeepSize();
    if (!failure_) return dialog_.Closed();
    try {
        dialog_.Closed();
    } catch (...) {  // the error that led here is the one to tell
    }
    std::rethrow_exception(failure_);
}

void Win32Dialog::Build() {
    WindowHost& host = *this;
    form_ = std::make_unique<FormLayout>(dialog_, host);
    if (dialog_.DefaultButton() != nullptr) {
        SendMessageW(Handle(), DM_SETDEFID, static_cast<WPARAM>(IdOf(*dialog_.DefaultButton())), 0);
    }
    naturalSize_ = form_->Natural();
    naturalSize_.cx = std::max<LONG>(naturalSize_.cx, look_->Pixels(kNarrowest));
    SizeInside(KeptSize());
    naturalSize_ = Inside();
    form_->Arrange(naturalSize_);
    PlaceFocus();
}

/// Where the dialog moved it while it opened, else to the first control that can have it.
void Win32Dialog::PlaceFocus() {
    if (focusWanted_ != nullptr) {
        if (const ControlWindow* window = form_->Find(*focusWanted_)) return TakeFocus(*window);
    }
    for (const ControlWindow* window : form_->Windows()) {
        const Control& control = window->Shown();
        if (window->FocusStop() == nullptr || !dialog_.IsVisible(control) || !dialog_.IsEnabled(control)) continue;
        return TakeFocus(*window);
    }
}

/// What is typed then replaces what stands in a line.
void Win32Dialog::TakeFocus(const ControlWindow& window) {
    if (window.FocusStop() == nullptr) return;
    SendMessageW(Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window.FocusStop()), TRUE);
}

SIZE Win32Dialog::Inside() const {
    RECT inside;
    GetClientRect(Handle(), &inside);
    return {inside.right, inside.bottom};
}

/// The natural size when none was kept or what stands there is no size.
SIZE Win32Dialog::KeptSize() const {
    try {
        const std::string kept = settings_.Get(kApplication, kSection, "Window." + dialog_.Name(), "");
        const std::size_t times = kept.find('x');
        const int width = NumberIn(std::string_view(kept).substr(0, times));
        const int height = times == std::string::npos ? 0 : NumberIn(std::string_view(kept).substr(times + 1));
        const auto possible = [](int side) { return side >= kLeastSide && side <= kMostSide; };
        if (possible(width) && possible(height)) return {look_->Pixels(width), look_->Pixels(height)};
    } catch (const std::exception&) {  // settings that cannot be read kept nothing
    }
    return naturalSize_;
}

void Win32Dialog::KeepSize() {
    const SIZE inside = Inside();
    const bool asMade = inside.cx == naturalSize_.cx && inside.cy == naturalSize_.cy;
    if (form_ == nullptr || IsZoomed(Handle()) != FALSE || IsIconic(Handle()) != FALSE || asMade) return;
    const auto at96 = [this](LONG pixels) { return MulDiv(pixels, USER_DEFAULT_SCREEN_DPI, look_->Dpi()); };
    try {
        settings_.Save(kApplication, kSection, "Window." + dialog_.Name(),
                       std::to_string(at96(inside.cx)) + "x" + std::to_string(at96(inside.cy)));
    } catch (const std::exception&) {  // a size that is not kept is no error of the dialog
    }
}

void Win32Dialog::Rescale(int dpi, const RECT& place) {
    const auto before = std::exchange(look_, std::make_unique<Look>(dpi));  // its fonts are still in use
    form_->Rescale();
    SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    form_->Arrange(Inside());
}

void Win32Dialog::ControlChanged(Control& control) {
    if (form_ == nullptr) return;
    if (form_->Follow(control)) {
        form_->Arrange(Inside());
        InvalidateRect(Handle(), nullptr, TRUE);
    }
    // Texts that come and go during work are painted while it lasts.
    const bool tells = control.Kind() == ControlKind::Label || control.Kind() == ControlKind::Progress;
    if (hourglass_ && tells) RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void Win32Dialog::FocusMoved(Control& control) {
    focusWanted_ = &control;
    if (form_ == nullptr) return;
    if (const ControlWindow* window = form_->Find(control)) TakeFocus(*window);
}

void Win32Dialog::Repaint() {
    if (form_ == nullptr) return;
    ++looks_;
    MSG message;
    while (!Ended() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {  // for the loop below, once the work is over
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (!IsLost(message)) Pass(message);
    }
    --looks_;
    RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

bool Win32Dialog::IsLost(const MSG& message) const {
    ControlWindow* const cancels = dialog_.CancelButton() != nullptr ? form_->Find(*dialog_.CancelButton()) : nullptr;
    const bool onCancel = cancels != nullptr && ControlWindow::Of(message.hwnd) == cancels;
    return IsLostDuringWork(message, onCancel);
}

void Win32Dialog::Act(const std::function<void()>& action) {
    try {
        action();
    } catch (...) {
        Failed(std::current_exception());
    }
}

void Win32Dialog::Failed(std::exception_ptr failure) {
    if (!failure_) failure_ = failure;
    dialog_.Close();
    End();
}

void Win32Dialog::Click(Button& button) {
    if (IsHeldUp(button)) return;
    Act([&button] { button.Click(); });
}

void Win32Dialog::Later(ControlWindow& window) {
    PostMessageW(Handle(), kSettled, 0, reinterpret_cast<LPARAM>(&window));
}

int Win32Dialog::IdOf(const Control& control) const {
    const auto& all = dialog_.Controls();
    return kFirstId + static_cast<int>(std::find(all.begin(), all.end(), &control) - all.begin());
}

bool Win32Dialog::IsHeldUp(const Button& button) {
    const auto& own = dialog_.Buttons();
    if (&button == dialog_.CancelButton() || std::find(own.begin(), own.end(), &button) == own.end()) return false;
    for (const ControlWindow* window : form_->Windows()) {
        const std::wstring complaint = window->Complaint();
        if (complaint.empty() || !dialog_.IsVisible(window->Shown())) continue;
        TakeFocus(*window);
        MessageBeep(MB_ICONWARNING);
        EDITBALLOONTIP tip{sizeof tip, L"Aldra", complaint.c_str(), TTI_WARNING};
        SendMessageW(window->FocusStop(), EM_SHOWBALLOONTIP, 0, reinterpret_cast<LPARAM>(&tip));
        return true;
    }
    return false;
}

Control* Win32Dialog::Focus() const {
    const ControlWindow* const window = ControlWindow::Of(GetFocus());
    return window != nullptr ? &window->Shown() : nullptr;
}

bool Win32Dialog::Takes(const MSG& message) {
    if (Ended() || form_ == nullptr) return false;
    if (message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) return KeyPressed(message.wParam);
    if (message.message == WM_KEYUP || message.message == WM_SYSKEYUP) KeyReleased(message.wParam);
    return false;
}

bool Win32Dialog::KeyPressed(WPARAM code) {
    const KeyEvent key = KeyOf(code);
    if (key.code == kKeyNone) return false;
    const ControlWindow* const window = ControlWindow::Of(GetFocus());
    if (window != nullptr && window->KeepsKey(code)) return false;
    Control* const focus = Focus();
    if (key.code == kKeyReturn && key.shift == kShiftNone) {
        // In a text of several lines it begins a line.
        if (focus != nullptr && focus->Kind() == ControlKind::Text && As<TextField>(*focus).multiLine) return false;
        const bool onButton = focus != nullptr && focus->Kind() == ControlKind::Button;
        const Button* button = onButton ? &As<Button>(*focus) : dialog_.DefaultButton();
        if (button != nullptr && IsHeldUp(*button)) return true;
    }
    bool taken = false;
    Act([&] { taken = dialog_.KeyDown(focus, key); });
    return taken || dialog_.IsClosing();
}

void Win32Dialog::KeyReleased(WPARAM code) {
    const KeyEvent key = KeyOf(code);
    if (key.code == kKeyNone) return;
    Act([&] { dialog_.KeyUp(Focus(), key); });
}

/// A field whose entry is no value is coloured.
std::optional<LRESULT> Win32Dialog::Colour(HDC context, HWND window) const {
    const ControlWindow* const shown = ControlWindow::Of(window);
    if (shown == nullptr || !shown->IsMarked()) return std::nullopt;
    SetTextColor(context, kWrongText);
    SetBkColor(context, kWrongField);
    return reinterpret_cast<LRESULT>(WrongBrush());
}

std::optional<LRESULT> Win32Dialog::Received(UINT message, WPARAM wParam, LPARAM lParam) {
    if (form_ == nullptr) return std::nullopt;
    switch (message) {
        case WM_COMMAND:
            if (ControlWindow* window = ControlWindow::Of(reinterpret_cast<HWND>(lParam))) {
                window->Command(HIWORD(wParam), reinterpret_cast<HWND>(lParam));
            }
            return 0;
        case WM_NOTIFY: {
            auto& notice = *reinterpret_cast<NMHDR*>(lParam);
            ControlWindow* window = ControlWindow::Of(notice.hwndFrom);
            if (window == nullptr) window = ControlWindow::Of(GetParent(notice.hwndFrom));
            return window != nullptr ? std::optional(window->Notify(notice)) : std::nullopt;
        }
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (ControlWindow* window = ControlWindow::Of(item.hwndItem)) window->Draw(item);
            return TRUE;
        }
        case kSettled:
            reinterpret_cast<ControlWindow*>(lParam)->Settled();
            return 0;
        case WM_CTLCOLOREDIT:
            return Colour(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        case WM_SETCURSOR:
            if (!hourglass_) return std::nullopt;
            SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
            return TRUE;
        case WM_SIZE:
            if (wParam != SIZE_MINIMIZED) form_->Arrange(Inside());
            RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
            return 0;
        case WM_GETMINMAXINFO: {
            const SIZE least = WithBorder(form_->Least());
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.cx, least.cy};
            return 0;
        }
        case kResolutionChanged:
            Rescale(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_CLOSE:
            if (!Ended()) Act([this] { dialog_.FrameClose(); });
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace vlm::ui
