#pragma once

#include <QWidget>

namespace vlm::ui {

/// Colours a field whose entry is no value of its control, or takes the colour away.
void MarkEntry(QWidget& field, bool wrong);

}  // namespace vlm::ui
