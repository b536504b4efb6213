#pragma once

#include <string>

#include "values/Error.h"

namespace vlm::data::odbc {

/// An error of the driver or the server. The description is the engine's own text followed by state and code:
/// "Invalid object name 'Assente'. (SQLSTATE 42S02, codice 208)".
class OdbcError : public Error {
public:
    OdbcError(const std::string& description, std::string state, std::int32_t nativeCode)
        : Error(description + " (SQLSTATE " + state + ", codice " + std::to_string(nativeCode) + ")"),
          state_(std::move(state)),
          nativeCode_(nativeCode) {}

    /// Five characters.
    const std::string& State() const noexcept { return state_; }
    /// The engine's own number of the error.
    std::int32_t NativeCode() const noexcept { return nativeCode_; }

private:
    std::string state_;
    std::int32_t nativeCode_;
};

}  // namespace vlm::data::odbc
