#include "support/WindowUser.h"

#include <stdexcept>
#include <utility>

#include "dialogs/Grid.h"
#include "dialogs/Keys.h"
#include "dialogs/PickList.h"
#include "values/Utf8.h"

namespace vlm::ui::test {

namespace {

/// Key and text of a list's entries; their key is their position where they have none.
std::vector<std::pair<int, std::string>> ItemsOf(const Control& control) {
    std::vector<std::pair<int, std::string>> items;
    const auto add = [&items](const std::vector<std::string>& texts) {
        for (const std::string& text : texts) items.emplace_back(static_cast<int>(items.size()), text);
    };
    if (const auto* list = dynamic_cast<const PickList*>(&control)) {
        for (int i = 0; i < list->RowCount(); ++i) items.emplace_back(list->KeyAt(i), list->TextAt(i));
    }
    if (const auto* list = dynamic_cast<const MultiList*>(&control)) add(list->Items());
    if (const auto* list = dynamic_cast<const ChoiceControl*>(&control)) add(list->Items());
    return items;
}

}  // namespace

std::vector<std::string> WithoutFocus(std::vector<std::string> events) {
    std::erase_if(events, [](const std::string& event) {
        return event.starts_with(R"({"event":"focus")") || event.starts_with(R"({"event":"progress")");
    });
    return events;
}

int PositionOf(const Control& list, const std::string& value) {
    if (value.empty()) return -1;
    if (value[0] == '#') return std::stoi(value.substr(1));
    for (int i = 0; const auto& [key, text] : ItemsOf(list)) {
        if (text == value || std::to_string(key) == value) return i;
        ++i;
    }
    throw std::runtime_error("the list has no " + value);
}

std::string ChosenOf(const std::vector<std::string>& chosen, const std::vector<std::string>& items) {
    std::string all;
    for (const std::string& each : chosen) all += (all.empty() ? "" : ", ") + each;
    for (std::size_t i = 0; i < items.size(); ++i) all += (i == 0 ? " of " : "|") + items[i];
    return all;
}

std::string Held(const Control& control) {
    const ControlKind kind = control.Kind();
    if (kind == ControlKind::Text) return As<TextField>(control).Text();
    if (kind == ControlKind::Label) return WithoutMnemonic(control.Caption());
    if (kind == ControlKind::Frame || kind == ControlKind::Button) return std::string(text::Trim(control.Caption()));
    std::vector<std::string> items;
    for (const auto& [key, text] : ItemsOf(control)) items.push_back(text);
    if (kind != ControlKind::Grid) return ChosenOf({control.ShownText()}, items);
    const auto& grid = As<Grid>(control);
    for (int row = 0; row < grid.RowCount(); ++row) {
        for (int i = 0; const GridModel::Column& column : grid.Model()->Columns()) {
            if (column.visible) items.push_back(grid.Model()->Cell(row, i));
            ++i;
        }
    }
    return ChosenOf({std::to_string(grid.CurrentRow())}, items);
}

}  // namespace vlm::ui::test
