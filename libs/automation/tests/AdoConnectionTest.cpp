#include <gtest/gtest.h>

#include "ado/AdoConnection.h"
#include "ado/AdoInterfaces.h"
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
        EXPECT_THROW(connection.OpenForUpdate("SELECT * FROM Riga"), Error) << "no row sets, or none for this object";
    }
    EXPECT_EQ(world.alive, 0);
}

using com::Variant;

/// Patients in a row set of ours, called by name as a host's grid would.
class RecordsetObjectTest : public ::testing::Test {
protected:
    RecordsetObjectTest() : rows(ado::MakeRecordsetObject(std::make_unique<MemoryRecordset>())) {
        const com::LateBound fields = rows.ObjectOf("Fields");
        const Variant none(std::int32_t{0}), nullable(std::int32_t{0x60});
        fields.Call("Append", {Variant("Selezionato"), Variant(std::int32_t{11})});
        fields.Call("Append", {Variant("Cognome"), Variant(std::int32_t{8}), none, nullable});
        fields.Call("Append", {Variant("IDPaziente"), Variant(std::int32_t{20}), Variant::Missing(), nullable});
        rows.Call("Open");
    }
    void Add(const char* surname, const Variant& key) {
        rows.Call("AddNew");
        rows.ObjectOf("Fields", {Variant("selezionato")}).Put("Value", Variant(true));
        rows.ObjectOf("Fields", {Variant("COGNOME")}).Put("Value", Variant(surname));
        rows.ObjectOf("Fields", {Variant(std::int32_t{2})}).Put("Value", key);
        rows.Call("Update");
    }
    void AddThree() {
        Add("Rossi", Variant(std::int32_t{7}));
        Add("D'Alò", Variant::Null());
        Add("rossi", Variant(std::int32_t{3}));
    }
    static std::string Surname(const com::LateBound& of) { return of.Get("Collect", {Variant("cognome")}).Text(); }
    std::string Walk(const char* move, const char* end) {
        std::string surnames;
        for (; !rows.Get(end).Get().boolVal; rows.Call(move)) surnames += Surname(rows) + " ";
        return surnames;
    }
    static std::uint32_t Failure(const std::function<void()>& body) {
        return static_cast<std::uint32_t>(test::Caught(body).Number());
    }

    com::LateBound rows;
};

TEST_F(RecordsetObjectTest, IsFilledAndFilteredAndReadAsSomebodyElses) {
    EXPECT_EQ(rows.Get("EOF").Text() + rows.Get("BOF").Text(), "TrueTrue");
    AddThree();
    rows.Put("Filter", Variant("Cognome = 'ROSSI'"));
    EXPECT_EQ(rows.Get("RecordCount").Text() + rows.Get("Filter").Text(), "2Cognome = 'ROSSI'");
    rows.Put("Filter", Variant(std::int32_t{0}));
    EXPECT_EQ(rows.Get("RecordCount").Text() + rows.Get("Filter").Text(), "30");
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
    EXPECT_EQ(Failure([&] { rows.ObjectOf("Fields", {Variant("Nome")}); }), 0x800A0CC1);
    EXPECT_EQ(Failure([&] { rows.ObjectOf("Fields", {Variant(std::int32_t{3})}); }), 0x800A0CC1);
    rows.Call("AddNew");
    EXPECT_THROW(rows.Call("Update"), Error);  // Selezionato takes no Null
}

TEST_F(RecordsetObjectTest, IsWalkedBothWaysSortedSearchedAndClonedAsAGridDoes) {
    AddThree();
    rows.Call("MoveFirst");
    EXPECT_EQ(Walk("MoveNext", "EOF"), "Rossi D'Alò rossi ");
    EXPECT_EQ(rows.Get("AbsolutePosition").Text(), "-3");
    EXPECT_EQ(Failure([&] { Surname(rows); }), 0x800A0BCD);
    rows.Call("MoveLast");
    EXPECT_EQ(Walk("MovePrevious", "BOF"), "rossi D'Alò Rossi ");
    rows.Put("Sort", Variant("Cognome, IDPaziente DESC"));
    EXPECT_EQ(Walk("MoveNext", "EOF"), "D'Alò Rossi rossi ");
    rows.Put("AbsolutePosition", Variant(std::int32_t{2}));
    const Variant mark = rows.Get("Bookmark");
    rows.Call("Move", {Variant(std::int32_t{-1})});
    EXPECT_EQ(Surname(rows), "D'Alò");
    const com::LateBound clone(rows.Call("Clone").Object());
    clone.Put("Bookmark", mark);
    EXPECT_EQ(Surname(clone), "Rossi");
    clone.Call("Find", {Variant("IDPaziente < 5"), Variant(std::int32_t{1})});
    EXPECT_EQ(Surname(clone) + clone.Get("AbsolutePosition").Text(), "rossi3");
    clone.Call("Find", {Variant("Cognome LIKE 'z*'"), Variant(std::int32_t{0}), Variant(std::int32_t{-1})});
    EXPECT_EQ(clone.Get("BOF").Text(), "True");
    EXPECT_EQ(rows.Call("CompareBookmarks", {mark, mark}).Text(), "1");
    EXPECT_EQ(rows.Call("GetString",
                        {Variant(std::int32_t{2}), Variant(std::int32_t{2}), Variant(";"), Variant("|"), Variant("-")})
                  .Text(),
              "True;D'Alò;-|True;Rossi;7|");
    const Variant block = clone.Call("GetRows", {Variant::Missing(), Variant(std::int32_t{1}), Variant("Cognome")});
    EXPECT_EQ(block.Get().parray->rgsabound[0].cElements, 3u);
    EXPECT_EQ(block.Get().parray->rgsabound[1].cElements, 1u);
}

