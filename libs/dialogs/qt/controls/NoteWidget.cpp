#include "controls/NoteWidget.h"

#include <QSignalBlocker>

#include "controls/QtText.h"

namespace vlm::ui {

namespace {

constexpr int kLines = 4;

QString Inside(const std::string& text) { return ToQt(text).replace("\r\n", "\n"); }
std::string Outside(QString text) { return FromQt(text.replace("\n", "\r\n")); }

}  // namespace

NoteWidget::NoteWidget(TextField& field, WidgetHost& host) : ControlWidget(field, host), edit_(new QPlainTextEdit) {
    edit_->setTabChangesFocus(true);
    edit_->setMinimumHeight(kLines * edit_->fontMetrics().lineSpacing() + 12);
    QObject::connect(edit_, &QPlainTextEdit::textChanged,
                     [this] { Host().Act([this] { As<TextField>(Shown()).SetText(Outside(edit_->toPlainText())); }); });
}

void NoteWidget::Refresh() {
    const QString text = Inside(As<TextField>(Shown()).Text());
    if (text == edit_->toPlainText()) return;
    const QSignalBlocker silent(edit_);
    edit_->setPlainText(text);
}

}  // namespace vlm::ui
