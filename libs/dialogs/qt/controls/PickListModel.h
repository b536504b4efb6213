#pragma once

#include <QAbstractTableModel>

#include "dialogs/PickList.h"

namespace vlm::ui {

/// The rows of a pick list: its text, and its extra columns beside it. Cells are asked for as they are painted.
class PickListModel : public QAbstractTableModel {
public:
    PickListModel(const PickList& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// The list's rows are others now.
    void Renew();

private:
    const PickList& list_;
};

}  // namespace vlm::ui
