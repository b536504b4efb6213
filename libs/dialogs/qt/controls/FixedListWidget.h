#pragma once

#include "controls/DropDown.h"
#include "qt/ControlWidget.h"

namespace vlm::ui {

class FixedListWidget : public ControlWidget {
public:
    FixedListWidget(FixedList& list, WidgetHost& host);

    QWidget& Widget() override { return *box_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {box_}; }
    bool Widens() const override;

private:
    DropDown* box_;
};

}  // namespace vlm::ui
