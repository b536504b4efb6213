#pragma once

#include <QCalendarWidget>
#include <QFrame>
#include <functional>
#include <optional>

#include "values/Date.h"

namespace vlm::ui {

/// A month's days under a field, to choose one from; goes by itself.
class CalendarPopup : public QFrame {
public:
    CalendarPopup(QWidget& under, const std::optional<Date>& start);
    void Open();

    std::function<void(Date)> onChosen;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Choose(QDate day);

    QWidget& under_;
    QCalendarWidget* days_;
};

}  // namespace vlm::ui
