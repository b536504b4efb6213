#pragma once

#include <functional>
#include <string>

#include "database/Connection.h"

namespace vlm::host {

/// A new connection to one database of a server. Never null; throws Error.
using OpenDatabase = std::function<data::ConnectionPtr(const std::string& database)>;

/// The environment's variable that a password is taken from when the connection text has none: there it stands in no
/// list of processes.
inline constexpr const char* kPasswordVariable = "ASLHOST_PWD";

/// A connection to one database of the server that an ODBC connection text leads to; "" for the one that the text
/// names. Throws Error; none says the text, which may hold a password.
data::ConnectionPtr OpenOdbc(const std::string& text, const std::string& database);

/// The database that the text leads to; "" when it does not say.
std::string DatabaseOf(const std::string& text);

}  // namespace vlm::host
