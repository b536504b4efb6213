#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "dialogs/Grid.h"

namespace vlm::ui {

/// A grid's rows for a table: cells are asked for as they are painted. The table's places follow the order that the
/// user sorted by; rows keep their numbers in the grid.
class GridTableModel : public QAbstractTableModel {
public:
    GridTableModel(const Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    /// A click on the column's head: ascending, then descending, then the grid's own order. The order stays when rows
    /// change.
    void SortNext(int column);
    int SortColumn() const noexcept { return sortColumn_; }  // -1 for the grid's own order
    bool Descending() const noexcept { return descending_; }
    int RowAt(int place) const noexcept { return order_.RowAt(place); }
    int PlaceOf(int row) const noexcept { return order_.PlaceOf(row); }

    /// The grid's rows or cells changed; other columns put the rows in the grid's own order.
    void Renew();
    /// What a click on a selection box does to the grid.
    std::function<void(int row, int column)> onCheck;

private:
    const std::vector<GridModel::Column>& Columns() const;
    const GridModel::Column& ColumnAt(int section) const;
    std::string CellAt(const QModelIndex& index) const;
    void Sort();

    const Grid& grid_;
    RowOrder order_;
    int sortColumn_ = -1;
    bool descending_ = false;
    bool checking_ = false;
    // What the table knows of.
    int rows_ = 0;
    const GridModel* model_ = nullptr;
};

}  // namespace vlm::ui
