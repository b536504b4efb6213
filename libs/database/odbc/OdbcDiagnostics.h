#pragma once

#include <string>

#include "OdbcApi.h"

namespace vlm::data::odbc {

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

}  // namespace vlm::data::odbc
