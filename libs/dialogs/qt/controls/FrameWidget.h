#pragma once

#include <QGroupBox>

#include "qt/ControlWidget.h"

namespace vlm::ui {

/// The border around rows; without a caption the rows stand in no border.
class FrameWidget : public ControlWidget {
public:
    FrameWidget(Frame& frame, WidgetHost& host);

    QWidget& Widget() override { return *box_; }
    void Refresh() override;
    bool HasBorder() const { return !Shown().Caption().empty(); }

private:
    QWidget* box_;
};

}  // namespace vlm::ui
