#pragma once

#include <map>
#include <string>

namespace vlm::test {

/// A row for a table: SQL literals by column name.
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

}  // namespace vlm::test
