#include "qt/ControlWidget.h"

namespace vlm::ui {

void ControlWidget::TakeFocus() {
    const std::vector<QWidget*> stops = FocusStops();
    if (!stops.empty()) stops.front()->setFocus(Qt::OtherFocusReason);
}

}  // namespace vlm::ui
