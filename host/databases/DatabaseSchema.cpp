#include "databases/DatabaseSchema.h"

#include <algorithm>

#include "values/Error.h"

namespace vlm::host {

std::vector<std::string_view> Table::KeyColumns() const {
    std::vector<std::string_view> keys;
    for (const Column& column : columns)
        if (column.key) keys.push_back(column.name);
    return keys;
}

const Column& Table::ColumnOf(std::string_view columnName) const {
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const auto& c) { return c.name == columnName; });
    if (found == columns.end())
        throw Error("La tabella " + std::string(name) + " non ha la colonna " + std::string(columnName) + ".");
    return *found;
}

const Table& DatabaseSchema::TableOf(std::string_view tableName) const {
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const auto& t) { return t.name == tableName; });
    if (found == tables.end()) throw Error("Il database non ha la tabella " + std::string(tableName) + ".");
    return *found;
}

}  // namespace vlm::host
