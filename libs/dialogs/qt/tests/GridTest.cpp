#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

#include "support/TempFolder.h"
#include "support/WindowDesk.h"

namespace vlm::ui::test {
namespace {

/// The grid of the dialog with numbered rows: a box, a name, the number and a hidden column.
class GridWindow : public Windows {
protected:
    void WithRows(int count, const std::function<void(QTableView& table)>& deeds) {
        cells.clear();
        for (int i = 0; i < count; ++i) {
            cells.push_back({"0", "Nome " + std::to_string(i * 7919 % 100003), std::to_string(i), ""});
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
        Show([&](QWidget&) {
            Of(grid).TakeFocus();
            deeds(static_cast<QTableView&>(WidgetOf(grid)));
        });
    }
    /// The number of the current row, which is shown in its place.
    std::string Current() const {
        const int row = grid.CurrentRow();
        return row < 0 ? "none" : cells[static_cast<std::size_t>(row)][2];
    }

    Grid& grid = dialog.grdElenco;
    std::vector<std::vector<std::string>>& cells = dialog.model->cells;
};

void ClickHead(QTableView& table, int column) {
    QHeaderView& head = *table.horizontalHeader();
    QTest::mouseClick(head.viewport(), Qt::LeftButton, {}, {head.sectionViewportPosition(column) + 12, 8});
}

void ClickName(QTableView& table, int place) { ClickItem(table, table.model()->index(place, 1)); }

std::string FirstNumber(const QTableView& table) { return FromQt(table.model()->index(0, 2).data().toString()); }

int Place(const QTableView& table) { return table.selectionModel()->selectedRows().first().row(); }

TEST_F(GridWindow, OpensAtOnceHoweverManyRowsThereAre) {
    WithRows(100'000, [&](QTableView& table) {
        EXPECT_EQ(table.model()->rowCount(), 100'000);
        EXPECT_LT(dialog.model->asked, 2000) << "only what is seen is asked for";
        for (const char* row : {"none", "0", "1"}) {
            EXPECT_EQ(Current(), row) << "no row is current before the user moves";
            Keys("Down");
        }
        Keys("Ctrl+End");
        EXPECT_EQ(Current(), "99999");
        EXPECT_LT(dialog.model->asked, 5000);
        EXPECT_EQ(table.columnWidth(1), 100 * table.logicalDpiX() / 96);
        EXPECT_GE(table.columnWidth(0), table.horizontalHeader()->sectionSizeHint(0)) << "no title is cut";
        EXPECT_TRUE(table.isColumnHidden(3));
        grid.SetModel(nullptr);
        EXPECT_EQ(table.model()->rowCount(), 0);
        Keys("Down");
        ClickHead(table, 0);
    });
}

TEST_F(GridWindow, SortingKeepsEachRowItself) {
    WithRows(50, [&](QTableView& table) {
        ClickName(table, 3);
        EXPECT_EQ(Current(), "3");
        for (const int column : {2, 2}) ClickHead(table, column);  // descending
        EXPECT_EQ(FirstNumber(table), "49");
        EXPECT_EQ(Current(), "3") << "the current row stays the same";
        EXPECT_EQ(Place(table), 46);
        ClickName(table, 5);
        EXPECT_EQ(Current(), "44");
        // A filter takes rows away in place; the order stays, and so does who is who.
        cells.erase(cells.begin(), cells.begin() + 40);
        grid.Refresh();
        EXPECT_EQ(Current(), "none");
        EXPECT_EQ(FirstNumber(table), "49");
        ClickName(table, 9);
        EXPECT_EQ(Current(), "40");
        ClickHead(table, 2);  // the grid's own order again
        EXPECT_EQ(FirstNumber(table), "40");
        EXPECT_EQ(Place(table), 0);
    });
}

TEST_F(GridWindow, BoxesAreClickedWithoutMovingTheirRow) {
    WithRows(50, [&](QTableView& table) {
        for (const int column : {2, 2, 0}) ClickHead(table, column);  // sorted by the boxes
        QStyleOptionViewItem option;
        option.initFrom(&table);
        option.rect = table.visualRect(table.model()->index(2, 0));
        option.features = QStyleOptionViewItem::HasCheckIndicator;
        const QRect box = table.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &table);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, box.center());
        EXPECT_EQ(cells[2][0], "1");
        EXPECT_EQ(table.model()->index(2, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked) << "in its place";
        ClickName(table, 4);
        EXPECT_EQ(cells[4][0], "0");
        Keys("Space");
        EXPECT_EQ(cells[4][0], "1") << "the space bar clicks the current row's box";
        grid.OnCheck = nullptr;
        Keys("Space");
        EXPECT_EQ(cells[4][0], "1");
    });
}

TEST_F(GridWindow, TheSearchGoesFromRowToRow) {
    WithRows(30, [&](QTableView&) {
        Keys("Ctrl+F");
        TypeOver("nome 1");
        for (const auto& [key, found] :
             {std::pair{"Return", "2"}, std::pair{"Return", "14"}, std::pair{"Return", "15"}, std::pair{"Return", "27"},
              std::pair{"Return", "2"}, std::pair{"Shift+Return", "27"}, std::pair{"Ctrl+A 'nessuno Return", "27"}}) {
            Keys(key);
            EXPECT_EQ(Current(), found);
        }
        EXPECT_FALSE(dialog.IsClosing());
    });
}

TEST_F(GridWindow, IsPrintedToTheFileThatTheUserNames) {
    const vlm::test::TempFolder folder;
    std::string opened;
    toolkit.onPrinted = [&opened](const std::string& path) { opened = path; };
    WithRows(200, [&](QTableView&) {
        WhenUp<QFileDialog>([&](QFileDialog& chooser) {
            chooser.findChild<QLineEdit*>("fileNameEdit")->setText(ToQt(folder / "elenco"));
            Keys("Return");
        });
        EXPECT_TRUE(toolkit.Print(grid, "Elenco"));
        EXPECT_EQ(opened, folder / "elenco.pdf");
        EXPECT_TRUE(vlm::test::ReadBytes(opened).starts_with("%PDF"));
        opened.clear();
        WhenUp<QFileDialog>([](QFileDialog&) { Keys("Esc"); });
        EXPECT_TRUE(toolkit.Print(grid, "Elenco")) << "a user who cancels has been served";
        EXPECT_EQ(opened, "");
    });
}

}  // namespace
}  // namespace vlm::ui::test
