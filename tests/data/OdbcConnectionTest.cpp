#include <gtest/gtest.h>

#include "data/ConnectionContract.h"
#include "data/DatabaseFolder.h"
#include "data/RowText.h"
#include "platform/Error.h"
#include "platform/data/odbc/ExactDecimal.h"
#include "platform/data/odbc/OdbcConnection.h"
#include "platform/data/odbc/OdbcError.h"
#include "platform/data/odbc/SchemaQualifier.h"
#include "tests/support/OdbcServerText.h"

namespace vlm::data::testing {
namespace {

using odbc::ExactDecimal;
using odbc::OdbcConnection;
using odbc::OdbcError;
using odbc::OdbcText;

/// The same files as the embedded adapter's, through the driver for them.
class OdbcFiles final : public ConnectionFixture {
public:
    void Run(const std::string& database, const std::string& sql) override { folder_.Run(database, sql); }
    ConnectionPtr Connect() override { return OdbcConnection::Connect(Text()); }
    std::string Text() const {
        return "Driver={SQLite3};Database=" + (folder_.Path() / "Studio0012.sqlite").string() + ";Timeout=0";
    }

private:
    DatabaseFolder folder_;
};

/// The same files behind a server on this machine, through the driver for its protocol.
class OdbcServer final : public ConnectionFixture {
public:
    explicit OdbcServer(std::int64_t endAfterRows = 0)
        : server(folder.Path().string(), test::ServerOptions(endAfterRows)) {}

    void Run(const std::string& database, const std::string& sql) override { folder.Run(database, sql); }
    ConnectionPtr Connect() override { return OdbcConnection::Connect(Text()); }
    std::string Text() const { return test::OdbcServerText(server) + ";PWD=" + test::kServerPassword; }

    DatabaseFolder folder;
    host::tds::TdsServer server;
};

std::unique_ptr<ConnectionFixture> MakeServer() { return std::make_unique<OdbcServer>(); }

INSTANTIATE_TEST_SUITE_P(OdbcServer, ConnectionContract, ::testing::Values(ConnectionAdapter{"server", MakeServer}));
INSTANTIATE_TEST_SUITE_P(OdbcServer, DialectContract, ::testing::Values(ConnectionAdapter{"server", MakeServer}));

std::unique_ptr<ConnectionFixture> MakeFiles() { return std::make_unique<OdbcFiles>(); }

INSTANTIATE_TEST_SUITE_P(OdbcFiles, ConnectionContract,
                         ::testing::Values(ConnectionAdapter{
                             "files", MakeFiles, {.amountsAreText = true, .catalogIsFile = true}}));

}  // namespace
}  // namespace vlm::data::testing
