#include "platform/ui/qt/controls/GridWidget.h"

#include <QApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <algorithm>

#include "platform/text/Utf8.h"

namespace vlm::ui {

namespace {

constexpr int kDotsOfWidths = 96;  // the dots an inch that column widths are given for

}  // namespace

GridWidget::GridWidget(Grid& grid, WidgetHost& host)
    : ControlWidget(grid, host), table_(new GridTable), rows_(new GridTableModel(grid, table_)) {
    table_->setModel(rows_);
    rows_->onCheck = [this](int row, int column) { Host().Act([this, row, column] { Rows().Check(row, column); }); };
    QObject::connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, [this] { TakeCurrent(); });
    QObject::connect(table_->horizontalHeader(), &QHeaderView::sectionClicked, [this](int column) { SortBy(column); });
    QObject::connect(table_, &QAbstractItemView::doubleClicked, [this] {
        Host().Act([this] {
            if (Rows().OnChange) Rows().OnChange();
        });
    });
}

void GridWidget::Refresh() {
    if (version_ != Rows().Version()) {
        const QScopedValueRollback following(showing_, true);
        version_ = Rows().Version();
        rows_->Renew();
        if (model_ != Rows().Model()) SetUpColumns();
        model_ = Rows().Model();
    }
    ShowCurrent();
}

/// A column is never narrower than its title.
void GridWidget::SetUpColumns() {
    if (Rows().Model() == nullptr) return;
    QHeaderView& header = *table_->horizontalHeader();
    const std::vector<GridModel::Column>& columns = Rows().Model()->Columns();
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        const GridModel::Column& column = columns[static_cast<std::size_t>(i)];
        const int width = column.width * table_->logicalDpiX() / kDotsOfWidths;
        header.setSectionHidden(i, !column.visible);
        if (column.visible) header.resizeSection(i, std::max(width, header.sectionSizeHint(i)));
    }
    header.setSortIndicatorShown(false);
    table_->updateGeometry();
}

void GridWidget::SortBy(int column) {
    if (Rows().Model() == nullptr) return;
    {
        const QScopedValueRollback following(showing_, true);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        rows_->SortNext(column);
        QApplication::restoreOverrideCursor();
        QHeaderView& header = *table_->horizontalHeader();
        header.setSortIndicatorShown(rows_->SortColumn() >= 0);
        if (rows_->SortColumn() >= 0) {
            header.setSortIndicator(column, rows_->Descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
        }
    }
    ShowCurrent();
}

void GridWidget::ShowCurrent() {
    const QScopedValueRollback following(showing_, true);
    const int row = Rows().CurrentRow();
    table_->MakeCurrent(row < 0 ? -1 : rows_->PlaceOf(row));
}

void GridWidget::TakeCurrent() {
    if (showing_) return;
    const int place = table_->CurrentPlace();
    Host().Act([this, place] { Rows().SetCurrentRow(place < 0 ? -1 : rows_->RowAt(place)); });
}

bool GridWidget::Has(int row, const std::string& foldedText) const {
    const std::vector<GridModel::Column>& columns = Rows().Model()->Columns();
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        const GridModel::Column& column = columns[static_cast<std::size_t>(i)];
        if (!column.visible || column.checkBox) continue;
        if (text::FoldCase(Rows().Model()->Cell(row, i)).find(foldedText) != std::string::npos) return true;
    }
    return false;
}

bool GridWidget::FindNext(const std::string& text, bool backwards) {
    const int count = Rows().RowCount();
    const std::string folded = text::FoldCase(text);
    const int start = table_->CurrentPlace() < 0 && backwards ? 0 : table_->CurrentPlace();
    for (int step = 1; step <= count; ++step) {
        const int place = ((backwards ? start - step : start + step) % count + count) % count;
        const int row = rows_->RowAt(place);
        if (!Has(row, folded)) continue;
        Host().Act([this, row] { Rows().SetCurrentRow(row); });
        return true;
    }
    return false;
}

}  // namespace vlm::ui
