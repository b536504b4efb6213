#include <algorithm>
#include <uxtheme.h>
#include <vssym32.h>

#include "controls/ControlWindows.h"
#include "values/DateText.h"

namespace vlm::ui {

namespace {

constexpr std::size_t kDigits = 8;  // of a date without strokes
constexpr std::size_t kDateCharacters = 10;
constexpr const wchar_t* kForm = L"gg/mm/aaaa";
constexpr int kDateMargins = 14;  // pixels at 96 dots an inch, as is the next one
constexpr int kCalendarButton = 19;

std::optional<Date> DateIn(std::wstring text) {
    const bool plain = text.size() == kDigits && text.find_first_not_of(L"0123456789") == std::wstring::npos;
    if (plain) text.insert(4, 1, L'/').insert(2, 1, L'/');
    return text::ParseItalianDate(Narrow(text));
}

SYSTEMTIME SystemDate(Date date) {
    const Date::Civil civil = date.ToCivil();
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(civil.year);
    time.wMonth = static_cast<WORD>(civil.month);
    time.wDay = static_cast<WORD>(civil.day);
    return time;
}

/// A date as text, which may be empty, and a button that opens a month to choose from.
class DateWindow : public EntryOf<DateField> {
public:
    using EntryOf::EntryOf;
    ~DateWindow() override { CloseCalendar(); }
    void Create() override {
        MakeEdit(WS_GROUP);
        SendMessageW(First(), EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(kForm));
        button_ = Make(WC_BUTTONW, L"Calendario", BS_OWNERDRAW);
    }
    void Refresh() override {
        const std::wstring text = Wide(Shown().ShownText());
        const bool typing = GetFocus() == First() && typed_ && Agrees();
        if (text == TextIn(First()) || typing) return;
        ShowText(text);
        Mark(false);
    }
    SIZE Natural() const override {
        const LONG text = std::max(Looks().Measure(L"00/00/0000").cx, Looks().Measure(kForm).cx);
        return {text + Looks().Pixels(kDateMargins + kCalendarButton), Looks().FieldHeight()};
    }
    void Place(const RECT& place) override {
        const LONG edge = place.right - Looks().Pixels(kCalendarButton);
        ControlWindow::Place({place.left, place.top, edge, place.bottom});
        SetWindowPos(button_, nullptr, edge, place.top, place.right - edge, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    std::wstring Complaint() const override { return Agrees() ? L"" : L"Serve una data gg/mm/aaaa."; }
    void Draw(const DRAWITEMSTRUCT& item) override {
        const bool pressed = (item.itemState & ODS_SELECTED) != 0;
        const bool disabled = (item.itemState & ODS_DISABLED) != 0;
        RECT place = item.rcItem;
        if (const HTHEME theme = OpenThemeData(item.hwndItem, L"COMBOBOX")) {
            const int state = disabled ? CBXS_DISABLED : pressed ? CBXS_PRESSED : CBXS_NORMAL;
            DrawThemeBackground(theme, item.hDC, CP_DROPDOWNBUTTON, state, &place, nullptr);
            CloseThemeData(theme);
            return;
        }
        const UINT state = disabled ? DFCS_INACTIVE : pressed ? DFCS_PUSHED : 0U;
        DrawFrameControl(item.hDC, &place, DFC_SCROLL, DFCS_SCROLLCOMBOBOX | state);
    }
    void Command(int code, HWND window) override {
        if (window == button_ && code == BN_CLICKED) return OpenCalendar();
        EntryOf::Command(code, window);
    }

protected:
    bool MayStand(const std::wstring& text) const override {
        return text.size() <= kDateCharacters && text.find_first_not_of(L"0123456789/.-") == std::wstring::npos;
    }
    void Edited(const std::wstring& text) override {
        typed_ = true;
        const std::optional<Date> date = DateIn(text);
        if (date || text.empty()) Host().Act([this, &date] { Shown().SetValue(date); });
        if (Agrees()) Mark(false);
    }
    void Left() override {
        typed_ = false;
        if (Agrees()) ShowText(Wide(Shown().ShownText()));
        Mark(!Agrees());
    }
    std::optional<LRESULT> Received(HWND window, UINT message, WPARAM wParam, LPARAM) override {
        const bool opens =
            (message == WM_SYSKEYDOWN && wParam == VK_DOWN) || (message == WM_KEYDOWN && wParam == VK_F4);
        if (window != First() || !opens) return std::nullopt;
        OpenCalendar();
        return 0;
    }

private:
    bool Agrees() const {
        const std::wstring text = TextIn(First());
        const std::optional<Date> date = DateIn(text);
        return (date || text.empty()) && date == Shown().Value();
    }

    // The calendar: a window with a month in it, which goes when the user has chosen or looks elsewhere.

    void OpenCalendar() {
        if (calendar_ != nullptr) return CloseCalendar();
        const CurrentControls current;
        RECT place;
        GetWindowRect(First(), &place);
        calendar_ = CreateWindowExW(WS_EX_TOOLWINDOW, MONTHCAL_CLASSW, L"Calendario", WS_POPUP | WS_BORDER, place.left,
                                    place.bottom, 10, 10, Host().Parent(), nullptr, OwnModule(), nullptr);
        if (calendar_ == nullptr) return;
        SendMessageW(calendar_, WM_SETFONT, reinterpret_cast<WPARAM>(Looks().Font()), FALSE);
        procedure_ = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(calendar_, GWLP_WNDPROC));
        SetWindowLongPtrW(calendar_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(calendar_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(CalendarProcedure));
        SYSTEMTIME day = Shown().Value() ? SystemDate(*Shown().Value()) : SYSTEMTIME{};
        if (!Shown().Value()) GetLocalTime(&day);
        SendMessageW(calendar_, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&day));
        RECT inside{};
        SendMessageW(calendar_, MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&inside));
        AdjustWindowRectEx(&inside, WS_POPUP | WS_BORDER, FALSE, WS_EX_TOOLWINDOW);
        MONITORINFO screen{};
        screen.cbSize = sizeof screen;
        GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &screen);
        const LONG width = inside.right - inside.left;
        const LONG height = inside.bottom - inside.top;
        const bool below = place.bottom + height <= screen.rcWork.bottom;
        SetWindowPos(calendar_, HWND_TOP, std::min(place.left, screen.rcWork.right - width),
                     below ? place.bottom : place.top - height, width, height, SWP_SHOWWINDOW);
        SetFocus(calendar_);
    }
    void CloseCalendar() {
        if (const HWND calendar = std::exchange(calendar_, nullptr)) DestroyWindow(calendar);
    }
    void TakeDay() {
        SYSTEMTIME day{};
        SendMessageW(calendar_, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&day));
        CloseCalendar();
        SetFocus(First());
        typed_ = false;
        const std::optional<Date> date = Date::FromYmd(day.wYear, day.wMonth, day.wDay);
        if (date) Host().Act([this, &date] { Shown().SetValue(date); });
        Refresh();
    }
    /// A click is over, and the day that it chose is known, when the button is up.
    static LRESULT CALLBACK CalendarProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        auto& self = *reinterpret_cast<DateWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        const WNDPROC procedure = self.procedure_;
        const bool left = message == WM_KILLFOCUS || (message == WM_KEYDOWN && wParam == VK_ESCAPE);
        if (left && self.calendar_ != nullptr) {
            if (message == WM_KEYDOWN) SetFocus(self.First());
            PostMessageW(window, WM_CLOSE, 0, 0);
            return 0;
        }
        if (message == WM_CLOSE) {
            self.CloseCalendar();
            return 0;
        }
        bool takes = message == WM_KEYDOWN && wParam == VK_RETURN;
        if (message == WM_LBUTTONUP) {
            MCHITTESTINFO hit{};
            hit.cbSize = sizeof hit;
            hit.pt = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
            const auto on = static_cast<DWORD>(SendMessageW(window, MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
            takes = on == MCHT_CALENDARDATE;
        }
        const LRESULT answer = CallWindowProcW(procedure, window, message, wParam, lParam);
        if (takes && self.calendar_ != nullptr) self.TakeDay();
        return answer;
    }

    HWND button_ = nullptr;
    HWND calendar_ = nullptr;
    WNDPROC procedure_ = nullptr;  // of the calendar as the system made it
    bool typed_ = false;
};

}  // namespace

std::unique_ptr<ControlWindow> MakeDate(Control& control, WindowHost& host) {
    return std::make_unique<DateWindow>(control, host);
}

}  // namespace vlm::ui
