#include <QDialog>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <gtest/gtest.h>

#include "controls/GridWidget.h"
#include "qt/SearchBar.h"
#include "support/ControlHands.h"
#include "support/Shown.h"
#include "support/TempFolder.h"

namespace vlm::ui::test {
namespace {

/// Rows that are made when they are asked for; it counts how often that is.
class ManyRows : public GridModel {
public:
    explicit ManyRows(int count) : checked(static_cast<std::size_t>(count)) {
        for (int i = 0; i < count; ++i) shown.push_back(i);
    }
    const std::vector<Column>& Columns() const override { return columns_; }
    int RowCount() const override { return static_cast<int>(shown.size()); }
    std::string Cell(int row, int column) const override {
        ++asked;
        const int number = shown.at(static_cast<std::size_t>(row));
        if (column == 0) return checked[static_cast<std::size_t>(number)] ? "1" : "0";
        if (column == 1) return "Nome " + std::to_string(number * 7919 % 100003);
        return std::to_string(number);
    }

    std::vector<bool> checked;
    std::vector<int> shown;
    mutable int asked = 0;

private:
    std::vector<Column> columns_{{"Importa", "Importa", 50, true, true, false},
                                 {"Nome", "Nome", 130},
                                 {"Numero", "N", 5, true, false, true},
                                 {"ID", "ID", 80, false}};
};

class GridDialog : public Dialog {
public:
    explicit GridDialog(int count) : Dialog("frmGriglia", "Griglia"), rows(std::make_shared<ManyRows>(count)) {
        AddRow("", {{{&grid}}});
        SetButtons({&close}, nullptr, &close);
        grid.SetModel(rows);
        grid.OnCheck = [this](int row, int) {
            const auto number = static_cast<std::size_t>(rows->shown.at(static_cast<std::size_t>(row)));
            rows->checked[number] = !rows->checked[number];
            grid.Refresh();
        };
        close.OnChange = [this] { Close(); };
    }
    int NumberOfCurrent() const {
        return grid.CurrentRow() < 0 ? -1 : rows->shown.at(static_cast<std::size_t>(grid.CurrentRow()));
    }

    std::shared_ptr<ManyRows> rows;
    Grid grid{*this, "grdList"};
    Button close{*this, "cmdAnnulla", "Chiudi"};
};

/// Shows a dialog of so many rows.
void WithRows(int count, const std::function<void(GridDialog& dialog, QTableView& table)>& deeds) {
    Screen screen;
    GridDialog dialog(count);
    screen.Show(dialog, [&](QWidget&) { deeds(dialog, static_cast<QTableView&>(screen.WidgetOf(dialog.grid))); });
}

void ClickHead(QTableView& table, int column) {
    QHeaderView& head = *table.horizontalHeader();
    QTest::mouseClick(head.viewport(), Qt::LeftButton, {}, {head.sectionViewportPosition(column) + 12, 8});
}

void ClickCell(QTableView& table, int place, int column, QPoint offset = {}) {
    const QRect cell = table.visualRect(table.model()->index(place, column));
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, offset.isNull() ? cell.center() : cell.topLeft() + offset);
}

/// Where the box of a cell is drawn.
QPoint BoxIn(QTableView& table, int place) {
    QStyleOptionViewItem option;
    option.initFrom(&table);
    option.rect = table.visualRect(table.model()->index(place, 0));
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    return table.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &table).center() -
           option.rect.topLeft();
}