TEST_F(RecordsetObjectTest, IsEditedAndRefusesWhatItCannotServe) {
    AddThree();
    rows.Call("MoveFirst");
    const com::LateBound field = rows.ObjectOf("Fields", {Variant("Cognome")});
    field.Put("Value", Variant("Bianchi"));
    EXPECT_EQ(rows.Get("EditMode").Text() + field.Get("OriginalValue").Text() + field.Get("Value").Text(),
              "1RossiBianchi");
    rows.Call("CancelUpdate");
    rows.Call("Update", {Variant("Cognome"), Variant("Neri")});
    rows.Call("Delete");
    EXPECT_EQ(Failure([&] { Surname(rows); }), 0x800A0BCD);
    rows.Call("MoveNext");
    EXPECT_EQ(Surname(rows) + rows.Get("RecordCount").Text(), "D'Alò2");
    std::string columns;
    com::Ref<IEnumVARIANT> walk = com::Query<IEnumVARIANT>(rows.ObjectOf("Fields").Get("_NewEnum").Get().punkVal);
    for (Variant each; walk->Next(1, each.Receive(), nullptr) == S_OK;) {
        const com::LateBound column(each.Object());
        for (const char* fact :
             {"Name", "Type", "DefinedSize", "ActualSize", "Attributes", "Precision", "NumericScale"}) {
            columns += column.Get(fact).Text() + ' ';
        }
    }
    EXPECT_EQ(columns, "Selezionato 11 2 2 20 255 255 Cognome 8 0 10 100 255 255 IDPaziente 20 8 0 116 19 255 ");
    EXPECT_EQ(rows.Call("Supports", {Variant(std::int32_t{0x1008000 | 0x200})}).Text(), "True");
    EXPECT_EQ(rows.Get("CursorType").Text() + rows.Get("LockType").Text() + rows.Get("CursorLocation").Text(), "333");
    for (const char* member : {"Requery", "Resync", "Save", "CancelBatch"}) {
        EXPECT_EQ(Failure([&] { rows.Call(member); }), 0x800A0CB3) << member;
    }
    EXPECT_EQ(Failure([&] { rows.Put("Filter", Variant(std::int32_t{2})); }), 0x800A0CB3);
    EXPECT_EQ(Failure([&] { rows.Put("CursorType", Variant(std::int32_t{3})); }), 0x800A0E79);
    rows.Call("Close");
    EXPECT_EQ(rows.Get("State").Text(), "0");
    EXPECT_EQ(Failure([&] { rows.Get("EOF"); }), 0x800A0E78);
}

/// Slot by slot: what a host that binds early finds behind the identifier it asks for.
TEST_F(RecordsetObjectTest, TheTableOfItsInterfacesStandsBehindTheirIdentifiers) {
    AddThree();
    for (const char* id : {"0000050E", "0000054F", "00000555", "00000556", "00000534"}) {
        GUID guid = ado::IAdoRecordset::kId;
        guid.Data1 = static_cast<decltype(guid.Data1)>(std::stoul(id, nullptr, 16));
        const auto table = com::Query<ado::IAdoRecordset>(rows.Object().Get(), guid);
        ASSERT_TRUE(table) << id;
        std::intptr_t count = 0;
        EXPECT_TRUE(table->get_RecordCount(&count) == S_OK && count == 3) << id;
        EXPECT_EQ(com::Query<ISupportErrorInfo>(table.Get())->InterfaceSupportsErrorInfo(guid), S_OK);
    }
    EXPECT_FALSE(com::Query<IUnknown>(rows.Object().Get(), com::Guid("00001556-0000-0010-8000-00AA006D2EA4")));
    const auto table = com::Query<ado::IAdoRecordset>(rows.Object().Get(), ado::kRecordsetId);
    EXPECT_EQ(table->get_EOF(nullptr), E_POINTER);
    EXPECT_EQ(static_cast<std::uint32_t>(table->Requery(-1)), 0x800A0CB3);
    com::Ref<IErrorInfo> info;
    EXPECT_EQ(GetErrorInfo(0, info.Receive()), S_OK);
    com::Bstr text;
    EXPECT_EQ(info->GetDescription(text.Receive()), S_OK);
    EXPECT_EQ(text.Text(), "Requery: queste righe non lo permettono.");
}

}  // namespace
}  // namespace vlm::data::testing
