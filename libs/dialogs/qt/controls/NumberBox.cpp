#include "controls/NumberBox.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>
#include <algorithm>

#include "controls/EntryMark.h"
#include "controls/QtText.h"
#include "values/Number.h"

namespace vlm::ui {

namespace {

constexpr int kFewestDigits = 4;

}  // namespace

NumberBox::NumberBox(double minimum, double maximum, int decimals)
    : minimum_(minimum),
      maximum_(maximum),
      decimals_(decimals),
      digits_(static_cast<int>(text::FormatDecimals(Currency::FromDouble(maximum), decimals, false).size())) {
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::StrongFocus);
    connect(lineEdit(), &QLineEdit::textChanged, [this] {
        if (onEdited) onEdited();
    });
}

QSize NumberBox::sizeHint() const {
    const int text = (std::max(digits_, kFewestDigits) + 2) * fontMetrics().horizontalAdvance('0');
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    const QSize inside(text, lineEdit()->sizeHint().height());
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, inside, this);
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
