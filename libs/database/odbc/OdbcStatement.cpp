#include "OdbcStatement.h"

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

/// A server that is gone may look like the end of what it had to say.
bool OdbcStatement::AtEnd(SQLRETURN result) const {
    if (Check(result) != SQL_NO_DATA) return false;
    session_->RequireConnected();
    return true;
}

/// What a trigger changes is counted too, and an error may stand behind a first result that is none.
std::int64_t OdbcStatement::Change(std::string_view sql) const {
    Execute(sql);
    std::int64_t changed = 0;
    do {
        if (ColumnCount() == 0) changed += ChangedRows();
    } while (NextResult());
    return changed;
}

std::int64_t OdbcStatement::ChangedRows() const {
    SQLLEN count = 0;
    Check(SQLRowCount(Handle(), &count));
    return std::max<std::int64_t>(count, 0);  // negative where it is not known, as for a definition
}

}  // namespace vlm::data::odbc
