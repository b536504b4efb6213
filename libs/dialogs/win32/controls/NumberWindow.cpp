#include <algorithm>

#include "controls/ControlWindows.h"
#include "values/Number.h"

namespace vlm::ui {

namespace {

constexpr int kFewestDigits = 4;  // that the line has room for
constexpr int kArrowsWidth = 17;  // pixels at 96 dots an inch

/// A line for a field's number, with arrows that step by one. It may be empty, and while it is being typed it may hold
/// what is no number yet.
class NumberWindow : public EntryOf<NumberField> {
public:
    using EntryOf::EntryOf;
    void Create() override {
        MakeEdit(ES_RIGHT | WS_GROUP);
        arrows_ = Make(UPDOWN_CLASSW, L"", UDS_ARROWKEYS);
        SendMessageW(arrows_, UDM_SETBUDDY, reinterpret_cast<WPARAM>(First()), 0);
    }
    void Refresh() override {
        if (!Agrees() || GetFocus() != First()) ShowText(Wide(Shown().ShownText()));
        Mark(false);
    }
    SIZE Natural() const override {
        const int digits = std::max(static_cast<int>(Written(Shown().Maximum()).size()), kFewestDigits) + 2;
        const int width = digits * Looks().Measure(L"0").cx + Looks().Pixels(kArrowsWidth);
        return {width, Looks().FieldHeight()};
    }
    void Place(const RECT& place) override {
        const LONG edge = place.right - Looks().Pixels(kArrowsWidth);
        ControlWindow::Place({place.left, place.top, edge, place.bottom});
        SetWindowPos(arrows_, nullptr, edge, place.top, place.right - edge, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    std::wstring Complaint() const override {
        if (Agrees()) return {};
        return Wide("Il numero deve stare tra " + text::NumberText(Shown().Minimum()) + " e " +
                    text::NumberText(Shown().Maximum()) + ".");
    }
    LRESULT Notify(NMHDR& notice) override {
        if (notice.code == UDN_DELTAPOS) Step(-reinterpret_cast<const NMUPDOWN&>(notice).iDelta);
        return 1;  // the arrows keep no number of their own
    }

protected:
    bool MayStand(const std::wstring& text) const override {
        bool comma = false;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const wchar_t each = text[i];
            const bool digit = each >= L'0' && each <= L'9';
            const bool sign = each == L'-' && i == 0;
            const bool point = each == L'.' && Shown().Decimals() > 0 && !comma;
            const bool first = each == L',' && Shown().Decimals() > 0 && !comma;
            if (!digit && !sign && !point && !first) return false;
            comma = comma || first;
        }
        return true;
    }
    void Edited(const std::wstring&) override {
        const std::optional<double> number = Number();
        if (number) Host().Act([this, &number] { Shown().SetValue(*number); });
        if (Agrees()) Mark(false);
    }
    void Left() override {
        if (Agrees()) ShowText(Wide(Shown().ShownText()));
        Mark(!Agrees());
    }

private:
    /// Nothing for what is no number; 0 for an empty line.
    std::optional<double> Number() const {
        const std::string typed = Narrow(TextIn(First()));
        return typed.empty() ? 0 : text::ParseNumber(typed);
    }
    /// What stands in the line is the control's value.
    bool Agrees() const { return Number() == Shown().Value(); }
    std::string Written(double number) const {
        return text::FormatDecimals(Currency::FromDouble(number), Shown().Decimals(), false);
    }
    void Step(int steps) {
        const std::optional<double> number = Number();
        if (!number || GetWindowTextLengthW(First()) == 0) return;  // there is nothing to count from
        const double next = std::clamp(*number + steps, Shown().Minimum(), Shown().Maximum());
        SetWindowTextW(First(), Wide(Written(next)).c_str());
        SendMessageW(First(), EM_SETSEL, 0, -1);
    }

    HWND arrows_ = nullptr;
};

}  // namespace

std::unique_ptr<ControlWindow> MakeNumber(Control& control, WindowHost& host) {
    return std::make_unique<NumberWindow>(control, host);
}

}  // namespace vlm::ui
