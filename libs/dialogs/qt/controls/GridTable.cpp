#include "controls/GridTable.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>

namespace vlm::ui {

namespace {

constexpr int kNarrowest = 480;  // pixels, as are the next three
constexpr int kWidest = 960;
constexpr int kHeight = 420;
constexpr int kRowPadding = 6;

bool StartsMoving(int key) {
    return key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown || key == Qt::Key_PageUp;
}

}  // namespace

GridTable::GridTable(QWidget* parent) : QTableView(parent) {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
}

int GridTable::CurrentPlace() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void GridTable::MakeCurrent(int place) {
    if (place == CurrentPlace()) return;
    if (place < 0) return selectionModel()->clear();
    const int column = currentIndex().isValid() ? currentIndex().column() : 0;
    const QModelIndex index = model()->index(place, column);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

QModelIndex GridTable::CurrentBox() const {
    const int place = CurrentPlace();
    for (int column = 0; place >= 0 && column < model()->columnCount(); ++column) {
        const QModelIndex index = model()->index(place, column);
        if (index.flags() & Qt::ItemIsUserCheckable) return index;
    }
    return {};
}

void GridTable::keyPressEvent(QKeyEvent* event) {
    const QModelIndex box = event->key() == Qt::Key_Space ? CurrentBox() : QModelIndex();
    if (box.isValid()) {
        const bool checked = box.data(Qt::CheckStateRole) == Qt::Checked;
        model()->setData(box, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    } else if (CurrentPlace() < 0 && StartsMoving(event->key()) && model()->rowCount() > 0) {
        MakeCurrent(0);
    } else {
        QTableView::keyPressEvent(event);
    }
}

QSize GridTable::sizeHint() const {
    const int columns = horizontalHeader()->length() + 2 * frameWidth() + 24;  // and a scroll bar
    return {std::clamp(columns, kNarrowest, kWidest), kHeight};
}

}  // namespace vlm::ui
