#pragma once

#include <functional>
#include <string>

#include "platform/data/Connection.h"

namespace vlm::host {

/// A new connection to one database of a server. Never null; throws Error.
using OpenDatabase = std::function<data::ConnectionPtr(const std::string& database)>;

/// A connection to one database of the server that an ODBC connection text leads to. Throws Error; none says the text,
/// which may hold a password.
data::ConnectionPtr OpenOdbc(const std::string& text, const std::string& database);

}  // namespace vlm::host
