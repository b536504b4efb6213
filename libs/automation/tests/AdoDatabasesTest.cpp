#include "OpenableRows.h"
#include "ado/AdoConnection.h"
#include "ado/ConnectionObject.h"
#include "support/ConnectionContract.h"
#include "support/DatabaseFolder.h"
#include "support/ForeignObject.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

using ado::AdoConnection;
using ado::ConnectionObject;
using test::Foreign;
using test::ForeignObject;
using test::OpenableRows;

/// Our databases seen through somebody else's connection.
class ForeignDatabases final : public ConnectionFixture {
public:
    explicit ForeignDatabases(std::set<std::string> hidden) { world_.hidden = std::move(hidden); }
    ~ForeignDatabases() override { EXPECT_LE(world_.alive, 1); }  // the connection itself ends after the fixture

    void Run(const std::string& database, const std::string& sql) override { folder_.Run(database, sql); }
    ConnectionPtr Connect() override {
        ConnectionPtr native = folder_.Connect();
        const auto newRows = [native, &world = world_] {
            return com::LateBound(com::Make<ForeignObject>(com::Make<OpenableRows>(native), world));
        };
        return std::make_shared<AdoConnection>(
            com::Make<ForeignObject>(com::Make<ConnectionObject>(std::move(native)), world_), newRows);
    }

private:
    DatabaseFolder folder_;
    Foreign world_;
};

std::unique_ptr<ConnectionFixture> InBlocks() { return std::make_unique<ForeignDatabases>(std::set<std::string>{}); }
std::unique_ptr<ConnectionFixture> FieldByField() {
    return std::make_unique<ForeignDatabases>(std::set<std::string>{"GetRows"});
}

INSTANTIATE_TEST_SUITE_P(Ado, ConnectionContract,
                         ::testing::Values(ConnectionAdapter{"blocks", InBlocks},
                                           ConnectionAdapter{"fields", FieldByField}));
INSTANTIATE_TEST_SUITE_P(Ado, DialectContract,
                         ::testing::Values(ConnectionAdapter{"blocks", InBlocks},
                                           ConnectionAdapter{"fields", FieldByField}));

class AdoDatabasesTest : public ::testing::Test {
protected:
    AdoDatabasesTest() {
        folder.Run("Studio0012", "CREATE TABLE Riga (IDRiga INT, Testo VARCHAR(20), Importo MONEY)");
        folder.Run("Studio0012", "INSERT INTO Riga VALUES (1, 'uno', 1.5), (2, NULL, 2)");
        folder.Run("Studio0012", "CREATE TABLE StoredProcedure (Name VARCHAR(50), Ordinal INT, Body TEXT)");
        folder.Run("Studio0012",
                   "INSERT INTO StoredProcedure VALUES ('SP_Due', 1, 'SELECT IDRiga FROM Riga WHERE IDRiga = ?1'),"
                   " ('SP_Due', 2, 'SELECT Testo, IDRiga FROM Riga ORDER BY IDRiga')");
    }
    com::Ref<IDispatch> Object() {
        return com::Make<ForeignObject>(com::Make<ConnectionObject>(folder.Connect()), world);
    }

    DatabaseFolder folder;
    Foreign world;
};

TEST_F(AdoDatabasesTest, GoesThroughAllRowSetsAndLetsThemGo) {
    for (const char* hidden : {"", "GetRows"}) {
        world.hidden = {hidden};
        {
            AdoConnection connection(Object());
            const RecordsetPtr rows = connection.Open("SP_Due 2");
            EXPECT_EQ(RowText(*rows), "2");
            EXPECT_TRUE(rows->NextRecordset());
            EXPECT_EQ(rows->FieldCount(), 2);
            EXPECT_EQ(RowText(*rows), "uno|1;NULL|2");
            EXPECT_FALSE(rows->NextRecordset());
            EXPECT_TRUE(rows->AtEnd());
            rows->Close();
            EXPECT_FALSE(rows->IsOpen());
            EXPECT_EQ(world.alive, 1);
        }
        EXPECT_EQ(world.alive, 0);
    }
}

TEST_F(AdoDatabasesTest, ReadsMoreRowsThanABlockHolds) {
    folder.Run("Studio0012",
               "WITH RECURSIVE n(i) AS (SELECT 3 UNION ALL SELECT i + 1 FROM n WHERE i < 1600)"
               " INSERT INTO Riga SELECT i, 'riga ' || i, i FROM n");
    AdoConnection connection(Object());
    const RecordsetPtr rows = connection.Open("SELECT IDRiga, Importo FROM Riga ORDER BY IDRiga");
    std::int64_t count = 0;
    for (; !rows->AtEnd(); rows->MoveNext()) ASSERT_EQ(rows->IntegerOf(0), ++count);
    EXPECT_EQ(count, 1600);
    EXPECT_THROW(rows->MoveNext(), Error);
    EXPECT_THROW(rows->TextOf(0), Error);
}

TEST_F(AdoDatabasesTest, WhereTheMachineHasNoRowSetsNoneIsChanged) {
    const ConnectionPtr connection = ado::ConnectionOf(Object().Get());
    EXPECT_NE(ErrorText([&] { connection->OpenForUpdate("SELECT * FROM Riga"); }), "");
    EXPECT_EQ(RowText(*connection, "SELECT COUNT(*) FROM Riga"), "2");
}

}  // namespace
}  // namespace vlm::data::testing
