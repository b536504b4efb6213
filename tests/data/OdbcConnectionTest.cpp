#include <gtest/gtest.h>

#include "data/ConnectionContract.h"
#include "data/DatabaseFolder.h"
#include "data/RowText.h"
#include "platform/Error.h"
#include "platform/data/odbc/ExactDecimal.h"
#include "platform/data/odbc/OdbcConnection.h"
#include "platform/data/odbc/OdbcError.h"
#include "platform/data/odbc/SchemaQualifier.h"

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

std::unique_ptr<ConnectionFixture> MakeFiles() { return std::make_unique<OdbcFiles>(); }

INSTANTIATE_TEST_SUITE_P(OdbcFiles, ConnectionContract,
                         ::testing::Values(ConnectionAdapter{
                             "files", MakeFiles, {.amountsAreText = true, .catalogIsFile = true}}));

}  // namespace
}  // namespace vlm::data::testing
