#include "controls/LabelWidget.h"

#include "controls/QtText.h"
#include "dialogs/Mnemonic.h"

namespace vlm::ui {

namespace {

constexpr qsizetype kLongText = 60;  // characters from which a text is broken into lines

}  // namespace

LabelWidget::LabelWidget(Label& label, WidgetHost& host) : ControlWidget(label, host), label_(new QLabel) {
    label_->setTextFormat(Qt::PlainText);
}

void LabelWidget::Refresh() {
    const QString text = ToQt(WithoutMnemonic(Shown().Caption()));
    if (text == label_->text()) return;
    label_->setText(text);
    label_->setWordWrap(text.size() > kLongText);
}

}  // namespace vlm::ui
