#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/Connection.h"

namespace vlm::data::testing {

/// The text of the error that `action` throws; "" when it throws none.
template <typename Action>
std::string ErrorText(Action action) {
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

/// For EXPECT_PRED2, which shows both.
inline bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// The rows from the current one on, as texts: cells parted by "|", Null as "NULL".
inline std::vector<std::string> RowTexts(Recordset& rows) {
    std::vector<std::string> texts;
    for (; !rows.AtEnd(); rows.MoveNext()) {
        std::string& text = texts.emplace_back();
        for (int i = 0; i < rows.FieldCount(); ++i) {
            text.append(i == 0 ? "" : "|").append(rows.IsNull(i) ? "NULL" : rows.TextOf(i));
        }
    }
    return texts;
}
/// The same as one text, the rows parted by ";".
inline std::string RowText(Recordset& rows) {
    std::string all;
    for (const std::string& text : RowTexts(rows)) all.append(all.empty() ? "" : ";").append(text);
    return all;
}
/// The rows that a statement gives, or what its error says.
inline std::string RowText(Connection& connection, std::string_view sql) {
    std::string rows;
    const std::string error = ErrorText([&] { rows = RowText(*connection.Open(sql)); });
    return rows + error;
}

/// Sets cells by the names of their columns and writes the row.
template <typename Rows>
void Write(Rows& rows, std::initializer_list<std::pair<const char*, Value>> cells) {
    for (const auto& [name, value] : cells) rows.SetValue(name, value);
    rows.Update();
}

}  // namespace vlm::data::testing
