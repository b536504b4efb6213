#pragma once

#include <algorithm>
#include <map>
#include <string>

namespace vlm::test {

using SqlRow = std::map<std::string, std::string>;

inline std::string InsertionInto(const std::string& table, const SqlRow& row) {
    std::string names;
    std::string values;
    for (const auto& [name, value] : row) {
        names += (names.empty() ? "" : ",") + name;
        values += (values.empty() ? "" : ",") + value;
    }
    return "INSERT INTO " + table + " (" + names + ") VALUES (" + values + ");";
}

/// "Cognome='Rossi'; Nome=NULL": columns with the literals of their values; the later one counts.
inline SqlRow ColumnsOf(const std::string& text) {
    SqlRow row;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t equals = text.find('=', at);
        const std::size_t end = std::min(text.find("; ", equals), text.size());
        row[text.substr(at, equals - at)] = text.substr(equals + 1, end - equals - 1);
        at = end + 2;
    }
    return row;
}

}  // namespace vlm::test
