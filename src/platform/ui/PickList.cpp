#include "platform/ui/PickList.h"

#include <algorithm>

#include "platform/Error.h"
#include "platform/text/Utf8.h"

namespace vlm::ui {

namespace {

/// Row sets name their columns without the table.
std::string_view ColumnOnly(std::string_view name) {
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? name : name.substr(point + 1);
}

}  // namespace

void PickList::Load(data::Connection& connection) {
    columns_.clear();
    rows_.clear();
    selected_ = -1;
    Changed(false);

    const data::RecordsetPtr recordset = connection.Open(rowSource);
    const int key = recordset->Ordinal(ColumnOnly(keyColumn));
    const int display = recordset->Ordinal(ColumnOnly(displayColumn));
    std::vector<std::string> columns;
    for (int i = 0; i < recordset->FieldCount(); ++i) columns.emplace_back(recordset->FieldName(i));
    std::vector<Row> rows;
    for (; !recordset->AtEnd(); recordset->MoveNext()) {
        Row row{recordset->Int32Of(key), std::string(recordset->TextOf(display)), {}};
        row.cells.reserve(columns.size());
        for (int i = 0; i < recordset->FieldCount(); ++i) row.cells.emplace_back(recordset->TextOf(i));
        rows.push_back(std::move(row));
    }
    columns_ = std::move(columns);
    rows_ = std::move(rows);
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
    const std::string_view name = ColumnOnly(column);
    const auto found = std::find_if(columns_.begin(), columns_.end(),
                                    [name](const std::string& each) { return text::EqualNoCase(each, name); });
    if (found == columns_.end()) {
        throw Error("L'elenco " + Name() + " non ha la colonna \"" + std::string(column) + "\".");
    }
    return rows_.at(static_cast<std::size_t>(index)).cells[static_cast<std::size_t>(found - columns_.begin())];
}

}  // namespace vlm::ui
