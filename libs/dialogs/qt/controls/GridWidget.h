#pragma once

#include <QTableView>

#include "controls/ControlWidgets.h"
#include "controls/GridTableModel.h"

namespace vlm::ui {

/// A table of rows, of which one or none is current. The arrow keys start at the first row; the space bar clicks the
/// current row's selection box wherever the row was clicked.
class GridTable : public QTableView {
public:
    explicit GridTable(QWidget* parent = nullptr);
    /// -1 when no row is current.
    int CurrentPlace() const;
    void MakeCurrent(int place);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// The selection box of the current row; an index that is not valid for none.
    QModelIndex CurrentBox() const;
};

class GridWidget : public WidgetOf<Grid, GridTable> {
public:
    GridWidget(Grid& grid, WidgetHost& host);

    void Refresh() override;
    bool Widens() const override { return true; }
    bool Heightens() const override { return true; }

    /// The grid's row that is shown in a place.
    int RowAt(int place) const { return rows_->RowAt(place); }
    /// Makes the next row current, after the current one in the order shown and then from the start, that has `text`
    /// in a shown column, without regard to case. False, and no change, when there is none.
    bool FindNext(const std::string& text, bool backwards);

private:
    void SetUpColumns();
    int WidthOf(int column) const;
    void SortBy(int column);
    void ShowCurrent();
    void TakeCurrent();
    bool Has(int row, const std::string& foldedText) const;

    GridTableModel* rows_;
    int version_ = -1;
    const GridModel* model_ = nullptr;
    bool showing_ = false;  // the table follows the grid, not the other way round
};

}  // namespace vlm::ui
