#include "Look.h"
#include "WindowDesk.h"

namespace vlm::ui::test {
namespace {

/// The grid of the dialog with numbered rows: a box, a name, the number and a hidden column.
class GridOfRows : public Windows {
protected:
    void WithRows(int count, const Deeds& deeds) {
        cells.clear();
        for (int i = 0; i < count; ++i) {
            cells.push_back({"0", "Nome " + std::to_string(i * 7919LL % 100003), std::to_string(i), ""});
        }
        dialog.model->columns[2] = {"Numero", "N", 5, true, false, true};
        dialog.model->columns.push_back({"ID", "ID", 80, false});
        grid.SetModel(nullptr);
        grid.SetModel(dialog.model);
        grid.OnCheck = [this](int row, int) {
            std::string& box = cells[static_cast<std::size_t>(row)][0];
            box = box == "1" ? "0" : "1";
            grid.Refresh();
        };
        Deeds all{[this] { TakeFocus(grid); }};
        all.insert(all.end(), deeds.begin(), deeds.end());
        Show(all);
    }
    HWND List() const { return WindowOf(grid); }
    /// The number of the current row, which is shown in its place.
    std::string Current() const {
        const int row = grid.CurrentRow();
        return row < 0 ? "none" : cells[static_cast<std::size_t>(row)][2];
    }
    std::string Number(int place) const {
        wchar_t text[16] = L"";
        LVITEMW item{};
        item.iSubItem = 2;
        item.pszText = text;
        item.cchTextMax = 16;
        SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
        return Narrow(text);
    }
    int Place() const {
        return static_cast<int>(SendMessageW(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    void ClickHead(int column) const {
        const auto head = reinterpret_cast<HWND>(SendMessageW(List(), LVM_GETHEADER, 0, 0));
        RECT place;
        SendMessageW(head, HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&place));
        Click(head, {(place.left + place.right) / 2, (place.top + place.bottom) / 2});
    }
    std::function<void()> Head(int column) {
        return [this, column] { ClickHead(column); };
    }

    Grid& grid = dialog.grdElenco;
    std::vector<std::vector<std::string>>& cells = dialog.model->cells;
};

TEST_F(GridOfRows, OpensAtOnceHoweverManyRowsThereAre) {
    WithRows(200'000, {[&] {
                           EXPECT_EQ(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0), 200'000);
                           EXPECT_LT(dialog.model->asked, 2000) << "only what is seen is asked for";
                           EXPECT_EQ(Current(), "none") << "no row is current before the user moves";
                           Keys("Down");
                       },
                       [&] {
                           EXPECT_EQ(Current(), "0");
                           Keys("End");
                       },
                       [&] {
                           EXPECT_EQ(Current(), "199999");
                           EXPECT_LT(dialog.model->asked, 5000);
                           grid.SetModel(nullptr);
                           EXPECT_EQ(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0), 0);
                           Keys("Down");
                       }});
}

TEST_F(GridOfRows, SortingKeepsEachRowItself) {
    WithRows(50, {[&] { ClickRow(List(), 3); }, [&] { EXPECT_EQ(Current(), "3"); }, Head(2), Head(2),  // descending
                  [&] {
                      EXPECT_EQ(Number(0), "49");
                      EXPECT_EQ(Current(), "3") << "the current row stays the same";
                      EXPECT_EQ(Place(), 46);
                      ClickRow(List(), 5);
                  },
                  [&] {
                      EXPECT_EQ(Current(), "44");
                      // A filter takes rows away in place; the order stays, and so does who is who.
                      cells.erase(cells.begin(), cells.begin() + 40);
                      grid.Refresh();
                      EXPECT_EQ(Current(), "none");
                      EXPECT_EQ(Number(0), "49");
                      ClickRow(List(), 9);
                  },
                  [&] { EXPECT_EQ(Current(), "40"); }, Head(2),  // the grid's own order again
                  [&] {
                      EXPECT_EQ(Number(0), "40");
                      EXPECT_EQ(Place(), 0);
                  }});
}

TEST_F(GridOfRows, BoxesAreClickedWithoutMovingTheirRow) {
    WithRows(50, {Head(2), Head(2), Head(0),  // sorted by the boxes
                  [&] {
                      RECT row{LVIR_LABEL, 0, 0, 0};
                      SendMessageW(List(), LVM_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
                      Click(List(), {row.left - 8, (row.top + row.bottom) / 2});
                  },
                  [&] {
                      EXPECT_EQ(cells[2][0], "1");
                      EXPECT_EQ(Number(2), "2") << "in its place";
                      ClickRow(List(), 4);
                  },
                  [&] {
                      EXPECT_EQ(cells[4][0], "0");
                      Keys("Space");
                  },
                  [&] {
                      EXPECT_EQ(cells[4][0], "1") << "the space bar clicks the current row's box";
                      EXPECT_EQ(Current(), "4");
                      grid.OnCheck = nullptr;
                      Keys("Space");
                  },
                  [&] { EXPECT_EQ(cells[4][0], "1"); }});
}

TEST_F(GridOfRows, WhatIsTypedIsFound) {
    WithRows(30, {[] { Keys("'nome Space 'n"); }, [&] { EXPECT_NE(Current(), "none"); }});
}

}  // namespace
}  // namespace vlm::ui::test
