#pragma once

#include "controls/NumberBox.h"
#include "qt/ControlWidget.h"

namespace vlm::ui {

class NumberWidget : public ControlWidget {
public:
    NumberWidget(NumberField& field, WidgetHost& host);

    QWidget& Widget() override { return *box_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {box_}; }
    void TakeFocus() override;
    QString Complaint() const override;

private:
    void Take();
    /// What stands in the line is the control's value.
    bool Agrees() const;

    NumberBox* box_;
};

}  // namespace vlm::ui
