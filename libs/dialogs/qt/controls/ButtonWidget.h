#pragma once

#include <QPushButton>

#include "qt/ControlWidget.h"

namespace vlm::ui {

class ButtonWidget : public ControlWidget {
public:
    ButtonWidget(Button& button, WidgetHost& host);

    QWidget& Widget() override { return *button_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {button_}; }
    void MakeDefault() { button_->setDefault(true); }

private:
    QPushButton* button_;
};

}  // namespace vlm::ui
