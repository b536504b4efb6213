#include <algorithm>

#include "controls/ControlWindows.h"
#include "dialogs/PickList.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr int kEntriesAtOnce = 20;  // of a drop-down
constexpr int kLeastCharacters = 8;
constexpr int kMostCharacters = 40;    // that a list asks room for
constexpr std::size_t kShortItem = 6;  // a list of such texts stays narrow
constexpr int kUnitsInAnInch = 1440;
constexpr int kListMargins = 34;  // pixels at 96 dots an inch: arrow and frame
constexpr int kTextMargin = 4;
constexpr int kFewestRows = 2;  // of a list that is always open
constexpr int kMostRows = 6;
constexpr int kSelectionFrame = 6;  // pixels that a closed list is higher than its entry

/// A drop-down list of which also nothing may be chosen: Del takes the choice away. The mouse wheel turns it only while
/// it has the focus, so that scrolling over a form changes nothing.
template <class T>
class DropDownOf : public WindowOf<T> {
public:
    using WindowOf<T>::WindowOf;
    void Create() override { MakeList(0); }
    HWND FocusStop() const override { return this->First(); }
    SIZE Natural() const override {
        const auto width = std::clamp<LONG>(widest_, kLeastCharacters * this->Looks().CharWidth(),
                                            kMostCharacters * this->Looks().CharWidth());
        return {width + this->Looks().Pixels(kListMargins), this->Looks().FieldHeight()};
    }
    SIZE Least() const override {
        const int width = kLeastCharacters * this->Looks().CharWidth() + this->Looks().Pixels(kListMargins);
        return {std::min<LONG>(Natural().cx, width), Natural().cy};
    }
    /// The place is that of the closed list; the height of its window is that of the open one.
    void Place(const RECT& place) override {
        ControlWindow::Place(
            {place.left, place.top, place.right, place.bottom + (kEntriesAtOnce + 1) * this->Looks().LineHeight()});
    }
    void Rescale() override {
        ControlWindow::Rescale();
        SetHeights();
        MeasureTexts();
    }
    bool KeepsKey(WPARAM key) const override {
        const bool leads = key == VK_ESCAPE || key == VK_RETURN;
        return leads && SendMessageW(this->First(), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
    }
    void Command(int code, HWND) override {
        if (code == CBN_SELENDOK || code == CBN_SELENDCANCEL) {
            chosen_ = chosen_ || code == CBN_SELENDOK;
            this->Host().Later(*this);
        }
    }
    void Settled() override {
        if (SendMessageW(this->First(), CB_GETDROPPEDSTATE, 0, 0) != FALSE) return;
        if (!std::exchange(chosen_, false)) return this->Refresh();
        const auto position = static_cast<int>(SendMessageW(this->First(), CB_GETCURSEL, 0, 0));
        this->Host().Act([this, position] { Choose(position); });
    }

protected:
    virtual void Choose(int position) = 0;

    void MakeList(DWORD style) {
        const HWND list = this->Make(WC_COMBOBOXW, L"", style | CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | WS_GROUP);
        SendMessageW(list, CB_SETMINVISIBLE, kEntriesAtOnce, 0);
        SetHeights();
    }
    void SetHeights() {
        const HWND list = this->First();
        SendMessageW(list, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), this->Looks().FieldHeight() - kSelectionFrame);
        SendMessageW(list, CB_SETITEMHEIGHT, 0, this->Looks().LineHeight() + this->Looks().Pixels(2));
    }
    void ShowTexts(std::vector<std::wstring> texts, int position) {
        const HWND list = this->First();
        if (texts != texts_ || SendMessageW(list, CB_GETCOUNT, 0, 0) != static_cast<LRESULT>(texts.size())) {
            texts_ = std::move(texts);
            MeasureTexts();
            SendMessageW(list, WM_SETREDRAW, FALSE, 0);
            SendMessageW(list, CB_RESETCONTENT, 0, 0);
            for (const std::wstring& text : texts_) {
                SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
            }
            SendMessageW(list, WM_SETREDRAW, TRUE, 0);
            InvalidateRect(list, nullptr, TRUE);
        }
        SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(position), 0);
    }
    std::optional<LRESULT> Received(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_MOUSEWHEEL && GetFocus() != window) {
            return SendMessageW(GetParent(window), message, wParam, lParam);
        }
        const bool clears = message == WM_KEYDOWN && (wParam == VK_DELETE || wParam == VK_BACK);
        if (!clears) return std::nullopt;
        SendMessageW(window, CB_SHOWDROPDOWN, FALSE, 0);
        SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
        this->Host().Act([this] { Choose(-1); });
        return 0;
    }

