#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/data/Connection.h"

namespace vlm::host {

/// A new connection to one database of a server. Never null; throws Error.
using OpenDatabase = std::function<data::ConnectionPtr(const std::string& database)>;

/// The environment's variable that a password is taken from when the connection text has none: there it stands in no
/// list of processes.
inline constexpr const char* kPasswordVariable = "ASLHOST_PWD";

/// A connection to one database of the server that an ODBC connection text leads to; "" for the one that the text
/// names. Throws Error; none says the text, which may hold a password.
data::ConnectionPtr OpenOdbc(const std::string& text, const std::string& database);

/// The same text leading to another database.
std::string WithDatabase(const std::string& text, std::string_view database);
/// Whether the text says which database it leads to.
bool NamesDatabase(const std::string& text);

}  // namespace vlm::host
