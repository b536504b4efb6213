#include "controls/FrameWidget.h"

#include "controls/QtText.h"

namespace vlm::ui {

FrameWidget::FrameWidget(Frame& frame, WidgetHost& host) : ControlWidget(frame, host) {
    box_ = HasBorder() ? new QGroupBox : new QWidget;
}

void FrameWidget::Refresh() {
    if (auto* border = qobject_cast<QGroupBox*>(box_)) border->setTitle(ToQt(Shown().Caption()).trimmed());
}

}  // namespace vlm::ui
