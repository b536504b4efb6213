#pragma once

#include <string>
#include <string_view>

#include "database/Connection.h"

namespace vlm::data::testing {

/// The rows from the current one on, as text: cells parted by "|", rows by ";", Null as "NULL".
inline std::string RowText(Recordset& rows) {
    std::string text;
    for (; !rows.AtEnd(); rows.MoveNext()) {
        if (!text.empty()) text += ';';
        for (int ordinal = 0; ordinal < rows.FieldCount(); ++ordinal) {
            if (ordinal > 0) text += '|';
            text += rows.IsNull(ordinal) ? "NULL" : rows.TextOf(ordinal);
        }
    }
    return text;
}

inline std::string RowText(Connection& connection, std::string_view sql) { return RowText(*connection.Open(sql)); }

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

}  // namespace vlm::data::testing
