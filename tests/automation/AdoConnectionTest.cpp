#include <gtest/gtest.h>

#include "automation/ForeignObject.h"
#include "automation/OpenableRows.h"
#include "data/ConnectionContract.h"
#include "data/DatabaseFolder.h"
#include "data/RowText.h"
#include "platform/Error.h"
#include "platform/data/ado/AdoConnection.h"
#include "platform/data/ado/ConnectionObject.h"
#include "platform/data/ado/HostRecordset.h"
#include "platform/data/ado/RecordsetObject.h"

namespace vlm::data::testing {
namespace {

using ado::AdoConnection;
using ado::ConnectionObject;
using ado::HostRecordset;
using ado::RecordsetObject;
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

class AdoConnectionTest : public ::testing::Test {
protected:
    AdoConnectionTest() {
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

TEST_F(AdoConnectionTest, GoesThroughAllRowSetsAndLetsThemGo) {
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

TEST_F(AdoConnectionTest, ReadsMoreRowsThanABlockHolds) {
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

TEST_F(AdoConnectionTest, ErrorsKeepWhatTheProviderSays) {
    class Failing final : public Connection {
        bool IsOpen() const override { return true; }
        std::string InitialCatalog() const override { throw Error("niente catalogo", 3265, "Provider"); }
        RecordsetPtr Open(std::string_view) override { throw Error("tabella ignota", -2147217865, "Provider SQL"); }
        std::int64_t Execute(std::string_view) override { throw Error("bloccata"); }
        void BeginTransaction() override { throw TypeMismatchError("tipo"); }
        void CommitTransaction() override {}
        void RollbackTransaction() override {}
    };
    {
        AdoConnection connection(
            com::Make<ForeignObject>(com::Make<ConnectionObject>(std::make_shared<Failing>()), world));
        try {
            connection.Open("SELECT 1");
            ADD_FAILURE();
        } catch (const Error& error) {
            EXPECT_STREQ(error.what(), "tabella ignota");
            EXPECT_EQ(error.Number(), -2147217865);
            EXPECT_EQ(error.Source(), "Provider SQL");
        }
        EXPECT_EQ(ErrorText([&] { connection.Execute("DELETE"); }), "bloccata");
        EXPECT_EQ(ErrorText([&] { connection.InitialCatalog(); }), "niente catalogo");
        EXPECT_EQ(ErrorText([&] { connection.BeginTransaction(); }), "tipo");
    }
    EXPECT_EQ(world.alive, 0);
}

TEST_F(AdoConnectionTest, WhereTheMachineHasNoRowSetsNoneIsChanged) {
    const ConnectionPtr connection = ado::ConnectionOf(Object().Get());
    EXPECT_NE(ErrorText([&] { connection->OpenForUpdate("SELECT * FROM Riga"); }), "");
    EXPECT_EQ(RowText(*connection, "SELECT COUNT(*) FROM Riga"), "2");
}

TEST_F(AdoConnectionTest, OnlyAConnectionIsAConnection) {
    int alive = 0;
    const auto other = com::Make<test::MarkedObject>(ado::kRecordsetId, alive);
    EXPECT_EQ(ado::ConnectionOf(other.Get()), nullptr);
    const ConnectionPtr native = folder.Connect();
    EXPECT_EQ(ado::ConnectionOf(com::Make<ConnectionObject>(native)->AsUnknown()), native);
    EXPECT_EQ(native.use_count(), 1);
}

TEST(RecordsetObject, IsFilledMovedAndFilteredByName) {
    const com::LateBound rows(com::Make<RecordsetObject>(std::make_unique<MemoryRecordset>()));
    const com::LateBound fields = rows.ObjectOf("Fields");
    fields.Call("Append", {com::Variant("Selezionato"), com::Variant(std::int32_t{11})});
    fields.Call("Append", {com::Variant("Cognome"), com::Variant(std::int32_t{8}), com::Variant(std::int32_t{0}),
                           com::Variant(std::int32_t{0x60})});
    fields.Call("Append", {com::Variant("IDPaziente"), com::Variant(std::int32_t{20}), com::Variant::Missing(),
                           com::Variant(std::int32_t{0x60})});
    rows.Call("Open");
    EXPECT_EQ(rows.Get("EOF").Text() + rows.Get("BOF").Text(), "TrueTrue");
    for (const char* name : {"Rossi", "D'Alò", "rossi"}) {
        rows.Call("AddNew");
        rows.ObjectOf("Fields", {com::Variant("selezionato")}).Put("Value", com::Variant(true));
        rows.ObjectOf("Fields", {com::Variant("COGNOME")}).Put("Value", com::Variant(name));
        rows.ObjectOf("Fields", {com::Variant(std::int32_t{2})}).Put("Value", com::Variant::Null());
        rows.Call("Update");
    }
    rows.Put("Filter", com::Variant("Cognome = 'ROSSI'"));
    EXPECT_EQ(rows.Get("RecordCount").Text(), "2");
    rows.Put("Filter", com::Variant(std::int32_t{0}));
    EXPECT_EQ(rows.Get("RecordCount").Text(), "3");
    rows.Call("MoveFirst");
    rows.Call("MoveNext");

    // As the library reads a row set of somebody else's, whose cursor moves meanwhile.
    Foreign world;
    {
        const HostRecordset read(com::Make<ForeignObject>(rows.Object(), world));
        EXPECT_EQ(read.FieldCount(), 3);
        EXPECT_EQ(read.TypeOf(2), FieldType::BigInt);
        EXPECT_EQ(read.TextOf(read.Ordinal("cognome")), "D'Alò");
        EXPECT_TRUE(read.IsNull(2));
        rows.Call("MovePrevious");
        EXPECT_EQ(read.TextOf(1), "Rossi");
        EXPECT_EQ(read.NumberOf(0), -1);
        EXPECT_THROW(read.Ordinal("Nome"), Error);
    }
    EXPECT_EQ(world.alive, 0);
    EXPECT_THROW(rows.ObjectOf("Fields", {com::Variant("Nome")}), Error);
    EXPECT_THROW(rows.ObjectOf("Fields", {com::Variant(std::int32_t{3})}), Error);
    rows.Call("AddNew");
    EXPECT_THROW(rows.Call("Update"), Error);  // Selezionato takes no Null
}

}  // namespace
}  // namespace vlm::data::testing