TEST(GridWindow, OpensAtOnceHoweverManyRowsThereAre) {
    WithRows(100'000, [](GridDialog& dialog, QTableView& table) {
        EXPECT_EQ(table.model()->rowCount(), 100'000);
        EXPECT_LT(dialog.rows->asked, 2000) << "only what is seen is asked for";
        QTest::keyClick(&table, Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(dialog.NumberOfCurrent(), 99'999);
        EXPECT_LT(dialog.rows->asked, 4000);
    });
}

TEST(GridWindow, ColumnsHaveTheirWidthsButNeverCutTheirTitles) {
    WithRows(3, [](GridDialog&, QTableView& table) {
        EXPECT_EQ(table.columnWidth(1), 130 * table.logicalDpiX() / 96);
        EXPECT_GE(table.columnWidth(2), table.horizontalHeader()->sectionSizeHint(2));
        EXPECT_TRUE(table.isColumnHidden(3));
    });
}

TEST(GridWindow, SortingKeepsEachRowItself) {
    WithRows(50, [](GridDialog& dialog, QTableView& table) {
        ClickCell(table, 3, 1);
        EXPECT_EQ(dialog.NumberOfCurrent(), 3);
        ClickHead(table, 2);
        ClickHead(table, 2);  // descending
        EXPECT_EQ(table.model()->index(0, 2).data().toString(), "49");
        EXPECT_EQ(dialog.NumberOfCurrent(), 3) << "the current row stays the same";
        EXPECT_EQ(table.selectionModel()->selectedRows().first().row(), 46);
        ClickCell(table, 5, 1);
        EXPECT_EQ(dialog.NumberOfCurrent(), 44);
        // A filter takes rows away in place; the order stays, and so does who is who.
        dialog.rows->shown.erase(dialog.rows->shown.begin(), dialog.rows->shown.begin() + 40);
        dialog.grid.Refresh();
        EXPECT_EQ(dialog.grid.CurrentRow(), -1);
        EXPECT_EQ(table.model()->index(0, 2).data().toString(), "49");
        ClickCell(table, 9, 1);
        EXPECT_EQ(dialog.NumberOfCurrent(), 40);
        ClickHead(table, 2);  // the grid's own order again
        EXPECT_EQ(table.model()->index(0, 2).data().toString(), "40");
        EXPECT_EQ(table.selectionModel()->selectedRows().first().row(), 0);
    });
}

TEST(GridWindow, BoxesAreClickedWithoutMovingTheirRow) {
    WithRows(50, [](GridDialog& dialog, QTableView& table) {
        ClickHead(table, 2);
        ClickHead(table, 2);
        ClickHead(table, 0);  // sorted by the boxes
        ClickCell(table, 2, 0, BoxIn(table, 2));
        EXPECT_TRUE(dialog.rows->checked[2]);
        EXPECT_EQ(table.model()->index(2, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked) << "in its place";
        ClickCell(table, 4, 1);
        EXPECT_FALSE(dialog.rows->checked[4]);
        QTest::keyClick(&table, Qt::Key_Space);
        EXPECT_TRUE(dialog.rows->checked[4]) << "the space bar clicks the current row's box";
        dialog.grid.OnCheck = nullptr;
        QTest::keyClick(&table, Qt::Key_Space);
        EXPECT_TRUE(dialog.rows->checked[4]);
    });
}

TEST(GridWindow, NoRowIsCurrentBeforeTheUserMoves) {
    WithRows(5, [](GridDialog& dialog, QTableView& table) {
        QWidget& window = *table.window();
        EXPECT_EQ(window.focusWidget(), &table);
        EXPECT_EQ(dialog.grid.CurrentRow(), -1);
        QTest::keyClick(window.focusWidget(), Qt::Key_Down);
        EXPECT_EQ(dialog.grid.CurrentRow(), 0);
        QTest::keyClick(window.focusWidget(), Qt::Key_Down);
        EXPECT_EQ(dialog.grid.CurrentRow(), 1);
        dialog.grid.SetModel(nullptr);
        EXPECT_EQ(table.model()->rowCount(), 0);
        QTest::keyClick(window.focusWidget(), Qt::Key_Down);
        ClickHead(table, 0);
    });
}

TEST(GridWindow, TheSearchGoesFromRowToRow) {
    WithRows(30, [](GridDialog& dialog, QTableView& table) {
        QWidget& window = *table.window();
        QTest::keyClick(window.focusWidget(), Qt::Key_F, Qt::ControlModifier);
        auto* field = qobject_cast<QLineEdit*>(window.focusWidget());
        ASSERT_NE(field, nullptr);
        QTest::keyClicks(field, "nome 1");
        std::vector<int> found;
        for (int i = 0; i < 4; ++i) {
            QTest::keyClick(field, Qt::Key_Return);
            found.push_back(dialog.NumberOfCurrent());
        }
        std::vector<int> all;
        for (int row = 0; row < 30; ++row) {
            if (dialog.rows->Cell(row, 1).starts_with("Nome 1")) all.push_back(row);
        }
        ASSERT_GE(all.size(), 2U);
        for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(found[i], all[i % all.size()]);
        QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_EQ(dialog.NumberOfCurrent(), all[2 % all.size()]);
        TypeOver(*field, "nessuno");
        const int before = dialog.NumberOfCurrent();
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(dialog.NumberOfCurrent(), before);
        EXPECT_FALSE(dialog.IsClosing());
    });
}

TEST(GridWindow, IsPrintedToTheFileThatTheUserNames) {
    const vlm::test::TempFolder folder;
    Screen screen;
    std::string opened;
    screen.toolkit.onPrinted = [&opened](const std::string& path) { opened = path; };
    GridDialog dialog(200);
    screen.Show(dialog, [&](QWidget&) {
        WhenUp<QFileDialog>([&](QFileDialog& chooser) {
            auto* name = chooser.findChild<QLineEdit*>("fileNameEdit");
            name->setText(QString::fromStdString(folder / "elenco"));
            QTest::keyClick(name, Qt::Key_Return);
        });
        EXPECT_TRUE(screen.toolkit.Print(dialog.grid, "Elenco"));
        EXPECT_EQ(opened, folder / "elenco.pdf");
        EXPECT_TRUE(vlm::test::ReadBytes(opened).starts_with("%PDF"));
        opened.clear();
        WhenUp<QFileDialog>([](QFileDialog& chooser) { QTest::keyClick(&chooser, Qt::Key_Escape); });
        EXPECT_TRUE(screen.toolkit.Print(dialog.grid, "Elenco")) << "a user who cancels has been served";
        EXPECT_EQ(opened, "");
    });
}

}  // namespace
}  // namespace vlm::ui::test
