#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <gtest/gtest.h>

#include "support/ControlHands.h"
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
    /// The number of the current row.
    std::string Current() const {
        return grid.CurrentRow() < 0 ? "none" : cells[static_cast<std::size_t>(grid.CurrentRow())][2];
    }

    Grid& grid = dialog.grdElenco;
    std::vector<std::vector<std::string>>& cells = dialog.model->cells;
};

void ClickHead(QTableView& table, int column) {
    QHeaderView& head = *table.horizontalHeader();
    QTest::mouseClick(head.viewport(), Qt::LeftButton, {}, {head.sectionViewportPosition(column) + 12, 8});
}

void ClickCell(QTableView& table, int place, int column) {
    const QModelIndex cell = table.model()->index(place, column);
    table.scrollTo(cell);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(cell).center());
}

void ClickBox(QTableView& table, int place) {
    QStyleOptionViewItem option;
    option.initFrom(&table);
    option.rect = table.visualRect(table.model()->index(place, 0));
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    const QRect box = table.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &table);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, box.center());
}

TEST_F(GridWindow, OpensAtOnceHoweverManyRowsThereAre) {
    WithRows(100'000, [&](QTableView& table) {
        EXPECT_EQ(table.model()->rowCount(), 100'000);
        EXPECT_LT(dialog.model->asked, 2000) << "only what is seen is asked for";
        QTest::keyClick(&table, Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(Current(), "99999");
        EXPECT_LT(dialog.model->asked, 4000);
    });
}

TEST_F(GridWindow, ColumnsHaveTheirWidthsButNeverCutTheirTitles) {
    WithRows(3, [&](QTableView& table) {
        EXPECT_EQ(table.columnWidth(1), 100 * table.logicalDpiX() / 96);
        EXPECT_GE(table.columnWidth(0), table.horizontalHeader()->sectionSizeHint(0));
        EXPECT_TRUE(table.isColumnHidden(3));
    });
}

TEST_F(GridWindow, SortingKeepsEachRowItself) {
    WithRows(50, [&](QTableView& table) {
        const auto first = [&table] { return table.model()->index(0, 2).data().toString(); };
        const auto place = [&table] { return table.selectionModel()->selectedRows().first().row(); };
        ClickCell(table, 3, 1);
        EXPECT_EQ(Current(), "3");
        ClickHead(table, 2);
        ClickHead(table, 2);  // descending
        EXPECT_EQ(first(), "49");
        EXPECT_EQ(Current(), "3") << "the current row stays the same";
        EXPECT_EQ(place(), 46);
        ClickCell(table, 5, 1);
        EXPECT_EQ(Current(), "44");
        // A filter takes rows away in place; the order stays, and so does who is who.
        cells.erase(cells.begin(), cells.begin() + 40);
        grid.Refresh();
        EXPECT_EQ(Current(), "none");
        EXPECT_EQ(first(), "49");
        ClickCell(table, 9, 1);
        EXPECT_EQ(Current(), "40");
        ClickHead(table, 2);  // the grid's own order again
        EXPECT_EQ(first(), "40");
        EXPECT_EQ(place(), 0);
    });
}

TEST_F(GridWindow, BoxesAreClickedWithoutMovingTheirRow) {
    WithRows(50, [&](QTableView& table) {
        for (const int column : {2, 2, 0}) ClickHead(table, column);  // sorted by the boxes
        ClickBox(table, 2);
        EXPECT_EQ(cells[2][0], "1");
        EXPECT_EQ(table.model()->index(2, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked) << "in its place";
        ClickCell(table, 4, 1);
        EXPECT_EQ(cells[4][0], "0");
        QTest::keyClick(&table, Qt::Key_Space);
        EXPECT_EQ(cells[4][0], "1") << "the space bar clicks the current row's box";
        grid.OnCheck = nullptr;
        QTest::keyClick(&table, Qt::Key_Space);
        EXPECT_EQ(cells[4][0], "1");
    });
}

TEST_F(GridWindow, NoRowIsCurrentBeforeTheUserMoves) {
    WithRows(5, [&](QTableView& table) {
        for (const char* row : {"none", "0", "1"}) {
            EXPECT_EQ(Current(), row);
            QTest::keyClick(&table, Qt::Key_Down);
        }
        grid.SetModel(nullptr);
        EXPECT_EQ(table.model()->rowCount(), 0);
        QTest::keyClick(&table, Qt::Key_Down);
        ClickHead(table, 0);
    });
}

TEST_F(GridWindow, TheSearchGoesFromRowToRow) {
    WithRows(30, [&](QTableView& table) {
        QTest::keyClick(&table, Qt::Key_F, Qt::ControlModifier);
        auto* field = qobject_cast<QLineEdit*>(table.window()->focusWidget());
        ASSERT_NE(field, nullptr);
        QTest::keyClicks(field, "nome 1");
        for (const char* found : {"2", "14", "15", "27", "2"}) {
            QTest::keyClick(field, Qt::Key_Return);
            EXPECT_EQ(Current(), found);
        }
        QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_EQ(Current(), "27");
        TypeOver(*field, "nessuno");
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(Current(), "27");
        EXPECT_FALSE(dialog.IsClosing());
    });
}

TEST_F(GridWindow, IsPrintedToTheFileThatTheUserNames) {
    const vlm::test::TempFolder folder;
    std::string opened;
    toolkit.onPrinted = [&opened](const std::string& path) { opened = path; };
    WithRows(200, [&](QTableView&) {
        WhenUp<QFileDialog>([&](QFileDialog& chooser) {
            auto* name = chooser.findChild<QLineEdit*>("fileNameEdit");
            name->setText(QString::fromStdString(folder / "elenco"));
            QTest::keyClick(name, Qt::Key_Return);
        });
        EXPECT_TRUE(toolkit.Print(grid, "Elenco"));
        EXPECT_EQ(opened, folder / "elenco.pdf");
        EXPECT_TRUE(vlm::test::ReadBytes(opened).starts_with("%PDF"));
        opened.clear();
        WhenUp<QFileDialog>([](QFileDialog& chooser) { QTest::keyClick(&chooser, Qt::Key_Escape); });
        EXPECT_TRUE(toolkit.Print(grid, "Elenco")) << "a user who cancels has been served";
        EXPECT_EQ(opened, "");
    });
}

}  // namespace
}  // namespace vlm::ui::test
