#include "ado/AdoConnection.h"
#include "automation/Variant.h"
#include "dataobjects/DataObjects.h"
#include "support/DatabaseFolder.h"

namespace vlm::test::dataobjects {
namespace {

using com::Variant;
using data::testing::ConnectionAdapter;
using data::testing::MakeDatabases;

/// Databases as the library finds them on a host's connection.
template <typename... Switches>
class HostDatabases final : public data::testing::ConnectionFixture, private Switches... {
public:
    void Run(const std::string& database, const std::string& sql) override { folder_.Run(database, sql); }
    data::ConnectionPtr Connect() override {
        return std::make_shared<data::ado::AdoConnection>(NewConnection(folder_.Connect()));
    }

private:
    RecordsetClass recordsets_;
    data::testing::DatabaseFolder folder_;
};

const ConnectionAdapter kBlocks = {"blocks", MakeDatabases<HostDatabases<>>};
const ConnectionAdapter kFields = {"fields", MakeDatabases<HostDatabases<WithoutBlocks>>};

}  // namespace
}  // namespace vlm::test::dataobjects

namespace vlm::data::testing {
namespace {

using test::dataobjects::kBlocks;
using test::dataobjects::kFields;

INSTANTIATE_TEST_SUITE_P(DataObjects, ConnectionContract, ::testing::Values(kBlocks, kFields));
INSTANTIATE_TEST_SUITE_P(DataObjects, DialectContract, ::testing::Values(kBlocks, kFields));

}  // namespace
}  // namespace vlm::data::testing

namespace vlm::test::dataobjects {
namespace {

/// A host that knows the tables when it is compiled.
class EarlyBoundTest : public ::testing::Test {
protected:
    EarlyBoundTest() {
        folder.Run("Studio0012",
                   "CREATE TABLE Visita (IDVisita INTEGER PRIMARY KEY, Nome VARCHAR(20), Data DATETIME, Importo MONEY,"
                   " Fatta BIT, Quanti SMALLINT, Peso FLOAT)");
        folder.Run("Studio0012",
                   "INSERT INTO Visita VALUES (1, 'Nicolò', '2011-03-15', 20.66, 1, 2, 0.5), (2, NULL, NULL, NULL,"
                   " NULL, NULL, NULL), (3, 'Rosa', '2011-03-16 12:00:00', 3, 0, -1, 2)");
    }
    /// "number: text" of the error that a member of `object` ends with, as the error object says.
    static std::string Said(HRESULT result) {
        com::Ref<IErrorInfo> error;
        com::Bstr text;
        GetErrorInfo(0, error.Receive());
        if (error) error->GetDescription(text.Receive());
        return (std::stringstream() << std::hex << static_cast<unsigned long>(result)).str() + ": " + text.Text();
    }
    com::Ref<_Recordset> Execute(const std::string& sql, LONG options = -1) {
        com::Ref<_Recordset> rows;
        EXPECT_EQ(connection->Execute(com::Bstr(sql).Get(), affected.Receive(), options, rows.Receive()), S_OK);
        return rows;
    }
    com::Ref<_Recordset> Keyset() {
        com::Ref<_Recordset> rows;
        EXPECT_EQ(CoCreateInstance(__uuidof(::Recordset), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Recordset),
                                   rows.ReceiveAny()),
                  S_OK);
        EXPECT_EQ(rows->Open(Variant("SELECT * FROM Visita ORDER BY IDVisita").Get(), Variant(connection.Get()).Get(),
                             adOpenKeyset, adLockOptimistic, adCmdText),
                  S_OK);
        return rows;
    }
    static com::Ref<::Field> FieldOf(_Recordset& rows, const Variant& index) {
        com::Ref<::Fields> fields;
        com::Ref<::Field> field;
        EXPECT_EQ(rows.get_Fields(fields.Receive()), S_OK);
        EXPECT_EQ(fields->get_Item(index.Get(), field.Receive()), S_OK);
        return field;
    }
    std::string Names() {
        const data::ConnectionPtr own = folder.Connect();
        return data::testing::RowText(*own, "SELECT IDVisita, Nome FROM Visita ORDER BY IDVisita");
    }

