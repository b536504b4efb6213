#include <QCalendarWidget>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "controls/ControlWidgets.h"
#include "controls/QtText.h"
#include "values/DateText.h"

namespace vlm::ui {

namespace {

constexpr qsizetype kDigits = 8;  // of a date without strokes

std::optional<Date> DateIn(QString text) {
    static const QRegularExpression digitsOnly("^[0-9]{8}$");
    if (text.size() == kDigits && digitsOnly.match(text).hasMatch()) text.insert(4, '/').insert(2, '/');
    return text::ParseItalianDate(FromQt(text));
}

/// A month's days under a field, to choose one from; goes by itself.
class CalendarPopup : public QFrame {
public:
    CalendarPopup(QWidget& under, const std::optional<Date>& start)
        : QFrame(&under, Qt::Popup), under_(under), days_(new QCalendarWidget) {
        setAttribute(Qt::WA_DeleteOnClose);
        setFrameStyle(QFrame::Panel | QFrame::Plain);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(1, 1, 1, 1);
        layout->addWidget(days_);
        days_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
        days_->setGridVisible(false);
        if (start) {
            const Date::Civil civil = start->ToCivil();
            days_->setSelectedDate(QDate(civil.year, civil.month, civil.day));
        }
        connect(days_, &QCalendarWidget::clicked, [this](QDate day) { Choose(day); });
        connect(days_, &QCalendarWidget::activated, [this](QDate day) { Choose(day); });
    }

    void Open() {
        QPoint place = under_.mapToGlobal(QPoint(0, under_.height()));
        const QRect screen = under_.screen()->availableGeometry();
        const QSize size = sizeHint();
        place.setX(std::min(place.x(), screen.right() - size.width()));
        if (place.y() + size.height() > screen.bottom()) place.setY(place.y() - under_.height() - size.height());
        move(place);
        show();
        days_->setFocus(Qt::PopupFocusReason);
    }

    std::function<void(Date)> onChosen;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape) close();
    }

private:
    void Choose(QDate day) {
        const std::optional<Date> date = Date::FromYmd(day.year(), day.month(), day.day());
        close();
        if (date) onChosen(*date);
    }

    QWidget& under_;
    QCalendarWidget* days_;
};

class DateWidget : public WidgetOf<DateField, QWidget> {
public:
    DateWidget(Control& control, WidgetHost& host)
        : WidgetOf(control, host, new QWidget), edit_(new QLineEdit(widget_)) {
        auto* button = new QToolButton(widget_);
        button->setArrowType(Qt::DownArrow);
        button->setFocusPolicy(Qt::NoFocus);
        button->setToolTip("Calendario (Alt+Giù)");
        auto* layout = new QHBoxLayout(widget_);
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
    void Refresh() override {
        const QString text = ToQt(Shown().ShownText());
        const bool typing = edit_->hasFocus() && edit_->isModified() && Agrees();
        if (text == edit_->text() || typing) return;
        const QSignalBlocker silent(edit_);
        edit_->setText(text);
        MarkEntry(*edit_, false);
    }
    std::vector<QWidget*> FocusStops() override { return {edit_}; }
    QString Complaint() const override { return Agrees() ? QString() : QString("Serve una data gg/mm/aaaa."); }

private:
    void Take() {
        const std::optional<Date> date = DateIn(edit_->text());
        if (date || edit_->text().isEmpty()) Host().Act([this, &date] { Shown().SetValue(date); });
        if (Agrees()) MarkEntry(*edit_, false);
    }

    bool Agrees() const {
        const std::optional<Date> date = DateIn(edit_->text());
        return (date || edit_->text().isEmpty()) && date == Shown().Value();
    }

    void ShowCalendar() {
        auto* calendar = new CalendarPopup(*edit_, Shown().Value());
        calendar->onChosen = [this](Date date) {
            Host().Act([this, date] { Shown().SetValue(date); });
            edit_->setModified(false);
            Refresh();
        };
        calendar->Open();
    }

    QLineEdit* edit_;
};

}  // namespace

std::unique_ptr<ControlWidget> MakeDate(Control& control, WidgetHost& host) {
    return std::make_unique<DateWidget>(control, host);
}

}  // namespace vlm::ui
