#include "databases/OdbcServer.h"

#include <cstdlib>

#include "odbc/OdbcConnection.h"

namespace vlm::host {

namespace {

constexpr std::string_view kDatabase = "Database";

}  // namespace

data::ConnectionPtr OpenOdbc(const std::string& text, const std::string& database) {
    data::odbc::OdbcText server(text);
    if (!database.empty()) server.Set(kDatabase, database);
    const char* const password = std::getenv(kPasswordVariable);
    if (password != nullptr && server.Secrets().empty()) server.Set("PWD", password);
    return std::make_shared<data::odbc::OdbcConnection>(std::move(server));
}

std::string DatabaseOf(const std::string& text) { return data::odbc::OdbcText(text).ValueOf(kDatabase); }

}  // namespace vlm::host
