#pragma once

#include <QListWidget>

#include "qt/ControlWidget.h"

namespace vlm::ui {

/// A list of which each entry is chosen and let go by a click or the space bar.
class MultiListWidget : public ControlWidget {
public:
    MultiListWidget(MultiList& list, WidgetHost& host);

    QWidget& Widget() override { return *list_; }
    void Refresh() override;
    std::vector<QWidget*> FocusStops() override { return {list_}; }
    bool Widens() const override { return true; }

private:
    void Fill();
    void Choose();

    QListWidget* list_;
};

}  // namespace vlm::ui
