#include "controls/TextWidget.h"

#include <QSignalBlocker>

#include "controls/QtText.h"

namespace vlm::ui {

namespace {

constexpr int kWidth = 36;  // characters that a field has room for at least

QLineEdit* EditFor(const TextField& field) {
    if (field.path) return new PathEdit;
    auto* edit = new QLineEdit;
    if (field.password) edit->setEchoMode(QLineEdit::Password);
    return edit;
}

}  // namespace

TextWidget::TextWidget(TextField& field, WidgetHost& host) : ControlWidget(field, host), edit_(EditFor(field)) {
    edit_->setMinimumWidth(kWidth * edit_->fontMetrics().averageCharWidth());
    QObject::connect(edit_, &QLineEdit::textChanged, [this](const QString& text) {
        Host().Act([this, &text] { As<TextField>(Shown()).SetText(FromQt(text)); });
    });
}

void TextWidget::Refresh() {
    const QString text = ToQt(As<TextField>(Shown()).Text());
    if (text == edit_->text()) return;  // what the user is typing keeps its cursor
    const QSignalBlocker silent(edit_);
    edit_->setText(text);
    if (auto* path = dynamic_cast<PathEdit*>(edit_)) path->TellWhatIsThere();
}

void TextWidget::TakeFocus() {
    edit_->setFocus(Qt::OtherFocusReason);
    edit_->selectAll();
}

}  // namespace vlm::ui
