#include "controls/GridTableModel.h"

#include <QFontDatabase>

#include "controls/QtText.h"

namespace vlm::ui {

const std::vector<GridModel::Column>& GridTableModel::Columns() const {
    static const std::vector<GridModel::Column> none;
    return grid_.Model() != nullptr ? grid_.Model()->Columns() : none;
}

const GridModel::Column& GridTableModel::ColumnAt(int section) const {
    return Columns()[static_cast<std::size_t>(section)];
}

int GridTableModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int GridTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Columns().size());
}

std::string GridTableModel::CellAt(const QModelIndex& index) const {
    const int row = RowAt(index.row());
    if (row >= grid_.RowCount()) return {};
    try {
        return grid_.Model()->Cell(row, index.column());
    } catch (const std::exception&) {
        return {};  // painting goes on without the cell
    }
}

QVariant GridTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const GridModel::Column& column = ColumnAt(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return column.checkBox ? QVariant() : ToQt(CellAt(index));
        case Qt::CheckStateRole:
            if (!column.checkBox) return {};
            return CellAt(index) == "1" ? Qt::Checked : Qt::Unchecked;
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignVCenter | (column.rightAligned ? Qt::AlignRight : Qt::AlignLeft));
        case Qt::FontRole:
            return column.evenFont ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QVariant();
        default:
            return {};
    }
}

QVariant GridTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount()) return {};
    const GridModel::Column& column = ColumnAt(section);
    if (role == Qt::DisplayRole) return ToQt(column.title);
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::AlignVCenter | (column.rightAligned ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

Qt::ItemFlags GridTableModel::flags(const QModelIndex& index) const {
    const bool clickable = index.isValid() && ColumnAt(index.column()).checkBox && grid_.OnCheck;
    return QAbstractTableModel::flags(index) | (clickable ? Qt::ItemIsUserCheckable : Qt::NoItemFlags);
}

/// A row whose box was clicked keeps its place under the mouse.
bool GridTableModel::setData(const QModelIndex& index, const QVariant& /*value*/, int role) {
    if (role != Qt::CheckStateRole || !index.isValid()) return false;
    checking_ = true;
    onCheck(RowAt(index.row()), index.column());
    checking_ = false;
    return true;
}

void GridTableModel::SortNext(int column) {
    const bool again = column == sortColumn_;
    if (again && descending_) {
        sortColumn_ = -1;
    } else {
        sortColumn_ = column;
    }
    descending_ = again && sortColumn_ >= 0;
    beginResetModel();
    Sort();
    endResetModel();
}

void GridTableModel::Sort() {
    sortColumn_ >= 0 ? order_.Sort(*grid_.Model(), sortColumn_, descending_) : order_.Clear();
}

void GridTableModel::Renew() {
    const bool sameRows = model_ == grid_.Model() && rows_ == grid_.RowCount();
    if (sameRows && (checking_ || sortColumn_ < 0)) {
        if (rows_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
        return;
    }
    beginResetModel();
    if (model_ != grid_.Model()) sortColumn_ = -1;
    model_ = grid_.Model();
    rows_ = grid_.RowCount();
    Sort();
    endResetModel();
}

}  // namespace vlm::ui
