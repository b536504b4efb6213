#pragma once

#include <memory>

#include "qt/ControlWidget.h"

namespace vlm::ui {

/// The widget for a control of any kind, showing its state. `surrounds` tells a frame that stands around rows from one
/// that is a line in a row.
std::unique_ptr<ControlWidget> MakeControlWidget(Control& control, WidgetHost& host, bool surrounds);

}  // namespace vlm::ui
