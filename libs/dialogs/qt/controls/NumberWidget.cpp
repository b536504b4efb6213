#include "controls/NumberWidget.h"

#include "controls/QtText.h"
#include "dialogs/ShownText.h"
#include "values/Number.h"

namespace vlm::ui {

namespace {

NumberBox* BoxFor(const NumberField& field) {
    return new NumberBox(field.Minimum(), field.Maximum(), field.Decimals());
}

}  // namespace

NumberWidget::NumberWidget(NumberField& field, WidgetHost& host) : ControlWidget(field, host), box_(BoxFor(field)) {
    box_->onEdited = [this] { Take(); };
    QObject::connect(box_, &QAbstractSpinBox::editingFinished, [this] {
        if (Agrees()) box_->Show(ToQt(ShownText(Shown())));
        box_->Mark(!Agrees());
    });
}

void NumberWidget::Take() {
    const std::optional<double> number = box_->Number();
    if (number) Host().Act([this, &number] { As<NumberField>(Shown()).SetValue(*number); });
    if (Agrees()) box_->Mark(false);
}

bool NumberWidget::Agrees() const {
    const std::optional<double> number = box_->Number();
    return number && *number == As<NumberField>(Shown()).Value();
}

void NumberWidget::Refresh() {
    if (!Agrees() || !box_->hasFocus()) box_->Show(ToQt(ShownText(Shown())));
    box_->Mark(false);
}

void NumberWidget::TakeFocus() {
    box_->setFocus(Qt::OtherFocusReason);
    box_->selectAll();
}

QString NumberWidget::Complaint() const {
    if (Agrees()) return {};
    const auto& field = As<NumberField>(Shown());
    return ToQt("Il numero deve stare tra " + text::NumberText(field.Minimum()) + " e " +
                text::NumberText(field.Maximum()) + ".");
}

}  // namespace vlm::ui
