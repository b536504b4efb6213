#pragma once

#include <QLineEdit>
#include <optional>

#include "qt/ControlWidget.h"

namespace vlm::ui {

/// A date typed as dd/mm/yyyy (or its eight digits) or taken from a calendar; an empty line is no date.
class DateWidget : public ControlWidget {
public:
    DateWidget(DateField& field, WidgetHost& host);

    QWidget& Widget() override { return *row_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {edit_}; }
    void TakeFocus() override;
    QString Complaint() const override;

private:
    void Take();
    bool Agrees() const;
    void ShowCalendar();

    QWidget* row_;
    QLineEdit* edit_;
};

}  // namespace vlm::ui
