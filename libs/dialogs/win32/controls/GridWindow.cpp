#include <algorithm>
#include <uxtheme.h>

#include "controls/ControlWindows.h"
#include "controls/GridRows.h"

namespace vlm::ui {

namespace {

constexpr int kSampledRows = 30;  // that a column's width is measured by
constexpr int kMostWidening = 2;
constexpr int kCellMargins = 14;  // pixels at 96 dots an inch, as are the next ones
constexpr int kHeadMargins = 26;  // with room for the sort arrow
constexpr int kNarrowestGrid = 480;
constexpr int kWidestGrid = 960;
constexpr int kGridHeight = 360;
constexpr int kLeastGridHeight = 120;
constexpr COLORREF kOtherRows = RGB(245, 248, 252);

UINT StateImage(bool checked) { return INDEXTOSTATEIMAGEMASK(checked ? 2U : 1U); }

/// A list of the system's that asks for the cells that it paints. One row or none is current; the space bar clicks its
/// selection box wherever the row was clicked.
class GridWindow : public WindowOf<Grid> {
public:
    GridWindow(Control& control, WindowHost& host) : WindowOf(control, host), rows_(WindowOf::Shown()) {}
    void Create() override {
        Make(WC_LISTVIEWW, L"", LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_TABSTOP | WS_GROUP,
             WS_EX_CLIENTEDGE);
        constexpr DWORD kStyles = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
        SendMessageW(First(), LVM_SETEXTENDEDLISTVIEWSTYLE, 0, kStyles);
        SendMessageW(First(), LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK, 0);
        SetWindowTheme(First(), L"Explorer", nullptr);
    }
    void Refresh() override {
        if (version_ != Shown().Version()) {
            version_ = Shown().Version();
            showing_ = true;
            const bool columns = rows_.Renew(checking_);
            if (columns) SetUpColumns();
            SendMessageW(First(), LVM_SETITEMCOUNT, static_cast<WPARAM>(rows_.Count()),
                         columns ? 0 : LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
            InvalidateRect(First(), nullptr, FALSE);
            showing_ = false;
        }
        ShowCurrent();
    }
    SIZE Natural() const override {
        const LONG columns =
            std::clamp(columnsWidth_ + Looks().Pixels(24), Looks().Pixels(kNarrowestGrid), Looks().Pixels(kWidestGrid));
        return {columns, Looks().Pixels(kGridHeight)};
    }
    SIZE Least() const override { return {Looks().Pixels(kNarrowestGrid) / 2, Looks().Pixels(kLeastGridHeight)}; }
    bool Widens() const override { return true; }
    bool Heightens() const override { return true; }
    HWND FocusStop() const override { return First(); }
    void Rescale() override {
        WindowOf::Rescale();
        SetUpColumns();
    }
    LRESULT Notify(NMHDR& notice) override {
        switch (notice.code) {
            case LVN_GETDISPINFOW:
                Fill(reinterpret_cast<NMLVDISPINFOW&>(notice).item);
                return 0;
            case LVN_ODFINDITEMW: {
                const auto& find = reinterpret_cast<const NMLVFINDITEMW&>(notice);
                const bool byText = (find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) != 0;
                return byText ? rows_.FindFrom(find.iStart, Narrow(find.lvfi.psz)) : -1;
            }
            case LVN_ITEMCHANGED:
            case LVN_ODSTATECHANGED:
                if (!showing_) Host().Later(*this);
                return 0;
            case LVN_COLUMNCLICK:
                SortBy(reinterpret_cast<const NMLISTVIEW&>(notice).iSubItem);
                return 0;
            case LVN_KEYDOWN:
                if (reinterpret_cast<const NMLVKEYDOWN&>(notice).wVKey == VK_SPACE) ClickBox(CurrentPlace());
                return 0;
            case NM_CLICK:
            case NM_DBLCLK:
                Clicked(reinterpret_cast<const NMITEMACTIVATE&>(notice), notice.code == NM_DBLCLK);
                return 0;
            case NM_CUSTOMDRAW:
                return notice.hwndFrom == First() ? Paint(reinterpret_cast<NMLVCUSTOMDRAW&>(notice)) : CDRF_DODEFAULT;
            default:
                return 0;
        }
    }
    /// The user chose a row: between two of them none is current for a moment, of which nothing is told.
    void Settled() override {
        const int place = CurrentPlace();
        const int row = place < 0 ? -1 : rows_.RowAt(place);
        if (row != Shown().CurrentRow()) Host().Act([this, row] { Shown().SetCurrentRow(row); });
    }

protected:
    /// The space bar searches no text that begins with a blank.
    std::optional<LRESULT> Received(HWND, UINT message, WPARAM wParam, LPARAM) override {
        return message == WM_CHAR && wParam == L' ' ? std::optional<LRESULT>(0) : std::nullopt;
    }

private:
    int CurrentPlace() const {
        return static_cast<int>(
            SendMessageW(First(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), MAKELPARAM(LVNI_SELECTED, 0)));
    }
    void SetState(int place, UINT state) {
        LVITEMW item{};
        item.state = state;
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(First(), LVM_SETITEMSTATE, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
    }
    void ShowCurrent() {
        const int row = Shown().CurrentRow();
        const int place = row < 0 ? -1 : rows_.PlaceOf(row);
        if (place == CurrentPlace()) return;
        showing_ = true;
        SetState(-1, 0);
        if (place >= 0) {
            SetState(place, LVIS_SELECTED | LVIS_FOCUSED);
            SendMessageW(First(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(place), FALSE);
        }
        showing_ = false;
    }

    void Fill(LVITEMW& item) {
        if ((item.mask & LVIF_TEXT) != 0) {
            const bool box = item.iSubItem == 0 && rows_.HasBoxes();
            text_ = box ? std::wstring() : Wide(rows_.Cell(item.iItem, item.iSubItem));
            item.pszText = text_.data();
        }
        if ((item.mask & LVIF_STATE) != 0 && rows_.HasBoxes()) {
            item.stateMask |= LVIS_STATEIMAGEMASK;
            item.state =
                (item.state & ~static_cast<UINT>(LVIS_STATEIMAGEMASK)) | StateImage(rows_.IsChecked(item.iItem));
        }
    }
    LRESULT Paint(NMLVCUSTOMDRAW& draw) const {
        switch (draw.nmcd.dwDrawStage) {
            case CDDS_PREPAINT:
                return CDRF_NOTIFYITEMDRAW;
            case CDDS_ITEMPREPAINT:
                if (draw.nmcd.dwItemSpec % 2 == 1) draw.clrTextBk = kOtherRows;
                return CDRF_NOTIFYSUBITEMDRAW;
            case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
                const bool there = draw.iSubItem >= 0 && draw.iSubItem < static_cast<int>(rows_.Columns().size());
                const bool even = there && rows_.ColumnAt(draw.iSubItem).evenFont;
                SelectObject(draw.nmcd.hdc, even ? Looks().EvenFont() : Looks().Font());
                return CDRF_NEWFONT;
            }
            default:
                return CDRF_DODEFAULT;
        }
    }

    /// A column has its width, and more where its title or its first rows would be cut; those at most twice the width.
    int WidthOf(int shown) const {
        const GridModel::Column& column = rows_.ColumnAt(shown);
        const int width = Looks().Pixels(column.width);
        LONG texts = 0;
        for (int place = 0; place < std::min(kSampledRows, rows_.Count()) && !column.checkBox; ++place) {
            texts = std::max(texts, Looks().Measure(Wide(rows_.Cell(place, shown))).cx + Looks().Pixels(kCellMargins));
        }
        const int widened = std::clamp(static_cast<int>(texts), width, kMostWidening * width);
        return std::max<int>(widened, Looks().Measure(Wide(column.title)).cx + Looks().Pixels(kHeadMargins));
    }
    void SetUpColumns() {
        while (SendMessageW(First(), LVM_DELETECOLUMN, 0, 0) != FALSE) {
        }
        SendMessageW(First(), LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES,
                     rows_.HasBoxes() ? LVS_EX_CHECKBOXES : 0);
        const auto count = static_cast<int>(rows_.Columns().size());
        columnsWidth_ = 0;
        for (int i = 0; i < count; ++i) {
            const GridModel::Column& column = rows_.ColumnAt(i);
            std::wstring title = Wide(column.title);
            LVCOLUMNW made{};
            made.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
            made.fmt = column.rightAligned ? LVCFMT_RIGHT : LVCFMT_LEFT;
            made.cx = WidthOf(i);
            made.iSubItem = i;
            made.pszText = title.data();
            SendMessageW(First(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&made));
            columnsWidth_ += made.cx;
        }
        std::vector<int> order(rows_.Columns().size());
        for (int i = 0; i < count; ++i) order[static_cast<std::size_t>(i)] = i;
        if (count > 0) std::rotate(order.begin(), order.begin() + 1, order.begin() + 1 + rows_.PlaceOfFirst());
        SendMessageW(First(), LVM_SETCOLUMNORDERARRAY, static_cast<WPARAM>(count),
                     reinterpret_cast<LPARAM>(order.data()));
    }
    void ShowArrows() {
        const auto head = reinterpret_cast<HWND>(SendMessageW(First(), LVM_GETHEADER, 0, 0));
        for (int i = 0; i < static_cast<int>(rows_.Columns().size()); ++i) {
            HDITEMW item{};
            item.mask = HDI_FORMAT;
            SendMessageW(head, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
            item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
            if (i == rows_.SortColumn()) item.fmt |= rows_.Descending() ? HDF_SORTDOWN : HDF_SORTUP;
            SendMessageW(head, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
    }
    void SortBy(int shown) {
        const HCURSOR before = SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
        Host().Act([this, shown] { rows_.SortNext(shown); });
        SetCursor(before);
        ShowArrows();
        InvalidateRect(First(), nullptr, FALSE);
        ShowCurrent();
    }

    void Clicked(const NMITEMACTIVATE& click, bool twice) {
        LVHITTESTINFO hit{};
        hit.pt = click.ptAction;
        SendMessageW(First(), LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
        if (hit.iItem >= 0 && (hit.flags & LVHT_ONITEM) == LVHT_ONITEMSTATEICON) return ClickBox(hit.iItem);
        if (!twice || hit.iItem < 0) return;
        Settled();
        Host().Act([this] {
            if (Shown().OnChange) Shown().OnChange();
        });
    }
    void ClickBox(int place) {
        if (place < 0 || !rows_.HasBoxes()) return;
        const int row = rows_.RowAt(place);
        const int column = rows_.Columns().front();
        Settled();
        checking_ = true;
        Host().Act([this, row, column] { Shown().Check(row, column); });
        checking_ = false;
    }

    GridRows rows_;
    int version_ = -1;
    int columnsWidth_ = 0;
    bool showing_ = false;  // the list follows the grid, not the other way round
    bool checking_ = false;
    std::wstring text_;  // of the cell that was asked for last
};

}  // namespace

std::unique_ptr<ControlWindow> MakeGrid(Control& control, WindowHost& host) {
    return std::make_unique<GridWindow>(control, host);
}

}  // namespace vlm::ui
