#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "OdbcSession.h"

namespace vlm::data::odbc {

/// One statement on its way, and the results that it gives one after the other. Ask the session first (Claim).
class OdbcStatement {
public:
    explicit OdbcStatement(std::shared_ptr<OdbcSession> session)
        : session_(std::move(session)), handle_(session_->Handle()) {}

    OdbcSession& Session() const { return *session_; }
    SQLHANDLE Handle() const { return handle_.Get(); }
    /// The result itself; OdbcError for a call that went wrong.
    SQLRETURN Check(SQLRETURN result) const {
        session_->Check(result, SQL_HANDLE_STMT, Handle());
        return result;
    }

    /// Stands on the first result, which may be one without rows.
    void Execute(std::string_view sql) const;
    /// The next row, or block of rows, of the current result; false at its end.
    bool Fetch() const { return !AtEnd(SQLFetch(Handle())); }
    bool NextResult() const { return !AtEnd(SQLMoreResults(Handle())); }
    /// Executes and goes through all results, passing rows over; the number of rows that were changed.
    std::int64_t Change(std::string_view sql) const;
    /// Columns of the current result; 0 for one without rows.
    int ColumnCount() const;

private:
    bool AtEnd(SQLRETURN result) const;
    std::int64_t ChangedRows() const;

    std::shared_ptr<OdbcSession> session_;
    OdbcStatementHandle handle_;
};

}  // namespace vlm::data::odbc
