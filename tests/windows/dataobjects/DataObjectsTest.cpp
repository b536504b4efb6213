#include "ado/AdoConnection.h"
#include "dataobjects/DataObjects.h"
#include "support/DatabaseFolder.h"

namespace vlm::data::testing {
namespace {

using namespace test::dataobjects;

/// Databases as the library finds them on a host's connection.
template <typename... Switches>
class HostDatabases final : public ConnectionFixture, private Switches... {
public:
    void Run(const std::string& database, const std::string& sql) override { folder_.Run(database, sql); }
    ConnectionPtr Connect() override { return std::make_shared<ado::AdoConnection>(NewConnection(folder_.Connect())); }

private:
    RecordsetClass recordsets_;
    DatabaseFolder folder_;
};

const ConnectionAdapter kBlocks = {"blocks", MakeDatabases<HostDatabases<>>};
const ConnectionAdapter kFields = {"fields", MakeDatabases<HostDatabases<WithoutBlocks>>};

INSTANTIATE_TEST_SUITE_P(DataObjects, ConnectionContract, ::testing::Values(kBlocks, kFields));
INSTANTIATE_TEST_SUITE_P(DataObjects, DialectContract, ::testing::Values(kBlocks, kFields));

}  // namespace
}  // namespace vlm::data::testing
