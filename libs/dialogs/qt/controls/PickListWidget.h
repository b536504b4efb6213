#pragma once

#include "controls/DropDown.h"
#include "controls/PickListModel.h"
#include "dialogs/PickList.h"
#include "qt/ControlWidget.h"

namespace vlm::ui {

class PickListWidget : public ControlWidget {
public:
    PickListWidget(PickList& list, WidgetHost& host);

    QWidget& Widget() override { return *box_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {box_}; }
    bool Widens() const override { return true; }

private:
    /// A popup with headed columns, once the list has extra ones.
    void ShowColumns();

    DropDown* box_;
    PickListModel* model_;
    std::size_t columns_ = 0;
};

}  // namespace vlm::ui
