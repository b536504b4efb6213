#pragma once

#include <QProgressBar>

#include "qt/ControlWidget.h"

namespace vlm::ui {

class ProgressWidget : public ControlWidget {
public:
    ProgressWidget(ProgressBar& bar, WidgetHost& host) : ControlWidget(bar, host), bar_(new QProgressBar) {
        bar_->setRange(0, 100);
    }

    QWidget& Widget() override { return *bar_; }
    void Refresh() override { bar_->setValue(As<ProgressBar>(Shown()).Value()); }
    bool Widens() const override { return true; }

private:
    QProgressBar* bar_;
};

}  // namespace vlm::ui
