#include "host/OdbcServer.h"

#include <cstdlib>

#include "platform/data/odbc/OdbcConnection.h"

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

std::string WithDatabase(const std::string& text, std::string_view database) {
    data::odbc::OdbcText server(text);
    server.Set(kDatabase, database);
    return server.Text();
}

bool NamesDatabase(const std::string& text) { return !data::odbc::OdbcText(text).ValueOf(kDatabase).empty(); }

}  // namespace vlm::host
