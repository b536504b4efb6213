#include "MessageWindow.h"

#include <algorithm>

#include "ControlWindow.h"
#include "Look.h"
#include "ModalWindow.h"

namespace vlm::ui {

namespace {

constexpr int kFirstButton = 10;
constexpr int kSpace = 12;  // pixels at 96 dots an inch, as are the next ones
constexpr int kWidestText = 640;
constexpr int kButtonWidth = 88;
constexpr int kBarHeight = 26;  // of the buttons

struct Sign {
    LPCSTR icon;  // as the system numbers it
    UINT sound;
};

Sign SignOf(Icon icon) {
    switch (icon) {
        case Icon::Critical:
            return {IDI_ERROR, MB_ICONERROR};
        case Icon::Question:
            return {IDI_QUESTION, MB_ICONQUESTION};
        case Icon::Exclamation:
            return {IDI_WARNING, MB_ICONWARNING};
        case Icon::Information:
            return {IDI_INFORMATION, MB_ICONINFORMATION};
        case Icon::None:
            break;
    }
    return {nullptr, MB_OK};
}

class MessageWindow : private ModalWindow {
public:
    MessageWindow(const Message& message, HWND owner)
        : ModalWindow(owner, Wide(message.caption), 0), look_(DpiOf(Handle())), sign_(SignOf(message.icon)) {
        const std::wstring text = Wide(message.text);
        SIZE room = look_.Measure(text, false, look_.Pixels(kWidestText));
        const int space = look_.Pixels(kSpace);
        int left = 2 * space;
        int height = room.cy;
        if (sign_.icon != nullptr) {
            const HWND sign = Make(WC_STATICW, L"", SS_ICON, 0, {left, 2 * space, 0, 0});
            SendMessageW(sign, STM_SETICON,
                         reinterpret_cast<WPARAM>(LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(sign_.icon))), 0);
            left += GetSystemMetrics(SM_CXICON) + space;
            height = std::max(height, GetSystemMetrics(SM_CYICON));
        }
        const LONG top = 2 * space + (height - room.cy) / 2;
        Make(WC_STATICW, text, SS_NOPREFIX, 0, {left, top, left + room.cx, top + room.cy});
        AddButtons(message.buttons, left + room.cx + 2 * space, 4 * space + height);
    }

    Answer Ask() {
        MessageBeep(sign_.sound);
        Run();
        if (failure_) std::rethrow_exception(failure_);
        return answers_[static_cast<std::size_t>(chosen_)];
    }

private:
    HWND Make(const wchar_t* windowClass, const std::wstring& text, DWORD style, int id, const RECT& place) {
        const CurrentControls current;
        const HWND window = CreateWindowExW(0, windowClass, text.c_str(), style | WS_CHILD | WS_VISIBLE, place.left,
                                            place.top, place.right - place.left, place.bottom - place.top, Handle(),
                                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), OwnModule(), nullptr);
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(look_.Font()), FALSE);
        return window;
    }
    /// The first button answers Return, the last one closing.
    void AddButtons(Buttons buttons, int width, int top) {
        std::vector<const wchar_t*> texts{L"OK"};
        answers_ = {Answer::Ok};
        if (buttons == Buttons::YesNo) {
            texts = {L"&S\u00EC", L"&No"};
            answers_ = {Answer::Yes, Answer::No};
        }
        chosen_ = static_cast<int>(answers_.size()) - 1;
        const int space = look_.Pixels(kSpace);
        const int step = look_.Pixels(kButtonWidth) + space / 2;
        const int count = static_cast<int>(texts.size());
        width = std::max(width, count * step + 2 * space);
        const int height = look_.Pixels(kBarHeight);
        for (int i = 0; i < count; ++i) {
            const LONG left = width - space - (count - i) * step + space / 2;
            const HWND button = Make(WC_BUTTONW, texts[static_cast<std::size_t>(i)],
                                     (i == 0 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | WS_TABSTOP, kFirstButton + i,
                                     {left, top, left + look_.Pixels(kButtonWidth), top + height});
            if (i == 0) SetFocus(button);
        }
        SendMessageW(Handle(), DM_SETDEFID, kFirstButton, 0);
        SizeInside({width, top + height + space});
    }

    std::optional<LRESULT> Received(UINT message, WPARAM wParam, LPARAM) override {
        const int button = LOWORD(wParam) - kFirstButton;
        const bool cancels = message == WM_CLOSE || (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL);
        if (message == WM_COMMAND && button >= 0 && button < static_cast<int>(answers_.size())) {
            chosen_ = button;
            End();
        } else if (cancels) {
            End();
        } else {
            return std::nullopt;
        }
        return 0;
    }
    void Failed(std::exception_ptr failure) override {
        failure_ = failure;
        End();
    }

    Look look_;
    Sign sign_;
    std::vector<Answer> answers_;
    int chosen_ = 0;
    std::exception_ptr failure_;
};

}  // namespace

Answer AskInWindow(const Message& message, HWND owner) { return MessageWindow(message, owner).Ask(); }

}  // namespace vlm::ui
