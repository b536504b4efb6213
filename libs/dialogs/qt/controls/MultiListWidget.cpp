#include "controls/MultiListWidget.h"

#include <QSignalBlocker>
#include <algorithm>

#include "controls/QtText.h"

namespace vlm::ui {

namespace {

constexpr int kFewestRows = 2;
constexpr int kMostRows = 6;

}  // namespace

MultiListWidget::MultiListWidget(MultiList& list, WidgetHost& host)
    : ControlWidget(list, host), list_(new QListWidget) {
    list_->setSelectionMode(QAbstractItemView::MultiSelection);
    list_->setTabKeyNavigation(false);
    list_->setUniformItemSizes(true);
    QObject::connect(list_, &QListWidget::itemSelectionChanged, [this] { Choose(); });
}

void MultiListWidget::Fill() {
    const std::vector<std::string>& items = As<MultiList>(Shown()).Items();
    QStringList texts;
    for (const std::string& item : items) texts << ToQt(item);
    QStringList there;
    for (int row = 0; row < list_->count(); ++row) there << list_->item(row)->text();
    if (texts == there) return;
    list_->clear();
    list_->addItems(texts);
    const int rows = std::clamp(list_->count(), kFewestRows, kMostRows);
    const int rowHeight = list_->count() > 0 ? list_->sizeHintForRow(0) : list_->fontMetrics().height();
    list_->setFixedHeight(rows * rowHeight + 2 * list_->frameWidth() + 2);
}

void MultiListWidget::Refresh() {
    const QSignalBlocker silent(list_);
    Fill();
    const auto& control = As<MultiList>(Shown());
    for (int row = 0; row < list_->count(); ++row) list_->item(row)->setSelected(control.IsSelected(row));
}

void MultiListWidget::Choose() {
    std::set<int> positions;
    for (int row = 0; row < list_->count(); ++row) {
        if (list_->item(row)->isSelected()) positions.insert(row);
    }
    Host().Act([this, &positions] { As<MultiList>(Shown()).SetSelected(positions); });
}

}  // namespace vlm::ui
