#include "controls/GridWidget.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <algorithm>

#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr int kDotsOfWidths = 96;  // the dots an inch that column widths are given for
constexpr int kSampledRows = 30;   // that a column's width is measured by
constexpr int kMostWidening = 2;
constexpr int kCellMargins = 10;  // pixels

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

GridWidget::GridWidget(Grid& grid, WidgetHost& host)
    : WidgetOf(grid, host, new GridTable), rows_(new GridTableModel(grid, widget_)) {
    widget_->setModel(rows_);
    rows_->onCheck = [this](int row, int column) { Host().Act([this, row, column] { Shown().Check(row, column); }); };
    QObject::connect(widget_->selectionModel(), &QItemSelectionModel::selectionChanged, [this] { TakeCurrent(); });
    QObject::connect(widget_->horizontalHeader(), &QHeaderView::sectionClicked, [this](int column) { SortBy(column); });
    QObject::connect(widget_, &QAbstractItemView::doubleClicked, [this] {
        Host().Act([this] {
            if (Shown().OnChange) Shown().OnChange();
        });
    });
}

void GridWidget::Refresh() {
    if (version_ != Shown().Version()) {
        const QScopedValueRollback following(showing_, true);
        version_ = Shown().Version();
        rows_->Renew();
        if (model_ != Shown().Model()) SetUpColumns();
        model_ = Shown().Model();
    }
    ShowCurrent();
}

/// A column has its width, and more where its title or its first rows would be cut; those at most twice the width.
int GridWidget::WidthOf(int column) const {
    const GridModel::Column& given = Shown().Model()->Columns()[static_cast<std::size_t>(column)];
    const int width = given.width * widget_->logicalDpiX() / kDotsOfWidths;
    int texts = 0;
    for (int row = 0; row < std::min(kSampledRows, Shown().RowCount()) && !given.checkBox; ++row) {
        const QString text = rows_->index(row, column).data().toString();
        texts = std::max(texts, widget_->fontMetrics().horizontalAdvance(text) + kCellMargins);
    }
    const int widened = std::clamp(texts, width, kMostWidening * width);
    return std::max(widened, widget_->horizontalHeader()->sectionSizeHint(column));
}

void GridWidget::SetUpColumns() {
    if (Shown().Model() == nullptr) return;
    QHeaderView& header = *widget_->horizontalHeader();
    const std::vector<GridModel::Column>& columns = Shown().Model()->Columns();
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        const bool visible = columns[static_cast<std::size_t>(i)].visible;
        header.setSectionHidden(i, !visible);
        if (visible) header.resizeSection(i, WidthOf(i));
    }
    header.setSortIndicatorShown(false);
    widget_->updateGeometry();
}

void GridWidget::SortBy(int column) {
    if (Shown().Model() == nullptr) return;
    {
        const QScopedValueRollback following(showing_, true);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        rows_->SortNext(column);
        QApplication::restoreOverrideCursor();
        QHeaderView& header = *widget_->horizontalHeader();
        header.setSortIndicatorShown(rows_->SortColumn() >= 0);
        if (rows_->SortColumn() >= 0) {
            header.setSortIndicator(column, rows_->Descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
        }
    }
    ShowCurrent();
}

void GridWidget::ShowCurrent() {
    const QScopedValueRollback following(showing_, true);
    const int row = Shown().CurrentRow();
    widget_->MakeCurrent(row < 0 ? -1 : rows_->PlaceOf(row));
}

void GridWidget::TakeCurrent() {
    if (showing_) return;
    const int place = widget_->CurrentPlace();
    Host().Act([this, place] { Shown().SetCurrentRow(place < 0 ? -1 : rows_->RowAt(place)); });
}

bool GridWidget::Has(int row, const std::string& foldedText) const {
    const std::vector<GridModel::Column>& columns = Shown().Model()->Columns();
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        const GridModel::Column& column = columns[static_cast<std::size_t>(i)];
        if (!column.visible || column.checkBox) continue;
        if (text::FoldCase(Shown().Model()->Cell(row, i)).find(foldedText) != std::string::npos) return true;
    }
    return false;
}

bool GridWidget::FindNext(const std::string& text, bool backwards) {
    const int count = Shown().RowCount();
    const std::string folded = text::FoldCase(text);
    const int start = widget_->CurrentPlace() < 0 && backwards ? 0 : widget_->CurrentPlace();
    for (int step = 1; step <= count; ++step) {
        const int place = ((backwards ? start - step : start + step) % count + count) % count;
        const int row = rows_->RowAt(place);
        if (!Has(row, folded)) continue;
        Host().Act([this, row] { Shown().SetCurrentRow(row); });
        return true;
    }
    return false;
}

std::unique_ptr<ControlWidget> MakeGrid(Control& control, WidgetHost& host) {
    return std::make_unique<GridWidget>(As<Grid>(control), host);
}

}  // namespace vlm::ui
