#include "controls/CalendarPopup.h"

#include <QKeyEvent>
#include <QScreen>
#include <QTextCharFormat>
#include <QVBoxLayout>
#include <algorithm>

namespace vlm::ui {

CalendarPopup::CalendarPopup(QWidget& under, const std::optional<Date>& start)
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

void CalendarPopup::Open() {
    QPoint place = under_.mapToGlobal(QPoint(0, under_.height()));
    const QRect screen = under_.screen()->availableGeometry();
    const QSize size = sizeHint();
    place.setX(std::min(place.x(), screen.right() - size.width()));
    if (place.y() + size.height() > screen.bottom()) place.setY(place.y() - under_.height() - size.height());
    move(place);
    show();
    days_->setFocus(Qt::PopupFocusReason);
}

void CalendarPopup::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) close();
}

void CalendarPopup::Choose(QDate day) {
    const std::optional<Date> date = Date::FromYmd(day.year(), day.month(), day.day());
    close();
    if (date) onChosen(*date);
}

}  // namespace vlm::ui
