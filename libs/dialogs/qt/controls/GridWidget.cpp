#include "controls/GridWidget.h"

#include <QApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <algorithm>

#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr int kDotsOfWidths = 96;  // the dots an inch that column widths are given for
constexpr int kSampledRows = 30;   // that a column's width is measured by
constexpr int kMostWidening = 2;
constexpr int kCellMargins = 10;  // pixels

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

/// A column has its width, and more where its title or its first rows would be cut; those at most twice the width.
int GridWidget::WidthOf(int column) const {
    const GridModel::Column& given = Rows().Model()->Columns()[static_cast<std::size_t>(column)];
    const int width = given.width * table_->logicalDpiX() / kDotsOfWidths;
    int texts = 0;
    for (int row = 0; row < std::min(kSampledRows, Rows().RowCount()) && !given.checkBox; ++row) {
        const QString text = rows_->index(row, column).data().toString();
        texts = std::max(texts, table_->fontMetrics().horizontalAdvance(text) + kCellMargins);
    }
    const int widened = std::clamp(texts, width, kMostWidening * width);
    return std::max(widened, table_->horizontalHeader()->sectionSizeHint(column));
}

void GridWidget::SetUpColumns() {
    if (Rows().Model() == nullptr) return;
    QHeaderView& header = *table_->horizontalHeader();
    const std::vector<GridModel::Column>& columns = Rows().Model()->Columns();
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        const bool visible = columns[static_cast<std::size_t>(i)].visible;
        header.setSectionHidden(i, !visible);
        if (visible) header.resizeSection(i, WidthOf(i));
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
