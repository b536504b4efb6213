#include "ControlWidget.h"

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <algorithm>
#include <iterator>

#include "controls/ControlWidgets.h"
#include "controls/QtText.h"

namespace vlm::ui {

namespace {

struct Maker {
    ControlKind kind;
    std::unique_ptr<ControlWidget> (*make)(Control&, WidgetHost&);
};

constexpr Maker kMakers[] = {{ControlKind::Label, MakeLabel},
                             {ControlKind::Frame, MakeLine},
                             {ControlKind::Button, MakeButton},
                             {ControlKind::Text, MakeText},
                             {ControlKind::Number, MakeNumber},
                             {ControlKind::Date, MakeDate},
                             {ControlKind::CheckBox, MakeCheckBox},
                             {ControlKind::OptionGroup, MakeOptions},
                             {ControlKind::FixedList, MakeFixedList},
                             {ControlKind::PickList, MakePickList},
                             {ControlKind::MultiList, MakeMultiList},
                             {ControlKind::Progress, MakeProgress},
                             {ControlKind::Grid, MakeGrid}};
static_assert(std::size(kMakers) == static_cast<std::size_t>(ControlKind::Grid) + 1);  // the last kind

}  // namespace

std::vector<QWidget*> ControlWidget::FocusStops() {
    if (Widget().focusPolicy() == Qt::NoFocus) return {};
    return {&Widget()};
}

void ControlWidget::TakeFocus() {
    const std::vector<QWidget*> stops = FocusStops();
    if (stops.empty()) return;
    stops.front()->setFocus(Qt::OtherFocusReason);
    if (auto* line = qobject_cast<QLineEdit*>(stops.front())) line->selectAll();
    if (auto* box = qobject_cast<QAbstractSpinBox*>(stops.front())) box->selectAll();
}

std::unique_ptr<ControlWidget> MakeControlWidget(Control& control, WidgetHost& host, bool surrounds) {
    const auto* maker = std::find_if(std::begin(kMakers), std::end(kMakers),
                                     [&control](const Maker& each) { return each.kind == control.Kind(); });
    std::unique_ptr<ControlWidget> widget = surrounds ? MakeBorder(control, host) : maker->make(control, host);
    widget->Refresh();
    widget->Widget().setObjectName(ToQt(control.Name()));
    return widget;
}

void MarkEntry(QWidget& field, bool wrong) {
    QPalette palette;
    if (wrong) {
        palette.setColor(QPalette::Base, QColor(255, 222, 217));
        palette.setColor(QPalette::Text, QColor(120, 0, 0));
    }
    field.setPalette(palette);
}

}  // namespace vlm::ui
