#include <windows.h>
// They build on windows.h.
#include <algorithm>
#include <shellapi.h>
#include <shlwapi.h>

#include "ModalWindow.h"
#include "controls/ControlWindows.h"

namespace vlm::ui {

namespace {

constexpr int kLineWidth = 36;  // characters that a line has room for at least
constexpr int kNoteLines = 4;   // that a field of several has room for at least

/// Whether the system's list of paths is open under the field.
bool SuggestionsAreOpen() {
    bool open = false;
    EachWindowOfThread([&open](HWND window) {
        wchar_t name[32];
        const bool is = GetClassNameW(window, name, 32) != 0 && std::wstring_view(name) == L"Auto-Suggest Dropdown";
        open = is && IsWindowVisible(window) != FALSE;
        return !open;
    });
    return open;
}

std::wstring DroppedPath(HDROP drop) {
    std::wstring path(DragQueryFileW(drop, 0, nullptr, 0), L'\0');
    DragQueryFileW(drop, 0, path.data(), static_cast<UINT>(path.size()) + 1);
    DragFinish(drop);
    return path;
}

/// A text of one line or of several. A path is completed while it is typed, and a file dropped on it becomes its text.
class TextWindow : public EntryOf<TextField> {
public:
    using EntryOf::EntryOf;
    void Create() override {
        if (Shown().multiLine) {
            Make(WC_EDITW, L"", ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP | WS_GROUP,
                 WS_EX_CLIENTEDGE);
        } else {
            MakeEdit(WS_GROUP | (Shown().password ? ES_PASSWORD : 0U));
        }
        SendMessageW(First(), EM_SETLIMITTEXT, 0, 0);
        if (!Shown().path) return;
        SHAutoComplete(First(), SHACF_FILESYSTEM | SHACF_AUTOSUGGEST_FORCE_ON | SHACF_AUTOAPPEND_FORCE_OFF);
        DragAcceptFiles(First(), TRUE);
    }
    /// What the user is typing keeps its cursor.
    void Refresh() override {
        const std::wstring text = Wide(Shown().Text());
        if (text != TextIn(First())) ShowText(text);
    }
    SIZE Natural() const override {
        const int height =
            Shown().multiLine ? kNoteLines * Looks().LineHeight() + Looks().Pixels(8) : Looks().FieldHeight();
        return {kLineWidth * Looks().CharWidth(), height};
    }
    bool Widens() const override { return true; }
    bool Heightens() const override { return Shown().multiLine; }
    bool KeepsKey(WPARAM key) const override {
        const bool leads = key == VK_ESCAPE || key == VK_RETURN || key == VK_UP || key == VK_DOWN;
        return leads && Shown().path && SuggestionsAreOpen();
    }

protected:
    void Edited(const std::wstring& text) override {
        Host().Act([this, &text] { Shown().SetText(Narrow(text)); });
    }
    std::optional<LRESULT> Received(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_DROPFILES) {
            SetWindowTextW(window, DroppedPath(reinterpret_cast<HDROP>(wParam)).c_str());
            return 0;
        }
        // By itself a field of several lines takes Tab and closes the window at Escape.
        if (message != WM_GETDLGCODE || !Shown().multiLine) return std::nullopt;
        const auto* key = reinterpret_cast<const MSG*>(lParam);
        const bool breaksLine = key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_RETURN;
        return DLGC_WANTCHARS | DLGC_WANTARROWS | (breaksLine ? DLGC_WANTMESSAGE : 0);
    }
};

}  // namespace

std::unique_ptr<ControlWindow> MakeText(Control& control, WindowHost& host) {
    return std::make_unique<TextWindow>(control, host);
}

}  // namespace vlm::ui
