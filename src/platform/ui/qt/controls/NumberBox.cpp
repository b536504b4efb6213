#include "platform/ui/qt/controls/NumberBox.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "platform/text/Number.h"
#include "platform/ui/qt/controls/EntryMark.h"
#include "platform/ui/qt/controls/QtText.h"

namespace vlm::ui {

NumberBox::NumberBox(double minimum, double maximum, int decimals)
    : minimum_(minimum), maximum_(maximum), decimals_(decimals) {
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::StrongFocus);
    const auto digits = static_cast<int>(text::FormatDecimals(Currency::FromDouble(maximum), decimals, false).size());
    lineEdit()->setMinimumWidth((std::max(digits, 4) + 2) * fontMetrics().horizontalAdvance('0'));
    connect(lineEdit(), &QLineEdit::textChanged, [this] {
        if (onEdited) onEdited();
    });
}

void NumberBox::Show(const QString& text) {
    const QSignalBlocker silent(lineEdit());
    lineEdit()->setText(text);
}

std::optional<double> NumberBox::Number() const {
    const std::string text = FromQt(Text());
    return text.empty() ? 0 : text::ParseNumber(text);
}

void NumberBox::Mark(bool wrong) { MarkEntry(*lineEdit(), wrong); }

void NumberBox::stepBy(int steps) {
    const std::optional<double> number = Number();
    if (!number || Text().isEmpty()) return;  // there is nothing to count from
    const double next = std::clamp(*number + steps, minimum_, maximum_);
    lineEdit()->setText(ToQt(text::FormatDecimals(Currency::FromDouble(next), decimals_, false)));
    lineEdit()->selectAll();
}

QValidator::State NumberBox::validate(QString& input, int& /*position*/) const {
    static const QRegularExpression whole("^-?[0-9]*$");
    static const QRegularExpression broken("^-?[0-9.]*,?[0-9]*$");
    return (decimals_ == 0 ? whole : broken).match(input).hasMatch() ? QValidator::Acceptable : QValidator::Invalid;
}

void NumberBox::wheelEvent(QWheelEvent* event) { hasFocus() ? QAbstractSpinBox::wheelEvent(event) : event->ignore(); }

}  // namespace vlm::ui
