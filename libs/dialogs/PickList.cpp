#include "dialogs/PickList.h"

#include <algorithm>

#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::ui {

std::string_view WithoutTable(std::string_view column) {
    const std::size_t point = column.rfind('.');
    return point == std::string_view::npos ? column : column.substr(point + 1);
}

void PickList::SetRows(std::vector<std::string> columns, std::vector<Row> rows) {
    columns_ = std::move(columns);
    rows_ = std::move(rows);
    selected_ = -1;
    Changed(false);
}

void PickList::SelectIndex(int index) {
    selected_ = index >= 0 && index < RowCount() ? index : -1;
    Changed(true);
}

bool PickList::SelectKey(std::int32_t key) {
    const auto row = std::find_if(rows_.begin(), rows_.end(), [key](const Row& each) { return each.key == key; });
    if (row == rows_.end()) return false;
    SelectIndex(static_cast<int>(row - rows_.begin()));
    return true;
}

std::int32_t PickList::SelectedKey() const { return selected_ < 0 ? 0 : KeyAt(selected_); }

std::string PickList::SelectedText() const { return selected_ < 0 ? std::string() : TextAt(selected_); }

std::string PickList::SelectedColumn(std::string_view column) const {
    return selected_ < 0 ? std::string() : ColumnAt(selected_, column);
}

std::string PickList::ColumnAt(int index, std::string_view column) const {
    const std::string_view name = WithoutTable(column);
    const auto found = std::find_if(columns_.begin(), columns_.end(),
                                    [name](const std::string& each) { return text::EqualNoCase(each, name); });
    if (found == columns_.end()) {
        throw Error("L'elenco " + Name() + " non ha la colonna \"" + std::string(column) + "\".");
    }
    return rows_.at(static_cast<std::size_t>(index)).cells[static_cast<std::size_t>(found - columns_.begin())];
}

}  // namespace vlm::ui
