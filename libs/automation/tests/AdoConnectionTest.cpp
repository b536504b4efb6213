#include <gtest/gtest.h>

#include "ado/AdoConnection.h"
#include "ado/ConnectionObject.h"
#include "ado/HostRecordset.h"
#include "ado/RecordsetObject.h"
#include "database/MemoryRecordset.h"
#include "support/Caught.h"
#include "support/FakeConnection.h"
#include "support/ForeignObject.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

using ado::AdoConnection;
using ado::ConnectionObject;
using ado::HostRecordset;
using ado::RecordsetObject;
using test::FakeConnection;
using test::Foreign;
using test::ForeignObject;

TEST(AdoConnectionTest, ReadsRowsInBlocksAndFieldByField) {
    const auto database = std::make_shared<FakeConnection>();
    test::FakeTable& table = database->tables["SELECT *"];
    table.columns = {"Cognome", "Nome"};
    for (int i = 0; i < 1600; ++i) table.rows.push_back({"Nicolò " + std::to_string(i), {}});
    for (const char* hidden : {"", "GetRows"}) {
        Foreign world;
        world.hidden = {hidden};
        {
            AdoConnection connection(com::Make<ForeignObject>(com::Make<ConnectionObject>(database), world));
            const RecordsetPtr rows = connection.Open("SELECT *");
            std::size_t count = 0;
            for (; !rows->AtEnd(); rows->MoveNext()) {
                ASSERT_EQ(rows->TextOf(rows->Ordinal("cognome")), "Nicolò " + std::to_string(count++));
                ASSERT_TRUE(rows->IsNull(1));
            }
            EXPECT_EQ(count, table.rows.size());
            EXPECT_THROW(rows->MoveNext(), Error);
        }
        EXPECT_EQ(world.alive, 0);
    }
}

TEST(AdoConnectionTest, ErrorsKeepWhatTheProviderSays) {
    Foreign world;
    class Failing final : public FakeConnection {
        std::string InitialCatalog() const override { throw Error("niente catalogo", 3265, "Provider"); }
        RecordsetPtr Open(std::string_view) override { throw Error("tabella ignota", -2147217865, "Provider SQL"); }
        std::int64_t Execute(std::string_view) override { throw Error("bloccata"); }
        void BeginTransaction() override { throw TypeMismatchError("tipo"); }
    };
    {
        AdoConnection connection(
            com::Make<ForeignObject>(com::Make<ConnectionObject>(std::make_shared<Failing>()), world));
        const Error error = test::Caught([&] { connection.Open("SELECT 1"); });
        EXPECT_EQ(error.what() + std::to_string(error.Number()) + error.Source(),
                  "tabella ignota-2147217865Provider SQL");
        EXPECT_EQ(ErrorText([&] { connection.Execute("DELETE"); }), "bloccata");
        EXPECT_EQ(ErrorText([&] { connection.InitialCatalog(); }), "niente catalogo");
        EXPECT_EQ(ErrorText([&] { connection.BeginTransaction(); }), "tipo");
    }
    EXPECT_EQ(world.alive, 0);
}

TEST(AdoConnectionTest, OnlyAConnectionIsAConnection) {
    int alive = 0;
    const auto other = com::Make<test::MarkedObject>(ado::kRecordsetId, alive);
    EXPECT_EQ(ado::ConnectionOf(other.Get()), nullptr);
    const ConnectionPtr native = std::make_shared<FakeConnection>();
    EXPECT_EQ(ado::ConnectionOf(com::Make<ConnectionObject>(native)->AsUnknown()), native);
    EXPECT_EQ(native.use_count(), 1);
}

TEST(RecordsetObject, IsFilledMovedAndFilteredByName) {
    using com::Variant;
    const com::LateBound rows(com::Make<RecordsetObject>(std::make_unique<MemoryRecordset>()));
    const com::LateBound fields = rows.ObjectOf("Fields");
    const Variant none(std::int32_t{0}), nullable(std::int32_t{0x60});
    fields.Call("Append", {Variant("Selezionato"), Variant(std::int32_t{11})});
    fields.Call("Append", {Variant("Cognome"), Variant(std::int32_t{8}), none, nullable});
    fields.Call("Append", {Variant("IDPaziente"), Variant(std::int32_t{20}), Variant::Missing(), nullable});
    rows.Call("Open");
    EXPECT_EQ(rows.Get("EOF").Text() + rows.Get("BOF").Text(), "TrueTrue");
    for (const char* name : {"Rossi", "D'Alò", "rossi"}) {
        rows.Call("AddNew");
        rows.ObjectOf("Fields", {Variant("selezionato")}).Put("Value", Variant(true));
        rows.ObjectOf("Fields", {Variant("COGNOME")}).Put("Value", Variant(name));
        rows.ObjectOf("Fields", {Variant(std::int32_t{2})}).Put("Value", Variant::Null());
        rows.Call("Update");
    }
    rows.Put("Filter", Variant("Cognome = 'ROSSI'"));
    EXPECT_EQ(rows.Get("RecordCount").Text(), "2");
    rows.Put("Filter", Variant(std::int32_t{0}));
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
    EXPECT_THROW(rows.ObjectOf("Fields", {Variant("Nome")}), Error);
    EXPECT_THROW(rows.ObjectOf("Fields", {Variant(std::int32_t{3})}), Error);
    rows.Call("AddNew");
    EXPECT_THROW(rows.Call("Update"), Error);  // Selezionato takes no Null
}

}  // namespace
}  // namespace vlm::data::testing
