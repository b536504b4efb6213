#pragma once

#include "controls/PathEdit.h"
#include "qt/ControlWidget.h"

namespace vlm::ui {

/// A text field of one line; a path takes files that are dropped on it and tells what is there.
class TextWidget : public ControlWidget {
public:
    TextWidget(TextField& field, WidgetHost& host);

    QWidget& Widget() override { return *edit_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {edit_}; }
    void TakeFocus() override;
    bool Widens() const override { return true; }

private:
    QLineEdit* edit_;
};

}  // namespace vlm::ui