private:
    void MeasureTexts() {
        widest_ = 0;
        for (const std::wstring& each : texts_) widest_ = std::max(widest_, this->Looks().Measure(each).cx);
    }

    std::vector<std::wstring> texts_;
    LONG widest_ = 0;
    bool chosen_ = false;
};

std::vector<std::wstring> WideTexts(const std::vector<std::string>& items) {
    std::vector<std::wstring> texts;
    for (const std::string& item : items) texts.push_back(Wide(item));
    return texts;
}

class FixedListWindow : public DropDownOf<FixedList> {
public:
    using DropDownOf::DropDownOf;
    void Refresh() override { ShowTexts(WideTexts(Shown().Items()), Shown().Position()); }
    bool Widens() const override {
        const std::vector<std::string>& items = Shown().Items();
        return items.empty() || std::any_of(items.begin(), items.end(),
                                            [](const std::string& item) { return text::Length(item) > kShortItem; });
    }

protected:
    void Choose(int position) override { Shown().SetPosition(position); }
};

/// The rows of a pick list, and when it is open its extra columns beside the texts.
class PickListWindow : public DropDownOf<PickList> {
public:
    using DropDownOf::DropDownOf;
    void Refresh() override {
        if (Shown().extraColumns.size() != columns_) Remake();
        std::vector<std::wstring> texts;
        for (int i = 0; i < Shown().RowCount(); ++i) texts.push_back(Wide(Shown().TextAt(i)));
        ShowTexts(std::move(texts), Shown().SelectedIndex());
        if (columns_ != 0) SendMessageW(First(), CB_SETDROPPEDWIDTH, static_cast<WPARAM>(OpenWidth()), 0);
    }
    bool Widens() const override { return true; }
    void Draw(const DRAWITEMSTRUCT& item) override {
        const bool chosen = (item.itemState & ODS_SELECTED) != 0;
        const bool disabled = (item.itemState & ODS_DISABLED) != 0;
        FillRect(item.hDC, &item.rcItem, GetSysColorBrush(chosen ? COLOR_HIGHLIGHT : COLOR_WINDOW));
        SetBkMode(item.hDC, TRANSPARENT);
        SetTextColor(item.hDC, GetSysColor(disabled ? COLOR_GRAYTEXT
                                           : chosen ? COLOR_HIGHLIGHTTEXT
                                                    : COLOR_WINDOWTEXT));
        const auto row = static_cast<int>(item.itemID);
        if (row >= 0 && row < Shown().RowCount()) DrawRow(item, row);
        if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
    }

protected:
    void Choose(int position) override { Shown().SelectIndex(position); }

private:
    /// The system draws a list's entries with one text only, and how they are drawn is said when it is made.
    void Remake() {
        columns_ = Shown().extraColumns.size();
        const HWND before = First();
        RECT place;
        GetWindowRect(before, &place);
        const bool visible = (GetWindowLongPtrW(before, GWL_STYLE) & WS_VISIBLE) != 0;
        const bool focused = GetFocus() == before;
        const bool enabled = IsWindowEnabled(before) != FALSE;
        MapWindowPoints(nullptr, Host().Parent(), reinterpret_cast<POINT*>(&place), 2);
        const HWND above = GetWindow(before, GW_HWNDPREV);
        Remove(before);
        MakeList(columns_ != 0 ? CBS_OWNERDRAWFIXED | CBS_HASSTRINGS : 0U);
        SetWindowPos(First(), above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        Place({place.left, place.top, place.right, place.top + Looks().FieldHeight()});
        ShowState(visible, enabled);
        if (focused) SetFocus(First());
    }
    int WidthOf(const PickList::ExtraColumn& column) const {
        return MulDiv(column.width, Looks().Dpi(), kUnitsInAnInch);
    }
    int OpenWidth() const {
        int width = Natural().cx;
        for (const PickList::ExtraColumn& column : Shown().extraColumns) width += WidthOf(column);
        return width;
    }
    void DrawRow(const DRAWITEMSTRUCT& item, int row) const {
        RECT place = item.rcItem;
        place.left += Looks().Pixels(kTextMargin);
        const bool open = (item.itemState & ODS_COMBOBOXEDIT) == 0;
        for (auto column = Shown().extraColumns.rbegin(); open && column != Shown().extraColumns.rend(); ++column) {
            RECT cell = place;
            cell.left = place.right - WidthOf(*column);
            place.right = cell.left - Looks().Pixels(kTextMargin);
            DrawTextIn(item.hDC, CellOf(row, column->name), cell);
        }
        DrawTextIn(item.hDC, Shown().TextAt(row), place);
    }
    /// A column that the rows do not have stays empty.
    std::string CellOf(int row, const std::string& column) const {
        try {
            return Shown().ColumnAt(row, column);
        } catch (const std::exception&) {
            return {};
        }
    }
    static void DrawTextIn(HDC context, const std::string& text, RECT place) {
        DrawTextW(context, Wide(text).c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }

    std::size_t columns_ = 0;
};

class MultiListWindow : public WindowOf<MultiList> {
public:
    using WindowOf::WindowOf;
    void Create() override {
        Make(WC_LISTBOXW, L"", LBS_EXTENDEDSEL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP | WS_GROUP,
             WS_EX_CLIENTEDGE);
    }
    void Refresh() override {
        const std::vector<std::wstring> texts = WideTexts(Shown().Items());
        if (texts != texts_) {
            texts_ = texts;
            SendMessageW(First(), LB_RESETCONTENT, 0, 0);
            for (const std::wstring& text : texts_) {
                SendMessageW(First(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
            }
        }
        const auto count = static_cast<int>(texts_.size());
        for (int i = 0; i < count; ++i) {
            const bool is = SendMessageW(First(), LB_GETSEL, static_cast<WPARAM>(i), 0) > 0;
            if (is != Shown().IsSelected(i)) SendMessageW(First(), LB_SETSEL, !is, i);
        }
    }
    SIZE Natural() const override {
        LONG width = kLeastCharacters * Looks().CharWidth();
        for (const std::wstring& text : texts_) width = std::max(width, Looks().Measure(text).cx);
        const int rows = std::clamp(static_cast<int>(texts_.size()), kFewestRows, kMostRows);
        const auto row = static_cast<int>(SendMessageW(First(), LB_GETITEMHEIGHT, 0, 0));
        return {width + Looks().Pixels(kListMargins), rows * row + 2 * GetSystemMetrics(SM_CYEDGE)};
    }
    bool Widens() const override { return true; }
    HWND FocusStop() const override { return First(); }
    void Command(int code, HWND) override {
        if (code != LBN_SELCHANGE && code != LBN_SELCANCEL) return;
        std::set<int> positions;
        for (int i = 0; i < static_cast<int>(texts_.size()); ++i) {
            if (SendMessageW(First(), LB_GETSEL, static_cast<WPARAM>(i), 0) > 0) positions.insert(i);
        }
        Host().Act([this, &positions] { Shown().SetSelected(std::move(positions)); });
    }

private:
    std::vector<std::wstring> texts_;
};

}  // namespace

std::unique_ptr<ControlWindow> MakeFixedList(Control& control, WindowHost& host) {
    return std::make_unique<FixedListWindow>(control, host);
}

std::unique_ptr<ControlWindow> MakePickList(Control& control, WindowHost& host) {
    return std::make_unique<PickListWindow>(control, host);
}

std::unique_ptr<ControlWindow> MakeMultiList(Control& control, WindowHost& host) {
    return std::make_unique<MultiListWindow>(control, host);
}

}  // namespace vlm::ui
