#include "platform/data/odbc/OdbcStatement.h"

#include <algorithm>

namespace vlm::data::odbc {

void OdbcStatement::Execute(std::string_view sql) const {
    WideText wide = Wide(sql);
    Check(SQLExecDirectW(Handle(), wide.data(), static_cast<SQLINTEGER>(wide.size())));
}

int OdbcStatement::ColumnCount() const {
    SQLSMALLINT count = 0;
    Check(SQLNumResultCols(Handle(), &count));
    return count;
}

std::int64_t OdbcStatement::ChangedRows() const {
    SQLLEN count = 0;
    Check(SQLRowCount(Handle(), &count));
    return std::max<std::int64_t>(count, 0);  // negative where it is not known, as for a definition
}

}  // namespace vlm::data::odbc
