#include "Win32User.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "Look.h"
#include "dialogs/Keys.h"
#include "support/Words.h"
#include "values/Utf8.h"

namespace vlm::ui::test {

namespace {

constexpr int kFirstId = 1000;  // of the controls' windows

std::map<UINT_PTR, std::function<bool()>*> ticking;

void CALLBACK Tick(HWND, UINT, UINT_PTR timer, DWORD) {
    BYTE none[256]{};
    SetKeyboardState(none);  // the keys of the step before
    const auto deed = ticking.find(timer);
    if (deed != ticking.end() && (*deed->second)()) KillTimer(nullptr, timer);
}

void Hold(int shift, bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    const BYTE state = down ? 0x80 : 0;
    if ((shift & kCtrl) != 0) keys[VK_CONTROL] = keys[VK_LCONTROL] = state;
    if ((shift & kShift) != 0) keys[VK_SHIFT] = keys[VK_LSHIFT] = state;
    if ((shift & kAlt) != 0) keys[VK_MENU] = keys[VK_LMENU] = state;
    SetKeyboardState(keys);
}

void Key(WPARAM code, int shift = kShiftNone) {
    const bool system = (shift & kAlt) != 0;
    const HWND window = GetFocus() != nullptr ? GetFocus() : TopWindow();
    const LPARAM down =
        1 | static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(code), 0)) << 16 | (system ? 1 << 29 : 0);
    Hold(shift, true);
    PostMessageW(window, system ? WM_SYSKEYDOWN : WM_KEYDOWN, code, down);
    PostMessageW(window, system ? WM_SYSKEYUP : WM_KEYUP, code, down | static_cast<LPARAM>(0xC0000000u));
}

void Type(const std::string& text) {
    for (const wchar_t letter : Wide(text)) PostMessageW(GetFocus(), WM_CHAR, letter, 1);
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(window, message, wParam, lParam);
}

/// Sets a control of any kind from a step's value by mouse and keys.
void Enter(Control& control, const std::string& value) {
    const HWND window = WindowOf(control);
    switch (control.Kind()) {
        case ControlKind::CheckBox:
            if (control.ShownText() != value) Click(window, {8, 8});
            return;
        case ControlKind::OptionGroup:
            return Click(WindowOf(control, PositionOf(control, value)), {8, 8});
        case ControlKind::FixedList:
        case ControlKind::PickList: {
            TakeFocus(control);
            const int position = PositionOf(control, value);
            if (position < 0) return Key(VK_DELETE);
            Key(VK_F4);
            Key(VK_HOME);
            for (int i = 0; i < position; ++i) Key(VK_DOWN);
            return Key(VK_RETURN);
        }
        case ControlKind::MultiList:
            for (int i = 0; i < static_cast<int>(As<MultiList>(control).Items().size()); ++i) {
                const bool wanted = ("," + value + ",").find("," + std::to_string(i) + ",") != std::string::npos;
                RECT row;
                Ask(window, LB_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&row));
                if (wanted == As<MultiList>(control).IsSelected(i)) continue;
                Hold(kCtrl, true);
                Click(window, {row.left + 4, row.top + 4}, MK_CONTROL);
            }
            return;
        default:
            TakeFocus(control);
            TypeOver(value);
            return Key(VK_TAB);
    }
}

std::string SeenInList(HWND list, std::size_t count, UINT lengthOf, UINT textOf,
                       const std::function<bool(WPARAM)>& isChosen) {
    std::vector<std::string> chosen, items;
    for (WPARAM i = 0; i < count; ++i) {
        std::wstring text(static_cast<std::size_t>(Ask(list, lengthOf, i)), L'\0');
        Ask(list, textOf, i, reinterpret_cast<LPARAM>(text.data()));
        items.push_back(Narrow(text));
        if (isChosen(i)) chosen.push_back(items.back());
    }
    return ChosenOf(chosen, items);
}

