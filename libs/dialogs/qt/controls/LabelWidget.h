#pragma once

#include <QLabel>

#include "qt/ControlWidget.h"

namespace vlm::ui {

class LabelWidget : public ControlWidget {
public:
    LabelWidget(Label& label, WidgetHost& host);

    QWidget& Widget() override { return *label_; }
    void Refresh() override;

private:
    QLabel* label_;
};

}  // namespace vlm::ui
