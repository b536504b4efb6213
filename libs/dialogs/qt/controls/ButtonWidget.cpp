#include "controls/ButtonWidget.h"

#include "controls/QtText.h"

namespace vlm::ui {

ButtonWidget::ButtonWidget(Button& button, WidgetHost& host) : ControlWidget(button, host), button_(new QPushButton) {
    QObject::connect(button_, &QPushButton::clicked, [this] { Host().Click(As<Button>(Shown())); });
}

void ButtonWidget::Refresh() {
    const QString caption = ToQt(Shown().Caption());
    if (caption == button_->text()) return;
    button_->setText(caption);
    // A button of a few signs ("...") stands beside its field and is no wider than they need.
    if (caption.size() <= 3) button_->setMaximumWidth(button_->fontMetrics().horizontalAdvance(caption) + 24);
}

}  // namespace vlm::ui
