#pragma once

#include <new>

#include "OdbcDiagnostics.h"
#include "OdbcError.h"

namespace vlm::data::odbc {

/// An environment, a connection or a statement, freed with its owner. A connection must be disconnected before.
template <SQLSMALLINT kHandleType>
class OdbcHandle {
public:
    static constexpr SQLSMALLINT kType = kHandleType;

    explicit OdbcHandle(SQLHANDLE parent) {
        if (SQL_SUCCEEDED(SQLAllocHandle(kHandleType, parent, &handle_))) return;
        if (parent == SQL_NULL_HANDLE) throw std::bad_alloc();
        const auto said = OdbcDiagnostics::Of(kHandleType == SQL_HANDLE_STMT ? SQL_HANDLE_DBC : SQL_HANDLE_ENV, parent);
        throw OdbcError(said.text, said.state, said.nativeCode);
    }
    OdbcHandle(const OdbcHandle&) = delete;
    OdbcHandle& operator=(const OdbcHandle&) = delete;
    ~OdbcHandle() { SQLFreeHandle(kHandleType, handle_); }

    SQLHANDLE Get() const noexcept { return handle_; }

private:
    SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

using OdbcEnvironmentHandle = OdbcHandle<SQL_HANDLE_ENV>;
using OdbcConnectionHandle = OdbcHandle<SQL_HANDLE_DBC>;
using OdbcStatementHandle = OdbcHandle<SQL_HANDLE_STMT>;

}  // namespace vlm::data::odbc