std::string SeenInGrid(HWND list) {
    const auto head = reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER));
    const auto columns = static_cast<int>(Ask(head, HDM_GETITEMCOUNT));
    const bool boxes = (Ask(list, LVM_GETEXTENDEDLISTVIEWSTYLE) & LVS_EX_CHECKBOXES) != 0;
    std::vector<std::string> items;
    for (int row = 0; row < Ask(list, LVM_GETITEMCOUNT); ++row) {
        for (int column = 0; column < columns; ++column) {
            wchar_t text[256] = L"";
            LVITEMW item{};
            item.iSubItem = column;
            item.pszText = text;
            item.cchTextMax = 256;
            Ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
            const auto state = Ask(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK);
            items.push_back(boxes && column == 0 ? std::to_string((state >> 12) - 1) : Narrow(text));
        }
    }
    const auto current = static_cast<int>(Ask(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    return ChosenOf({std::to_string(current)}, items);
}

/// What the user sees, read from the windows.
std::string Seen(const Control& control) {
    const HWND window = WindowOf(control);
    switch (control.Kind()) {
        case ControlKind::CheckBox:
            return Ask(window, BM_GETCHECK) == BST_CHECKED ? "1" : "0";
        case ControlKind::OptionGroup: {
            std::vector<std::string> chosen, items;
            for (int i = 0; WindowOf(control, i) != nullptr; ++i) {
                items.push_back(Narrow(TextOf(WindowOf(control, i))));
                if (Ask(WindowOf(control, i), BM_GETCHECK) == BST_CHECKED) chosen.push_back(items.back());
            }
            return ChosenOf(chosen.empty() ? std::vector<std::string>{""} : chosen, items);
        }
        case ControlKind::FixedList:
        case ControlKind::PickList: {
            const auto current = static_cast<WPARAM>(Ask(window, CB_GETCURSEL));
            return SeenInList(window, static_cast<std::size_t>(Ask(window, CB_GETCOUNT)), CB_GETLBTEXTLEN, CB_GETLBTEXT,
                              [current](WPARAM i) { return i == current; });
        }
        case ControlKind::MultiList:
            return SeenInList(window, static_cast<std::size_t>(Ask(window, LB_GETCOUNT)), LB_GETTEXTLEN, LB_GETTEXT,
                              [window](WPARAM i) { return Ask(window, LB_GETSEL, i) > 0; });
        case ControlKind::Progress:
            return std::to_string(Ask(window, PBM_GETPOS));
        case ControlKind::Grid:
            return SeenInGrid(window);
        default:
            return std::string(text::Trim(Narrow(TextOf(window))));
    }
}

}  // namespace

Ticks::Ticks(std::function<bool()> deed) : deed_(std::move(deed)), timer_(SetTimer(nullptr, 0, 5, Tick)) {
    ticking[timer_] = &deed_;
}

Ticks::~Ticks() {
    KillTimer(nullptr, timer_);
    ticking.erase(timer_);
}

HWND WindowOf(const Control& control, int place) {
    const auto& all = control.Owner().Controls();
    const auto id = kFirstId + (std::find(all.begin(), all.end(), &control) - all.begin());
    const auto dialog = reinterpret_cast<HWND>(control.Owner().WindowHandle());
    for (HWND each = GetWindow(dialog, GW_CHILD); each != nullptr; each = GetWindow(each, GW_HWNDNEXT)) {
        if (GetDlgCtrlID(each) == id && place-- == 0) return each;
    }
    return nullptr;
}

std::string FocusIn(const Dialog& dialog) {
    for (const Control* control : dialog.Controls()) {
        for (int i = 0; HWND window = WindowOf(*control, i); ++i) {
            if (window == GetFocus()) return control->Name();
        }
    }
    return {};
}

HWND TopWindow() {
    HWND top = GetActiveWindow();
    return top != nullptr && IsWindowVisible(top) != FALSE && IsWindowEnabled(top) != FALSE ? top : nullptr;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    return text;
}

HWND ButtonIn(HWND window, const std::wstring& text) {
    return FindWindowExW(window, nullptr, WC_BUTTONW, text.c_str());
}

void TakeFocus(const Control& control) {
    const HWND dialog = reinterpret_cast<HWND>(control.Owner().WindowHandle());
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(WindowOf(control)), TRUE);
}

void Click(HWND window, POINT place, WPARAM keys) {
    RECT inside;
    GetClientRect(window, &inside);
    if (place.x < 0) place = {inside.right / 2, inside.bottom / 2};
    const LPARAM at = MAKELPARAM(place.x, place.y);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON | keys, at);
    PostMessageW(window, WM_LBUTTONUP, keys, at);
}

void Keys(const std::string& keys) {
    for (const std::string& each : vlm::test::WordsOf(keys)) {
        static const std::map<std::string, WPARAM> codes{{"Down", VK_DOWN},   {"Up", VK_UP},      {"End", VK_END},
                                                         {"Home", VK_HOME},   {"Del", VK_DELETE}, {"Left", VK_LEFT},
                                                         {"Space", VK_SPACE}, {"Right", VK_RIGHT}};
        const std::size_t plus = each.find('+') == std::string::npos ? 0 : each.find('+') + 1;
        const auto code = codes.find(each.substr(plus));
        if (each[0] == '\'') {
            Type(each.substr(1));
        } else if (code != codes.end()) {
            Key(code->second, plus > 0 ? ParseKeyName(each.substr(0, plus) + "A")->shift : kShiftNone);
        } else {
            const KeyEvent key = *ParseKeyName(each);
            Key(static_cast<WPARAM>(key.code), key.shift);
        }
    }
}

void TypeOver(const std::string& text) {
    SendMessageW(GetFocus(), EM_SETSEL, 0, -1);
    Key(VK_DELETE);
    Type(text);
}

void ClickRow(HWND list, int place) {
    RECT cell{LVIR_LABEL, 1, 0, 0};
    Ask(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(place), FALSE);
    Ask(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&cell));
    Click(list, {cell.left + 6, (cell.top + cell.bottom) / 2});
}

std::string Differences(const Dialog& dialog) {
    std::ostringstream found;
    for (const Control* control : dialog.Controls()) {
        const HWND window = WindowOf(*control);
        const auto compare = [&](const char* what, const auto& is, const auto& should) {
            if (is != should) found << control->Name() << " " << what << ": " << is << ", not " << should << '\n';
        };
        if (window == nullptr) continue;
        compare("visible", IsWindowVisible(window) != FALSE, dialog.IsVisible(*control));
        compare("enabled", IsWindowEnabled(window) != FALSE, dialog.IsEnabled(*control));
        compare("shows", Seen(*control), Held(*control));
    }
    return found.str();
}