    RecordsetClass recordsets;
    data::testing::DatabaseFolder folder;
    com::Ref<_Connection> connection = NewConnection(folder.Connect());
    Variant affected;
    const Variant none = Variant::Missing();
};

TEST_F(EarlyBoundTest, RowsComeInBlocksWithTheTypesOfTheColumns) {
    const com::Ref<_Recordset> rows = Execute("SELECT * FROM Visita ORDER BY IDVisita");
    std::string columns;
    for (std::int32_t i = 0; i < 7; ++i) {
        com::Bstr name;
        DataTypeEnum type{};
        const com::Ref<::Field> field = FieldOf(*rows, Variant(i));
        EXPECT_EQ(field->get_Name(name.Receive()), S_OK);
        EXPECT_EQ(field->get_Type(&type), S_OK);
        columns += name.Text() + " " + std::to_string(type) + ",";
    }
    EXPECT_EQ(columns, "IDVisita 3,Nome 202,Data 135,Importo 6,Fatta 11,Quanti 2,Peso 5,");
    std::string cells;
    for (const LONG count : {2, -1}) {
        Variant block;
        ASSERT_EQ(rows->GetRows(count, none.Get(), none.Get(), block.Receive()), S_OK);
        LONG last = 0;
        EXPECT_EQ(SafeArrayGetUBound(block.Get().parray, 2, &last), S_OK);
        for (LONG row = 0; row <= last; ++row) {
            for (LONG column = 0; column < 7; ++column) {
                LONG place[] = {column, row};
                Variant cell;
                EXPECT_EQ(SafeArrayGetElement(block.Get().parray, place, cell.Receive()), S_OK);
                cells += std::to_string(cell.Type()) + "=" + cell.Text() + " ";
            }
        }
    }
    EXPECT_EQ(cells,
              "3=1 8=Nicolò 7=15/03/2011 6=20,66 11=True 2=2 5=0,5 3=2 1= 1= 1= 1= 1= 1= "
              "3=3 8=Rosa 7=16/03/2011 12:00:00 6=3 11=False 2=-1 5=2 ");
    VARIANT_BOOL end = VARIANT_FALSE;
    EXPECT_EQ(rows->get_EOF(&end), S_OK);
    EXPECT_EQ(end, VARIANT_TRUE);
    Variant block;
    EXPECT_EQ(Said(rows->GetRows(1, none.Get(), none.Get(), block.Receive())), "800a0bcd: Non c'è un record corrente.");
}

TEST_F(EarlyBoundTest, StatementsTellWhatTheyChangedAndWhatTheProviderSays) {
    LONG level = 0, state = 7, count = 0, native = 0;
    EXPECT_EQ(connection->BeginTrans(&level), S_OK);
    EXPECT_EQ(level, 1);
    EXPECT_FALSE(Execute("UPDATE Visita SET Nome = 'X' WHERE IDVisita > 1", adExecuteNoRecords));
    EXPECT_EQ(affected.Text(), "2");
    EXPECT_EQ(connection->RollbackTrans(), S_OK);
    EXPECT_EQ(Execute("DELETE FROM Visita WHERE IDVisita = 2")->get_State(&state), S_OK);
    EXPECT_EQ(state, adStateClosed);
    EXPECT_EQ(Names(), "1|Nicolò;3|Rosa");

    com::Ref<_Recordset> rows;
    com::Bstr text;
    const com::Bstr wrong("SELECT X FROM Visita");
    const std::string said = Said(connection->Execute(wrong.Get(), nullptr, -1, rows.Receive()));
    EXPECT_EQ(said, "80040e14: Errore del database Studio0012: no such column: X");
    com::Ref<::Errors> errors;
    com::Ref<::Error> error;
    ASSERT_EQ(connection->get_Errors(errors.Receive()), S_OK);
    ASSERT_EQ(errors->get_Item(Variant(std::int32_t{0}).Get(), error.Receive()), S_OK);
    EXPECT_EQ(error->get_Description(text.Receive()), S_OK);
    EXPECT_EQ("80040e14: " + text.Text(), said);
    EXPECT_EQ(error->get_NativeError(&native), S_OK);
    EXPECT_EQ(native, 1);
    Execute("SELECT 1");
    EXPECT_EQ(errors->get_Count(&count), S_OK);
    EXPECT_EQ(count, 0);

    com::Ref<::Properties> properties;
    com::Ref<::Property> catalog;
    Variant name;
    ASSERT_EQ(connection->get_Properties(properties.Receive()), S_OK);
    ASSERT_EQ(properties->get_Item(Variant("initial catalog").Get(), catalog.Receive()), S_OK);
    EXPECT_EQ(catalog->get_Value(name.Receive()), S_OK);
    EXPECT_EQ(name.Text(), "Studio0012");
    EXPECT_EQ(Said(connection->Cancel()), "800a0cb3: Questi oggetti dati non lo sanno fare.");
    EXPECT_EQ(connection->Close(), S_OK);
    EXPECT_EQ(Said(connection->BeginTrans(&level)), "800a0e78: La connessione è chiusa.");
}

TEST_F(EarlyBoundTest, RowsOfAKeysetAreAddedChangedAndDeleted) {
    const com::Ref<_Recordset> rows = Keyset();
    const com::Ref<::Field> name = FieldOf(*rows, Variant("NOME"));
    const com::Ref<::Field> number = FieldOf(*rows, Variant(std::int16_t{5}));
    EXPECT_EQ(Said(number->put_Value(Variant("due").Get())), "800a0d5d: Il valore non è del tipo della colonna.");
    EXPECT_EQ(name->put_Value(Variant("Uno").Get()), S_OK);
    EXPECT_EQ(Said(rows->Close()), "800a0c93: C'è una modifica da completare o annullare.");
    EXPECT_EQ(rows->MoveNext(), S_OK);  // writes what is set
    EXPECT_EQ(name->put_Value(Variant("Due").Get()), S_OK);
    EXPECT_EQ(rows->CancelUpdate(), S_OK);
    EXPECT_EQ(rows->MoveNext(), S_OK);
    EXPECT_EQ(rows->Delete(adAffectCurrent), S_OK);
    EXPECT_EQ(rows->AddNew(none.Get(), none.Get()), S_OK);
    EXPECT_EQ(FieldOf(*rows, Variant("IDVisita"))->put_Value(Variant("9").Get()), S_OK);
    EXPECT_EQ(name->put_Value(Variant("Nove").Get()), S_OK);
    EXPECT_EQ(rows->Update(none.Get(), none.Get()), S_OK);
    EXPECT_EQ(rows->Close(), S_OK);
    EXPECT_EQ(Names(), "1|Uno;2|NULL;9|Nove");
}

}  // namespace
}  // namespace vlm::test::dataobjects
