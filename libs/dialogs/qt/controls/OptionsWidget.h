#pragma once

#include <QButtonGroup>
#include <QHBoxLayout>

#include "qt/ControlWidget.h"

namespace vlm::ui {

/// An option group: its options side by side.
class OptionsWidget : public ControlWidget {
public:
    OptionsWidget(OptionGroup& group, WidgetHost& host);

    QWidget& Widget() override { return *row_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override;
    void TakeFocus() override;

private:
    void Fill();

    QWidget* row_;
    QHBoxLayout* layout_;
    QButtonGroup* buttons_;
};

}  // namespace vlm::ui