void Win32User::ShowModal(Dialog& dialog) {
    const std::vector<ScriptStep> steps = script_.Take(dialog.Name(), depth_ > 0);
    std::size_t next = 0;
    bool shown = false;
    const Ticks plays([&] {
        if (dialog.IsClosing()) return true;
        if (TopWindow() == nullptr || TopWindow() != reinterpret_cast<HWND>(dialog.WindowHandle())) return false;
        if (!std::exchange(shown, true)) log_.DialogOpened(dialog);
        EXPECT_EQ(Differences(dialog), "") << "before step " << next;
        if (next < steps.size()) {
            Do(dialog, steps[next++]);
            return false;
        }
        PostMessageW(TopWindow(), WM_SYSCOMMAND, SC_CLOSE, 0);
        if (next++ > steps.size()) dialog.Close();  // one that does not close at its title bar
        return false;
    });
    const struct Depth {
        explicit Depth(int& depth) : count(depth) { ++count; }
        ~Depth() { --count; }
        int& count;
    } depth(depth_);
    toolkit_.ShowModal(dialog);
    if (shown) log_.DialogClosed(dialog);
}

void Win32User::Do(Dialog& dialog, const ScriptStep& step) {
    using Kind = ScriptStep::Kind;
    if (step.kind == Kind::Answer || step.kind == Kind::Block) return script_.Keep(step);
    if (step.kind == Kind::Press) {
        if (!step.name.empty()) TakeFocus(*dialog.Find(step.name));
        return Key(static_cast<WPARAM>(step.key.code), step.key.shift);
    }
    if (step.kind == Kind::Help) return Key(VK_F1);
    Control* control = dialog.Find(step.name);
    if (control == nullptr) throw std::runtime_error("no control for " + step.text);
    if (step.kind == Kind::State) return log_.State(*control);
    const HWND window = WindowOf(*control);
    if (IsWindowVisible(window) == FALSE || IsWindowEnabled(window) == FALSE) {
        ADD_FAILURE() << step.text << ": the control is out of reach";
        return;
    }
    if (step.kind == Kind::Set) return Enter(*control, step.value);
    if (step.kind == Kind::Row) return ClickRow(window, step.row - 1);
    Click(window);
}

std::optional<std::string> Win32User::TakeAnswer() {
    const ScriptStep* next = script_.NextAnswer();
    if (next == nullptr) return std::nullopt;
    std::string answer = next->value;
    script_.DropAnswer();
    return answer;
}

Answer Win32User::Show(const Message& message) {
    std::wstring button = L"OK";
    if (message.buttons == Buttons::YesNo) {
        button = text::EqualNoCase(TakeAnswer().value_or("no"), "yes") ? L"&S\u00EC" : L"&No";
    }
    const Ticks clicks([&] {
        const HWND window = TopWindow();
        if (window == nullptr || Narrow(TextOf(window)) != message.caption) return false;
        Click(ButtonIn(window, button));
        return true;
    });
    const Answer answer = toolkit_.Show(message);
    log_.MessageShown(message, answer);
    return answer;
}

/// The visible field of a window.
static BOOL CALLBACK FindEdit(HWND window, LPARAM found) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    const bool is = std::wstring_view(name) == L"Edit" && IsWindowVisible(window) != FALSE;
    if (is) *reinterpret_cast<HWND*>(found) = window;
    return TRUE;
}

/// The name is typed where the chooser takes it; its buttons have the system's numbers.
std::function<bool()> Win32User::AnswerChooser() {
    return [answer = TakeAnswer().value_or("cancel")] {
        const HWND chooser = TopWindow();
        if (chooser == nullptr || !TextOf(chooser).starts_with(L"Scelta")) return false;
        const bool cancels = text::EqualNoCase(answer, "cancel");
        HWND edit = nullptr;
        EnumChildWindows(chooser, FindEdit, reinterpret_cast<LPARAM>(&edit));
        if (!cancels) SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(answer).c_str()));
        PostMessageW(chooser, WM_COMMAND, cancels ? IDCANCEL : IDOK, 0);
        return true;
    };
}

std::optional<std::string> Win32User::ChooseFile(const FileChoice& choice) {
    const Ticks answers(AnswerChooser());
    const std::optional<std::string> chosen = toolkit_.ChooseFile(choice);
    log_.FileChosen(choice, chosen);
    return chosen;
}

std::optional<std::string> Win32User::ChooseFolder(const std::string& startFolder) {
    const Ticks answers(AnswerChooser());
    const std::optional<std::string> chosen = toolkit_.ChooseFolder(startFolder);
    log_.FolderChosen(startFolder, chosen);
    return chosen;
}

void Win32User::SetPointer(Pointer pointer) {
    toolkit_.SetPointer(pointer);
    log_.PointerChanged(pointer);
}

}  // namespace vlm::ui::test
