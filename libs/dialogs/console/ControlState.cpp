#include "ControlState.h"

#include "dialogs/Dialog.h"
#include "dialogs/Grid.h"
#include "dialogs/PickList.h"

namespace vlm::ui {

namespace {

std::vector<ControlState::Item> Numbered(const std::vector<std::string>& texts) {
    std::vector<ControlState::Item> items;
    for (const std::string& each : texts) items.push_back({static_cast<int>(items.size()), each});
    return items;
}

std::vector<ControlState::Item> Keyed(const PickList& list) {
    std::vector<ControlState::Item> items;
    for (int i = 0; i < list.RowCount(); ++i) items.push_back({list.KeyAt(i), list.TextAt(i)});
    return items;
}

bool HasItems(ControlKind kind) {
    return kind == ControlKind::OptionGroup || kind == ControlKind::FixedList || kind == ControlKind::PickList ||
           kind == ControlKind::MultiList;
}

}  // namespace

int ControlState::Rows() const {
    switch (control_.Kind()) {
        case ControlKind::OptionGroup:
        case ControlKind::FixedList:
            return static_cast<int>(As<ChoiceControl>(control_).Items().size());
        case ControlKind::PickList:
            return As<PickList>(control_).RowCount();
        case ControlKind::MultiList:
            return static_cast<int>(As<MultiList>(control_).Items().size());
        case ControlKind::Grid:
            return As<Grid>(control_).RowCount();
        default:
            return 0;
    }
}

std::vector<ControlState::Item> ControlState::Items() const {
    switch (control_.Kind()) {
        case ControlKind::OptionGroup:
        case ControlKind::FixedList:
            return Numbered(As<ChoiceControl>(control_).Items());
        case ControlKind::PickList:
            return Keyed(As<PickList>(control_));
        case ControlKind::MultiList:
            return Numbered(As<MultiList>(control_).Items());
        default:
            return {};
    }
}

void ControlState::Write(JsonWriter& json) const {
    json.String("name", control_.Name());
    WriteValue(json);
    json.String("text", Text());
    json.Boolean("enabled", control_.Owner().IsEnabled(control_));
    json.Boolean("visible", control_.Owner().IsVisible(control_));
    json.String("caption", control_.Caption());
    json.Number("rows", Rows());
    if (HasItems(control_.Kind())) WriteItems(json);
    if (control_.Kind() == ControlKind::Grid) WriteGrid(json);
}

void ControlState::WriteValue(JsonWriter& json) const {
    json.Key("value");
    switch (control_.Kind()) {
        case ControlKind::Text:
        case ControlKind::Date:
            json.String(Text());
            return;
        case ControlKind::Number:
            json.Number(As<NumberField>(control_).Value());
            return;
        case ControlKind::CheckBox:
            json.Number(As<CheckBox>(control_).Checked() ? 1 : 0);
            return;
        case ControlKind::OptionGroup:
        case ControlKind::FixedList:
            json.Number(As<ChoiceControl>(control_).Position());
            return;
        case ControlKind::PickList:
            json.Number(As<PickList>(control_).SelectedKey());
            return;
        case ControlKind::MultiList:
            json.BeginArray();
            for (const int position : As<MultiList>(control_).Selected()) json.Number(position);
            json.EndArray();
            return;
        case ControlKind::Progress:
            json.Number(As<ProgressBar>(control_).Value());
            return;
        case ControlKind::Label:
        case ControlKind::Frame:
        case ControlKind::Button:
        case ControlKind::Grid:
            json.String("");
            return;
    }
}

void ControlState::WriteItems(JsonWriter& json) const {
    json.Key("items").BeginArray();
    for (const Item& item : Items()) {
        json.BeginObject().Number("key", item.key).String("text", item.text).EndObject();
    }
    json.EndArray();
}

void ControlState::WriteGrid(JsonWriter& json) const {
    const Grid& grid = As<Grid>(control_);
    const std::vector<GridModel::Column> none;
    const std::vector<GridModel::Column>& columns = grid.Model() ? grid.Model()->Columns() : none;
    json.Key("columns").BeginArray();
    for (const GridModel::Column& column : columns) {
        json.BeginObject().String("name", column.name).String("title", column.title);
        json.Number("width", column.width).Boolean("visible", column.visible).EndObject();
    }
    json.EndArray();
    json.Key("cells").BeginArray();
    for (int row = 0; row < grid.RowCount(); ++row) {
        json.BeginArray();
        for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
            json.String(grid.Model()->Cell(row, column));
        }
        json.EndArray();
    }
    json.EndArray();
    json.Number("current", grid.CurrentRow() + 1);
}

}  // namespace vlm::ui
