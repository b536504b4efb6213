#pragma once

#include <QCheckBox>

#include "qt/ControlWidget.h"

namespace vlm::ui {

class CheckWidget : public ControlWidget {
public:
    CheckWidget(CheckBox& control, WidgetHost& host);

    QWidget& Widget() override { return *box_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {box_}; }

private:
    QCheckBox* box_;
};

}  // namespace vlm::ui
