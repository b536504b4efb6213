#include "controls/MakeControlWidget.h"

#include "controls/ButtonWidget.h"
#include "controls/CheckWidget.h"
#include "controls/DateWidget.h"
#include "controls/FixedListWidget.h"
#include "controls/FrameWidget.h"
#include "controls/GridWidget.h"
#include "controls/LabelWidget.h"
#include "controls/MultiListWidget.h"
#include "controls/NoteWidget.h"
#include "controls/NumberWidget.h"
#include "controls/OptionsWidget.h"
#include "controls/PickListWidget.h"
#include "controls/ProgressWidget.h"
#include "controls/SeparatorWidget.h"
#include "controls/TextWidget.h"

namespace vlm::ui {

namespace {

template <class Widget, class Kind>
std::unique_ptr<ControlWidget> Make(Control& control, WidgetHost& host) {
    return std::make_unique<Widget>(As<Kind>(control), host);
}

std::unique_ptr<ControlWidget> MakeBare(Control& control, WidgetHost& host, bool surrounds) {
    switch (control.Kind()) {
        case ControlKind::Label:
            return Make<LabelWidget, Label>(control, host);
        case ControlKind::Frame:
            return surrounds ? Make<FrameWidget, Frame>(control, host) : Make<SeparatorWidget, Frame>(control, host);
        case ControlKind::Button:
            return Make<ButtonWidget, Button>(control, host);
        case ControlKind::Text:
            return As<TextField>(control).multiLine ? Make<NoteWidget, TextField>(control, host)
                                                    : Make<TextWidget, TextField>(control, host);
        case ControlKind::Number:
            return Make<NumberWidget, NumberField>(control, host);
        case ControlKind::Date:
            return Make<DateWidget, DateField>(control, host);
        case ControlKind::CheckBox:
            return Make<CheckWidget, CheckBox>(control, host);
        case ControlKind::OptionGroup:
            return Make<OptionsWidget, OptionGroup>(control, host);
        case ControlKind::FixedList:
            return Make<FixedListWidget, FixedList>(control, host);
        case ControlKind::PickList:
            return Make<PickListWidget, PickList>(control, host);
        case ControlKind::MultiList:
            return Make<MultiListWidget, MultiList>(control, host);
        case ControlKind::Progress:
            return Make<ProgressWidget, ProgressBar>(control, host);
        case ControlKind::Grid:
            return Make<GridWidget, Grid>(control, host);
    }
    return {};
}

}  // namespace

std::unique_ptr<ControlWidget> MakeControlWidget(Control& control, WidgetHost& host, bool surrounds) {
    std::unique_ptr<ControlWidget> widget = MakeBare(control, host, surrounds);
    widget->Refresh();
    widget->Widget().setObjectName(QString::fromStdString(control.Name()));
    return widget;
}

}  // namespace vlm::ui
