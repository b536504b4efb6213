#include "OdbcPrimaryKey.h"

#include <array>

namespace vlm::data::odbc {

namespace {

constexpr SQLUSMALLINT kColumnName = 4;  // of the driver's answer

/// Null where the name is empty: whichever it is.
struct Argument {
    explicit Argument(const std::string& name) : text(Wide(name)) {}
    SQLWCHAR* Pointer() { return text.empty() ? nullptr : text.data(); }
    SQLSMALLINT Size() const { return static_cast<SQLSMALLINT>(text.size()); }

    WideText text;
};

}  // namespace

std::vector<std::string> PrimaryKeyOf(const OdbcStatement& statement, const TableSelect& table) {
    Argument catalog(table.database), schema(table.schema), name(table.table);
    statement.Check(SQLPrimaryKeysW(statement.Handle(), catalog.Pointer(), catalog.Size(), schema.Pointer(),
                                    schema.Size(), name.Pointer(), name.Size()));
    std::vector<std::string> columns;
    while (statement.Fetch()) {
        std::array<SQLWCHAR, 256> column{};
        SQLLEN length = 0;
        statement.Check(
            SQLGetData(statement.Handle(), kColumnName, SQL_C_WCHAR, column.data(), sizeof column, &length));
        columns.push_back(text::FromUtf16(WideView(column.data())));
    }
    return columns;
}

}  // namespace vlm::data::odbc
