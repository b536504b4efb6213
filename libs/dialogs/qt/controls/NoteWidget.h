#pragma once

#include <QPlainTextEdit>

#include "qt/ControlWidget.h"

namespace vlm::ui {

/// A text field of several lines.
class NoteWidget : public ControlWidget {
public:
    NoteWidget(TextField& field, WidgetHost& host);

    QWidget& Widget() override { return *edit_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {edit_}; }
    bool Widens() const override { return true; }
    bool Heightens() const override { return true; }

private:
    QPlainTextEdit* edit_;
};

}  // namespace vlm::ui
