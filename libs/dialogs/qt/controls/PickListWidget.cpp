#include "controls/PickListWidget.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QTreeView>

#include "controls/QtText.h"

namespace vlm::ui {

namespace {

constexpr int kUnitsInAnInch = 1440;
constexpr int kWidestText = 360;  // pixels, of the first column
constexpr int kMargins = 40;      // scroll bar and frame

}  // namespace

PickListWidget::PickListWidget(PickList& list, WidgetHost& host)
    : ControlWidget(list, host), box_(new DropDown), model_(new PickListModel(list, box_)) {
    box_->setModel(model_);
    box_->onChosen = [this](int index) { Host().Act([this, index] { As<PickList>(Shown()).SelectIndex(index); }); };
}

void PickListWidget::Refresh() {
    const QSignalBlocker silent(box_);
    const auto& list = As<PickList>(Shown());
    if (list.extraColumns.size() != columns_) ShowColumns();
    model_->Renew();
    box_->setCurrentIndex(list.SelectedIndex());
}

void PickListWidget::ShowColumns() {
    const auto& list = As<PickList>(Shown());
    columns_ = list.extraColumns.size();
    auto* table = new QTreeView;
    table->setRootIsDecorated(false);
    table->setAllColumnsShowFocus(true);
    table->setUniformRowHeights(true);
    table->setHeaderHidden(columns_ == 0);
    model_->Renew();
    box_->setView(table);
    table->header()->setStretchLastSection(true);
    table->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    int width = kWidestText + kMargins;
    for (const PickList::ExtraColumn& column : list.extraColumns) {
        width += column.width * table->logicalDpiX() / kUnitsInAnInch;
    }
    table->setMinimumWidth(width);
}

}  // namespace vlm::ui
