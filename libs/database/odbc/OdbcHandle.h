#pragma once

/// The system's own ODBC for this room's sources only: on Windows its headers bring the system's macros with them.

#ifdef _WIN32
#include <windows.h>
#endif

#include <cstdint>
#include <new>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>
#include <string>
#include <string_view>

#include "values/Error.h"
#include "values/Utf16.h"

namespace vlm::data::odbc {

/// What the wide functions take and give: UTF-16 in units of two bytes on every system.
using WideText = std::basic_string<SQLWCHAR>;
using WideView = std::basic_string_view<SQLWCHAR>;

inline WideText Wide(std::string_view utf8) { return text::ToUtf16<SQLWCHAR>(utf8); }

/// Attributes that are numbers travel in a pointer's place.
inline SQLPOINTER AttributeValue(std::uintptr_t value) { return reinterpret_cast<SQLPOINTER>(value); }

/// An error of the driver or the server. The description is the engine's own text followed by state and code:
/// "Invalid object name 'Assente'. (SQLSTATE 42S02, codice 208)".
class OdbcError : public Error {
public:
    /// `state` has five characters; `nativeCode` is the engine's own number of the error.
    OdbcError(const std::string& description, const std::string& state, std::int32_t nativeCode)
        : Error(description + " (SQLSTATE " + state + ", codice " + std::to_string(nativeCode) + ")") {}
};

/// What a handle has to say of its last call: all records' texts, state and code of the first that is an error.
struct OdbcDiagnostics {
    std::string state = "HY000";
    std::int32_t nativeCode = 0;
    std::string text;
    bool warning = true;  // no record is an error

    static OdbcDiagnostics Of(SQLSMALLINT handleType, SQLHANDLE handle);

    /// Whether it tells that the connection is gone. Other states of the class tell of a database that is not there.
    bool ConnectionFailed() const { return state == "08S01" || state == "08003" || state == "08007"; }
};

/// An environment, a connection or a statement, freed with its owner. A connection must be disconnected before.
template <SQLSMALLINT kHandleType>
class OdbcHandle {
public:
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
