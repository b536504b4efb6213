#pragma once

#include <string>

#include "platform/data/odbc/OdbcApi.h"

namespace vlm::data::odbc {

/// What a handle has to say of its last call: all records' texts, state and code of the first.
struct OdbcDiagnostics {
    std::string state = "HY000";
    long nativeCode = 0;
    std::string text;

    static OdbcDiagnostics Of(SQLSMALLINT handleType, SQLHANDLE handle);

    /// Whether it tells that the connection is gone.
    bool ConnectionFailed() const { return state.starts_with("08"); }
};

}  // namespace vlm::data::odbc
