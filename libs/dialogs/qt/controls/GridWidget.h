#pragma once

#include "controls/GridTable.h"
#include "controls/GridTableModel.h"
#include "qt/ControlWidget.h"

namespace vlm::ui {

class GridWidget : public ControlWidget {
public:
    GridWidget(Grid& grid, WidgetHost& host);

    QWidget& Widget() override { return *table_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {table_}; }
    bool Widens() const override { return true; }
    bool Heightens() const override { return true; }

    /// The grid's row that is shown in a place.
    int RowAt(int place) const { return rows_->RowAt(place); }
    /// Makes the next row current, after the current one in the order shown and then from the start, that has `text`
    /// in a shown column, without regard to case. False, and no change, when there is none.
    bool FindNext(const std::string& text, bool backwards);

private:
    Grid& Rows() const { return As<Grid>(Shown()); }
    void SetUpColumns();
    int WidthOf(int column) const;
    void SortBy(int column);
    void ShowCurrent();
    void TakeCurrent();
    bool Has(int row, const std::string& foldedText) const;

    GridTable* table_;
    GridTableModel* rows_;
    int version_ = -1;
    const GridModel* model_ = nullptr;
    bool showing_ = false;  // the table follows the grid, not the other way round
};

}  // namespace vlm::ui
