#include "controls/CheckWidget.h"

#include <QSignalBlocker>

#include "controls/QtText.h"

namespace vlm::ui {

CheckWidget::CheckWidget(CheckBox& control, WidgetHost& host) : ControlWidget(control, host), box_(new QCheckBox) {
    QObject::connect(box_, &QCheckBox::toggled, [this](bool checked) {
        Host().Act([this, checked] { As<CheckBox>(Shown()).SetChecked(checked); });
    });
}

void CheckWidget::Refresh() {
    const QSignalBlocker silent(box_);
    box_->setText(ToQt(Shown().Caption()));
    box_->setChecked(As<CheckBox>(Shown()).Checked());
}

}  // namespace vlm::ui
