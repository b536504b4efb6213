#pragma once

#include <QFrame>

#include "qt/ControlWidget.h"

namespace vlm::ui {

/// A frame that stands in a row itself: a line across the dialog.
class SeparatorWidget : public ControlWidget {
public:
    SeparatorWidget(Frame& frame, WidgetHost& host) : ControlWidget(frame, host), line_(new QFrame) {
        line_->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    }

    QWidget& Widget() override { return *line_; }
    void Refresh() override {}
    bool Widens() const override { return true; }

private:
    QFrame* line_;
};

}  // namespace vlm::ui
