#include "controls/DateWidget.h"

#include <QHBoxLayout>
#include <QRegularExpressionValidator>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>

#include "controls/CalendarPopup.h"
#include "controls/EntryMark.h"
#include "controls/QtText.h"
#include "dialogs/ShownText.h"
#include "values/DateText.h"

namespace vlm::ui {

namespace {

constexpr qsizetype kDigits = 8;  // of a date without strokes

std::optional<Date> DateIn(QString text) {
    static const QRegularExpression digitsOnly("^[0-9]{8}$");
    if (text.size() == kDigits && digitsOnly.match(text).hasMatch()) text.insert(4, '/').insert(2, '/');
    return text::ParseItalianDate(FromQt(text));
}

}  // namespace

DateWidget::DateWidget(DateField& field, WidgetHost& host)
    : ControlWidget(field, host), row_(new QWidget), edit_(new QLineEdit(row_)) {
    auto* button = new QToolButton(row_);
    button->setArrowType(Qt::DownArrow);
    button->setFocusPolicy(Qt::NoFocus);
    button->setToolTip("Calendario (Alt+Giù)");
    auto* layout = new QHBoxLayout(row_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(edit_);
    layout->addWidget(button);
    edit_->setPlaceholderText("gg/mm/aaaa");
    edit_->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9/.\\-]{0,10}"), edit_));
    edit_->setFixedWidth(edit_->fontMetrics().horizontalAdvance("00/00/0000") + 24);
    QObject::connect(edit_, &QLineEdit::textChanged, [this] { Take(); });
    QObject::connect(edit_, &QLineEdit::editingFinished, [this] {
        if (Agrees()) Refresh();
        MarkEntry(*edit_, !Agrees());
    });
    QObject::connect(button, &QToolButton::clicked, [this] { ShowCalendar(); });
    auto* keys = new QShortcut(QKeySequence("Alt+Down"), edit_);
    keys->setContext(Qt::WidgetShortcut);
    QObject::connect(keys, &QShortcut::activated, [this] { ShowCalendar(); });
}

void DateWidget::Take() {
    const std::optional<Date> date = DateIn(edit_->text());
    if (date || edit_->text().isEmpty()) Host().Act([this, &date] { As<DateField>(Shown()).SetValue(date); });
    if (Agrees()) MarkEntry(*edit_, false);
}

bool DateWidget::Agrees() const {
    const std::optional<Date> date = DateIn(edit_->text());
    return (date || edit_->text().isEmpty()) && date == As<DateField>(Shown()).Value();
}

void DateWidget::Refresh() {
    const QString text = ToQt(ShownText(Shown()));
    const bool typing = edit_->hasFocus() && edit_->isModified() && Agrees();
    if (text == edit_->text() || typing) return;
    const QSignalBlocker silent(edit_);
    edit_->setText(text);
    MarkEntry(*edit_, false);
}

void DateWidget::TakeFocus() {
    edit_->setFocus(Qt::OtherFocusReason);
    edit_->selectAll();
}

QString DateWidget::Complaint() const { return Agrees() ? QString() : QString("Serve una data gg/mm/aaaa."); }

void DateWidget::ShowCalendar() {
    auto* calendar = new CalendarPopup(*edit_, As<DateField>(Shown()).Value());
    calendar->onChosen = [this](Date date) {
        Host().Act([this, date] { As<DateField>(Shown()).SetValue(date); });
        edit_->setModified(false);
        Refresh();
    };
    calendar->Open();
}

}  // namespace vlm::ui
