#include "controls/PickListModel.h"

#include "controls/QtText.h"

namespace vlm::ui {

int PickListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : list_.RowCount(); }

int PickListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 1 + static_cast<int>(list_.extraColumns.size());
}

QVariant PickListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    if (index.column() == 0) return ToQt(list_.TextAt(index.row()));
    try {
        return ToQt(list_.ColumnAt(index.row(), list_.extraColumns[static_cast<std::size_t>(index.column()) - 1].name));
    } catch (const std::exception&) {
        return {};  // a column that the rows do not have stays empty
    }
}

QVariant PickListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    if (section == 0) return ToQt(list_.Caption());
    return ToQt(list_.extraColumns[static_cast<std::size_t>(section) - 1].caption);
}

void PickListModel::Renew() {
    beginResetModel();
    endResetModel();
}

}  // namespace vlm::ui
