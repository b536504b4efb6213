#include <algorithm>

#include "controls/ControlWindows.h"
#include "dialogs/Dialog.h"
#include "dialogs/Keys.h"

namespace vlm::ui {

namespace {

constexpr std::size_t kLongText = 60;  // characters from which a label is broken into lines
constexpr std::size_t kShortText = 3;  // characters of a button that stands beside its field ("...")
constexpr int kButtonMargins = 24;     // pixels at 96 dots an inch, as are the next ones
constexpr int kShortButtonMargins = 16;
constexpr int kMarkWidth = 20;  // of a check box, and the gap before its text
constexpr int kBarWidth = 160;

class LabelWindow : public WindowOf<Label> {
public:
    using WindowOf::WindowOf;
    void Create() override { Make(WC_STATICW, L"", SS_NOPREFIX | WS_GROUP); }
    void Refresh() override {
        const std::wstring text = Text();
        if (text != TextIn(First())) SetWindowTextW(First(), text.c_str());
    }
    SIZE Natural() const override {
        const std::wstring text = Text();
        const bool breaks = text.size() > kLongText;
        return Looks().Measure(text, false, breaks ? static_cast<int>(kLongText) * Looks().CharWidth() : 0);
    }

private:
    std::wstring Text() const { return Wide(WithoutMnemonic(Shown().Caption())); }
};

class BorderWindow : public WindowOf<Frame> {
public:
    using WindowOf::WindowOf;
    void Create() override {
        if (!Shown().Caption().empty()) Make(WC_BUTTONW, L"", BS_GROUPBOX | WS_GROUP);
    }
    void Refresh() override {
        if (First() != nullptr) SetWindowTextW(First(), Wide(Shown().Caption()).c_str());
    }
    void Place(const RECT& place) override {
        if (First() != nullptr) ControlWindow::Place(place);
    }
    SIZE Natural() const override { return {0, 0}; }
};

class LineWindow : public WindowOf<Frame> {
public:
    using WindowOf::WindowOf;
    void Create() override { Make(WC_STATICW, L"", SS_ETCHEDHORZ | WS_GROUP); }
    void Refresh() override {}
    SIZE Natural() const override { return {Looks().Pixels(kBarWidth), 2}; }
    bool Widens() const override { return true; }
};

class ButtonWindow : public WindowOf<Button> {
public:
    using WindowOf::WindowOf;
    void Create() override {
        const bool isDefault = Shown().Owner().DefaultButton() == &Shown();
        const DWORD kind = isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        Make(WC_BUTTONW, L"", kind | WS_TABSTOP | WS_GROUP);
    }
    void Refresh() override {
        const std::wstring caption = Wide(Shown().Caption());
        if (caption != TextIn(First())) SetWindowTextW(First(), caption.c_str());
    }
    SIZE Natural() const override {
        const std::wstring caption = Wide(Shown().Caption());
        const int margins = caption.size() > kShortText ? kButtonMargins : kShortButtonMargins;
        return {Looks().Measure(caption, true).cx + Looks().Pixels(margins), Looks().FieldHeight() + Looks().Pixels(2)};
    }
    HWND FocusStop() const override { return First(); }
    void Command(int code, HWND) override {
        if (code == BN_CLICKED) Host().Click(Shown());
    }
};

class CheckWindow : public WindowOf<CheckBox> {
public:
    using WindowOf::WindowOf;
    void Create() override { Make(WC_BUTTONW, L"", BS_CHECKBOX | WS_TABSTOP | WS_GROUP); }
    void Refresh() override {
        const std::wstring caption = Wide(Shown().Caption());
        if (caption != TextIn(First())) SetWindowTextW(First(), caption.c_str());
        SendMessageW(First(), BM_SETCHECK, Shown().Checked() ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    SIZE Natural() const override {
        const SIZE text = Looks().Measure(Wide(Shown().Caption()), true);
        return {text.cx + Looks().Pixels(kMarkWidth), std::max<LONG>(text.cy, Looks().Pixels(17))};
    }
    HWND FocusStop() const override { return First(); }
    void Command(int code, HWND) override {
        if (code != BN_CLICKED && code != BN_DOUBLECLICKED) return;
        Host().Act([this] { Shown().SetChecked(!Shown().Checked()); });
    }
};

class ProgressWindow : public WindowOf<ProgressBar> {
public:
    using WindowOf::WindowOf;
    void Create() override { Make(PROGRESS_CLASSW, L"", WS_GROUP); }
    /// A step back is shown at once, while the way up is drawn slowly: work does not wait for that.
    void Refresh() override {
        const auto value = static_cast<WPARAM>(Shown().Value());
        if (value < 100) SendMessageW(First(), PBM_SETPOS, value + 1, 0);
        SendMessageW(First(), PBM_SETPOS, value, 0);
    }
    SIZE Natural() const override { return {Looks().Pixels(kBarWidth), Looks().FieldHeight() - Looks().Pixels(6)}; }
    bool Widens() const override { return true; }
};

}  // namespace

std::unique_ptr<ControlWindow> MakeLabel(Control& control, WindowHost& host) {
    return std::make_unique<LabelWindow>(control, host);
}

std::unique_ptr<ControlWindow> MakeBorder(Control& control, WindowHost& host) {
    return std::make_unique<BorderWindow>(control, host);
}

std::unique_ptr<ControlWindow> MakeLine(Control& control, WindowHost& host) {
    return std::make_unique<LineWindow>(control, host);
}

std::unique_ptr<ControlWindow> MakeButton(Control& control, WindowHost& host) {
    return std::make_unique<ButtonWindow>(control, host);
}

std::unique_ptr<ControlWindow> MakeCheckBox(Control& control, WindowHost& host) {
    return std::make_unique<CheckWindow>(control, host);
}

std::unique_ptr<ControlWindow> MakeProgress(Control& control, WindowHost& host) {
    return std::make_unique<ProgressWindow>(control, host);
}

}  // namespace vlm::ui
