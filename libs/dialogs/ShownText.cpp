#include "dialogs/ShownText.h"

#include "dialogs/PickList.h"
#include "values/DateText.h"
#include "values/Number.h"

namespace vlm::ui {

namespace {

std::string NumberShown(const NumberField& field) {
    if (field.Value() == 0) return {};  // an empty field
    return text::FormatDecimals(Currency::FromDouble(field.Value()), field.Decimals(), false);
}

std::string DateShown(const DateField& field) {
    return field.Value() ? text::DdMmYyyySlashes(*field.Value()) : std::string();
}

/// What is typed into a password field goes nowhere, not even its length.
std::string TextShown(const TextField& field) {
    if (!field.password) return field.Text();
    return field.Text().empty() ? std::string() : "set";
}

std::string SelectedShown(const MultiList& list) {
    std::string shown;
    for (const int position : list.Selected()) {
        shown += (shown.empty() ? "" : ", ") + list.Items()[static_cast<std::size_t>(position)];
    }
    return shown;
}

}  // namespace

std::string ShownText(const Control& control) {
    switch (control.Kind()) {
        case ControlKind::Label:
            return control.Caption();
        case ControlKind::Text:
            return TextShown(As<TextField>(control));
        case ControlKind::Number:
            return NumberShown(As<NumberField>(control));
        case ControlKind::Date:
            return DateShown(As<DateField>(control));
        case ControlKind::CheckBox:
            return As<CheckBox>(control).Checked() ? "1" : "0";
        case ControlKind::OptionGroup:
        case ControlKind::FixedList:
            return As<ChoiceControl>(control).SelectedText();
        case ControlKind::PickList:
            return As<PickList>(control).SelectedText();
        case ControlKind::MultiList:
            return SelectedShown(As<MultiList>(control));
        case ControlKind::Progress:
            return std::to_string(As<ProgressBar>(control).Value());
        case ControlKind::Frame:
        case ControlKind::Button:
        case ControlKind::Grid:
            break;
    }
    return {};
}

}  // namespace vlm::ui
