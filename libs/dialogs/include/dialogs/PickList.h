#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dialogs/Control.h"

namespace vlm::ui {

/// "IDSpecialista" of "Specialista.IDSpecialista": row sets name their columns without the table.
std::string_view WithoutTable(std::string_view column);

/// A drop-down of rows, each with a key, a text and the columns it came with. Who fills it assigns what the rows come
/// from (a query and the names of two of its columns) and hands in the rows.
class PickList : public Control {
public:
    /// A column shown beside the text; `width` in the old frame's units (1/1440 inch).
    struct ExtraColumn {
        std::string name;
        std::string caption;
        int width = 0;
    };

    PickList(Dialog& dialog, std::string name, std::string caption = {})
        : Control(dialog, ControlKind::PickList, std::move(name), std::move(caption)) {}

    std::string rowSource;
    /// May carry a table's name before a point ("Specialista.IDSpecialista"); the row set's column is what follows it.
    std::string keyColumn;
    std::string displayColumn;
    std::vector<ExtraColumn> extraColumns;

    struct Row {
        std::int32_t key;
        std::string text;
        std::vector<std::string> cells;  // as text, one for each column
    };
    /// Replaces columns and rows; nothing is chosen afterwards. Runs no handler.
    void SetRows(std::vector<std::string> columns, std::vector<Row> rows);

    int RowCount() const noexcept { return static_cast<int>(rows_.size()); }
    std::int32_t KeyAt(int index) const { return rows_.at(static_cast<std::size_t>(index)).key; }
    const std::string& TextAt(int index) const { return rows_.at(static_cast<std::size_t>(index)).text; }

    /// Choosing runs OnChange also when the choice stays the same, as a click does.
    int SelectedIndex() const noexcept { return selected_; }  // from 0, -1 for none
    void SelectIndex(int index);                              // an index that is not there chooses nothing
    /// Chooses the row of that key; false, and the choice stays, when there is none.
    bool SelectKey(std::int32_t key);
    /// The chosen row's key, 0 for none.
    std::int32_t SelectedKey() const;
    std::string SelectedText() const;
    std::string ShownText() const override { return SelectedText(); }
    /// A column of the chosen row as text; "" for Null or when nothing is chosen; Error when there is no such column.
    std::string SelectedColumn(std::string_view column) const;
    std::string ColumnAt(int index, std::string_view column) const;

private:
    std::vector<std::string> columns_;
    std::vector<Row> rows_;
    int selected_ = -1;
};

}  // namespace vlm::ui
