#include <algorithm>

#include "controls/ControlWindows.h"

namespace vlm::ui {

namespace {

constexpr int kOptionMark = 20;  // pixels at 96 dots an inch: the circle, and the gap before its text
constexpr int kOptionGap = 18;

/// Options side by side, of which one or none is chosen. The focus alone chooses nothing; the arrow keys do.
class OptionsWindow : public WindowOf<OptionGroup> {
public:
    using WindowOf::WindowOf;
    void Create() override { Fill(); }
    void Refresh() override {
        Fill();
        for (std::size_t i = 0; i < Windows().size(); ++i) {
            const bool chosen = static_cast<int>(i) == Shown().Position();
            SendMessageW(Windows()[i], BM_SETCHECK, chosen ? BST_CHECKED : BST_UNCHECKED, 0);
            const LONG_PTR style = GetWindowLongPtrW(Windows()[i], GWL_STYLE) & ~static_cast<LONG_PTR>(WS_TABSTOP);
            SetWindowLongPtrW(Windows()[i], GWL_STYLE, style | (Windows()[i] == FocusStop() ? WS_TABSTOP : 0));
        }
    }
    SIZE Natural() const override {
        SIZE whole{0, Looks().Pixels(17)};
        for (const std::string& item : Shown().Items()) {
            whole.cx += WidthOf(item) + Looks().Pixels(kOptionGap);
            whole.cy = std::max<LONG>(whole.cy, Looks().LineHeight());
        }
        return whole;
    }
    void Place(const RECT& place) override {
        LONG left = place.left;
        for (std::size_t i = 0; i < Windows().size(); ++i) {
            const int width = WidthOf(Shown().Items()[i]);
            SetWindowPos(Windows()[i], nullptr, left, place.top, width, place.bottom - place.top,
                         SWP_NOZORDER | SWP_NOACTIVATE);
            left += width + Looks().Pixels(kOptionGap);
        }
    }
    HWND FocusStop() const override {
        const auto chosen = static_cast<std::size_t>(std::max(0, Shown().Position()));
        return chosen < Windows().size() ? Windows()[chosen] : nullptr;
    }
    void Command(int code, HWND window) override {
        if (code != BN_CLICKED || focusing_) return;
        Choose(static_cast<int>(std::find(Windows().begin(), Windows().end(), window) - Windows().begin()));
    }

protected:
    std::optional<LRESULT> Received(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_GETDLGCODE) return DLGC_RADIOBUTTON | DLGC_WANTARROWS;
        if (message == WM_SETFOCUS) {  // the system clicks an option that gets it
            focusing_ = true;
            const LRESULT answer = Default(window, message, wParam, lParam);
            focusing_ = false;
            return answer;
        }
        const bool back = wParam == VK_LEFT || wParam == VK_UP;
        const bool on = wParam == VK_RIGHT || wParam == VK_DOWN;
        if (message != WM_KEYDOWN || (!back && !on)) return std::nullopt;
        const auto count = static_cast<int>(Windows().size());
        const auto at = static_cast<int>(std::find(Windows().begin(), Windows().end(), window) - Windows().begin());
        const int next = (at + (on ? 1 : count - 1)) % count;
        Choose(next);
        SetFocus(Windows()[static_cast<std::size_t>(next)]);
        return 0;
    }

private:
    int WidthOf(const std::string& item) const {
        return Looks().Measure(Wide(item), true).cx + Looks().Pixels(kOptionMark);
    }
    void Choose(int position) {
        Host().Act([this, position] { Shown().SetPosition(position); });
    }
    /// An option more or less is made or taken away; those that are there get their texts.
    void Fill() {
        const std::vector<std::string>& items = Shown().Items();
        while (Windows().size() > items.size()) Remove(Windows().back());
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (i == Windows().size()) MakeOption();
            SetWindowTextW(Windows()[i], Wide(items[i]).c_str());
        }
    }
    void MakeOption() {
        const HWND before = Windows().empty() ? nullptr : Windows().back();
        const HWND option = Make(WC_BUTTONW, L"", BS_RADIOBUTTON | (before == nullptr ? WS_GROUP : 0U));
        if (before != nullptr) SetWindowPos(option, before, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }

    bool focusing_ = false;
};

}  // namespace

std::unique_ptr<ControlWindow> MakeOptions(Control& control, WindowHost& host) {
    return std::make_unique<OptionsWindow>(control, host);
}

}  // namespace vlm::ui
