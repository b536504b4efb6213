#pragma once

#include <QLabel>

#include "platform/ui/qt/controls/ControlWidget.h"

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
