#include <gtest/gtest.h>

#include "sqlite/SqliteConnection.h"
#include "support/ConnectionContract.h"
#include "support/DatabaseFolder.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

std::unique_ptr<ConnectionFixture> MakeFolder() { return std::make_unique<DatabaseFolder>(); }

INSTANTIATE_TEST_SUITE_P(Sqlite, ConnectionContract, ::testing::Values(ConnectionAdapter{"sqlite", MakeFolder}));
INSTANTIATE_TEST_SUITE_P(Sqlite, DialectContract, ::testing::Values(ConnectionAdapter{"sqlite", MakeFolder}));

TEST(SqliteConnection, OpensOnlyWhatExists) {
    const DatabaseFolder folder;
    const std::string source = "Provider=SQLite;Data Source=" + folder.Path().string();
    const struct {
        std::string text;
        std::string named;
    } cases[] = {
        {source + ";Initial Catalog=Studio0099", "Studio0099"},
        {source, "Initial Catalog"},
        {"Provider=SQLite;Initial Catalog=Studio0012", "Data Source"},
        {"Provider=SQLite;Data Source=/no/such/folder;Initial Catalog=Studio0012", "/no/such/folder"},
        {"Provider=Altro;Data Source=x;Initial Catalog=y", "Altro"},
        {source + ";Initial Catalog=Studio0012;Busy Timeout=molto", "molto"},
        {source + ";Initial Catalog", "Initial Catalog"},
        {"Data Source='aperto", "non chiuso"},
    };
    for (const auto& each : cases) {
        const std::string error = ErrorText([&] { SqliteConnection::Connect(each.text); });
        EXPECT_NE(error.find(each.named), std::string::npos) << each.text << ": " << error;
    }
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "Studio0099.sqlite"));
    EXPECT_EQ(SqliteConnection::Connect(source + ";INITIAL CATALOG='studio0012';")->InitialCatalog(), "studio0012");
}

TEST(SqliteConnection, ChangesRowsByTheirNumber) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE Numerata (Rowid VARCHAR(9), [una colonna] INT, Quando DATETIME)");
    folder.Run("Studio0012", "INSERT INTO Numerata VALUES ('a', 1, '2011-03-31 10:00:00'), ('a', 1, NULL)");
    folder.Run("Studio0012", "UPDATE Numerata SET _rowid_ = 5000000000 WHERE Quando IS NULL");
    folder.Run("Studio0012", "CREATE TABLE Chiave (ID INTEGER PRIMARY KEY, Nome VARCHAR(9) DEFAULT 'nuovo')");
    const ConnectionPtr connection = folder.Connect();
    const UpdatableRecordsetPtr twins = connection->OpenForUpdate("SELECT * FROM [Numerata] WHERE Rowid = 'A'");
    twins->MoveNext();
    EXPECT_TRUE(twins->IsNull(2));
    twins->SetValue("una colonna", std::int64_t{2});
    twins->Update();
    EXPECT_EQ(RowText(*connection, "SELECT * FROM Numerata"), "a|1|31/03/2011 10:00:00;a|2|NULL");

    // The key is the row's number: first the engine's own, then another.
    const UpdatableRecordsetPtr keyed = connection->OpenForUpdate("SELECT * FROM studio0012..Chiave");
    keyed->AddNew();
    keyed->Update();
    keyed->SetValue("ID", std::int64_t{7});
    keyed->Update();
    keyed->SetValue("Nome", std::string("sette"));
    keyed->Update();
    EXPECT_EQ(RowText(*connection, "SELECT * FROM Chiave"), "7|sette");
}

TEST(SqliteConnection, ARowThatCannotBeReadIsNotChanged) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE Visita (Piano SMALLINT, Quando DATETIME)");
    folder.Run("Studio0012", "INSERT INTO Visita VALUES (1, 'mai'), (2, '2011-03-31')");
    const ConnectionPtr connection = folder.Connect();
    const std::string error = ErrorText([&] { connection->OpenForUpdate("SELECT * FROM Visita WHERE Piano = 1"); });
    EXPECT_NE(error.find("'mai' della colonna Quando"), std::string::npos) << error;
    EXPECT_EQ(connection->OpenForUpdate("SELECT * FROM Visita WHERE Piano = 2")->TextOf(1), "31/03/2011");
}

TEST(SqliteConnection, ATriggerNamesTheRowsThatItSees) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE Visita (Piano SMALLINT)");
    const ConnectionPtr connection = folder.Connect();
    connection->Execute(
        "CREATE TRIGGER Rifiuta BEFORE INSERT ON Visita WHEN NEW.Piano = 13 BEGIN SELECT RAISE(ABORT, 'no'); END");
    EXPECT_NE(ErrorText([&] { connection->Execute("INSERT INTO Visita VALUES (13)"); }), "");
    EXPECT_EQ(connection->Execute("INSERT INTO Visita VALUES (12)"), 1);
}

TEST(SqliteConnection, RowsWithoutANumberAreNotChanged) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE SenzaNumeri (ID INT PRIMARY KEY) WITHOUT ROWID");
    folder.Run("Studio0012", "CREATE VIEW Vista AS SELECT * FROM SenzaNumeri");
    folder.Run("Studio0012", "CREATE TABLE Coperta (rowid INT, _rowid_ INT, oid INT)");
    const ConnectionPtr connection = folder.Connect();
    for (const std::string name : {"SenzaNumeri", "Vista", "Coperta"}) {
        const std::string error = ErrorText([&] { connection->OpenForUpdate("SELECT * FROM " + name); });
        EXPECT_NE(error.find(name + " non si possono modificare"), std::string::npos) << error;
    }
}

TEST(SqliteConnection, AMissingDatabaseIsNamedAndNotCreated) {
    DatabaseFolder folder;
    const ConnectionPtr connection = folder.Connect();
    const std::string error = ErrorText([&] { connection->Open("SELECT * FROM Studio0077..T"); });
    EXPECT_NE(error.find("Studio0077"), std::string::npos) << error;
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "Studio0077.sqlite"));
    EXPECT_NE(ErrorText([&] { connection->Open("SELECT * FROM [../altro]..T"); }), "");
}

TEST(SqliteConnection, AFileThatIsNoDatabaseIsNamed) {
    DatabaseFolder folder;
    std::ofstream(folder.Path() / "Studio0003.sqlite") << std::string(4096, 'x');
    const ConnectionPtr connection = folder.Connect();
    const std::string error = ErrorText([&] { connection->Open("SELECT * FROM Studio0003..T"); });
    EXPECT_NE(error.find("Studio0003"), std::string::npos) << error;
    EXPECT_NE(error.find("non è un database"), std::string::npos) << error;
}

TEST(SqliteConnection, ReadsMoreDatabasesThanTheEngineAttaches) {
    DatabaseFolder folder;
    constexpr int kDatabases = 15;
    const auto name = [](int number) { return "Studio01" + std::to_string(10 + number); };
    for (int number = 0; number < kDatabases; ++number) {
        folder.CreateDatabase(name(number));
        folder.Run(name(number), "CREATE TABLE T (N INT)");
        folder.Run(name(number), "INSERT INTO T VALUES (" + std::to_string(number) + ")");
    }
    const ConnectionPtr connection = folder.Connect();
    const RecordsetPtr held = connection->Open("SELECT N FROM Studio0110..T");
    for (int round = 0; round < 2; ++round) {
        for (int number = 0; number < kDatabases; ++number) {
            EXPECT_EQ(RowText(*connection, "SELECT N FROM " + name(number) + "..T"), std::to_string(number));
        }
    }
    EXPECT_EQ(RowText(*held), "0");

    // Within a transaction none can be let go, and a statement cannot name more than there is room for.
    connection->BeginTransaction();
    std::string error;
    for (int number = 0; number < kDatabases && error.empty(); ++number) {
        error = ErrorText([&] { connection->Open("SELECT N FROM " + name(number) + "..T"); });
    }
    EXPECT_NE(error.find("troppi database"), std::string::npos) << error;
    connection->RollbackTransaction();
    std::string all = "SELECT 1 FROM Studio0110..T";
    for (int number = 1; number < kDatabases; ++number)
        all += ", " + name(number) + "..T AS T" + std::to_string(number);
    EXPECT_NE(ErrorText([&] { connection->Open(all); }).find("troppi database"), std::string::npos);
    EXPECT_EQ(RowText(*connection, "SELECT N FROM studio0111.dbo.T"), "1");
}

TEST(SqliteConnection, ADatabaseMayBeOpenedWithinATransaction) {
    DatabaseFolder folder;
    folder.Run("Aldra", "CREATE TABLE T (N INT)");
    const ConnectionPtr connection = folder.Connect();
    connection->BeginTransaction();
    EXPECT_EQ(connection->Execute("INSERT INTO ALDRA..T VALUES (5)"), 1);
    connection->CommitTransaction();
    EXPECT_EQ(RowText(*connection, "SELECT N FROM aldra..T"), "5");
}

TEST(SqliteConnection, ALockedDatabaseIsNamed) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE T (N INT)");
    folder.Run("Aldra", "CREATE TABLE A (N INT)");
    const ConnectionPtr connection = folder.Connect();
    EXPECT_EQ(RowText(*connection, "SELECT T.N FROM T, Aldra..A"), "");
    const ConnectionPtr other = folder.Connect();
    other->Execute("BEGIN EXCLUSIVE");
    for (const char* sql : {"SELECT N FROM T", "INSERT INTO T VALUES (1)"}) {
        const std::string error = ErrorText([&] { connection->Open(sql); });
        EXPECT_NE(error.find("Il database Studio0012 è bloccato da un altro utente."), std::string::npos) << error;
        EXPECT_NE(error.find("database is locked"), std::string::npos) << error;
    }
    other->Execute("ROLLBACK");
    EXPECT_EQ(connection->Execute("INSERT INTO T VALUES (1)"), 1);

    const ConnectionPtr master = SqliteConnection::Connect(folder.ConnectionText("Aldra"));
    master->Execute("BEGIN EXCLUSIVE");
    EXPECT_NE(ErrorText([&] { connection->Open("SELECT N FROM Aldra..A"); }).find("Il database Aldra è bloccato"),
              std::string::npos);
    EXPECT_EQ(RowText(*connection, "SELECT N FROM T"), "1");
}

TEST(SqliteConnection, ARowSetMayBeClosedAfterItsConnection) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE T (N INT)");
    folder.Run("Studio0012", "INSERT INTO T VALUES (1), (2)");
    ConnectionPtr connection = folder.Connect();
    RecordsetPtr rows = connection->Open("SELECT N FROM T");
    connection->BeginTransaction();
    connection->Execute("DELETE FROM T");
    connection.reset();
    rows.reset();
    EXPECT_EQ(RowText(*folder.Connect(), "SELECT N FROM T"), "1;2");
}

TEST(SqliteConnection, SeesChangesOfTheSchema) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE T (Giorno VARCHAR(20))");
    folder.Run("Studio0012", "INSERT INTO T VALUES ('3/1/2011')");
    const ConnectionPtr connection = folder.Connect();
    EXPECT_EQ(RowText(*connection, "SELECT * FROM T WHERE Giorno = '3/1/2011'"), "3/1/2011");
    folder.Run("Studio0012", "DROP TABLE T");
    folder.Run("Studio0012", "CREATE TABLE T (Altro INT, Giorno DATETIME)");
    folder.Run("Studio0012", "INSERT INTO T VALUES (1, '3/1/2011')");
    EXPECT_EQ(RowText(*connection, "SELECT * FROM T WHERE Giorno = '3/1/2011'"), "1|01/03/2011");
}

TEST(SqliteConnection, CellsThatDoNotFitTheirColumn) {
    DatabaseFolder folder;
    folder.Run("Studio0012",
               "CREATE TABLE T (Riga INT, NumeroDocumento INT, Giorno DATETIME, Importo MONEY, Nota TEXT)");
    folder.Run("Studio0012",
               "INSERT INTO T VALUES (1, '12abc', 'x' || 'y', 'molto', 'A\xFF"
               "B')");
    folder.Run("Studio0012", "INSERT INTO T VALUES (2, 12.5, 40633.5, 0.00005, NULL)");
    folder.Run("Studio0012", "INSERT INTO T VALUES (3, 1e30, 1e30, 1e30, '12,5')");
    const ConnectionPtr connection = folder.Connect();
    const RecordsetPtr rows = connection->Open("SELECT * FROM T ORDER BY Riga");
    EXPECT_EQ(ErrorText([&] { rows->IntegerOf(1); }),
              "Il valore '12abc' della colonna NumeroDocumento non è un numero.");
    EXPECT_EQ(ErrorText([&] { rows->DateOf(2); }), "Il valore 'xy' della colonna Giorno non è una data.");
    EXPECT_EQ(ErrorText([&] { rows->AmountOf(3); }), "Il valore 'molto' della colonna Importo non è un importo.");
    EXPECT_EQ(rows->NumberOf(1) + rows->NumberOf(2) + rows->NumberOf(3), 0);
    EXPECT_EQ(rows->TextOf(2), "xy");
    EXPECT_EQ(rows->TextOf(4),
              "A\xFF"
              "B");
    rows->MoveNext();
    EXPECT_EQ(rows->IntegerOf(1), 12);
    EXPECT_EQ(rows->TextOf(1), "12,5");
    EXPECT_EQ(rows->TextOf(2), "31/03/2011 12:00:00");
    EXPECT_EQ(rows->AmountOf(3).Units(), 0);  // half to even
    rows->MoveNext();
    EXPECT_THROW(rows->IntegerOf(1), OverflowError);
    EXPECT_THROW(rows->DateOf(2), TypeMismatchError);
    EXPECT_EQ(rows->TextOf(2), "1E+30");
    EXPECT_EQ(rows->TextOf(3), "1E+30");
    EXPECT_NE(ErrorText([&] { rows->AmountOf(3); }).find("Importo"), std::string::npos);
    EXPECT_EQ(rows->NumberOf(4), 12.5);
}

TEST(SqliteConnection, ExpressionsHaveTheTypeOfTheirFirstRow) {
    DatabaseFolder folder;
    const ConnectionPtr connection = folder.Connect();
    const RecordsetPtr rows =
        connection->Open("SELECT 0 AS Selezionato, 1.5 AS Peso, 'a' + 'b' AS Nome, NULL AS Vuota");
    const FieldType types[] = {FieldType::BigInt, FieldType::Double, FieldType::Text, FieldType::Text};
    for (int ordinal = 0; ordinal < 4; ++ordinal) EXPECT_EQ(rows->TypeOf(ordinal), types[ordinal]) << ordinal;
    EXPECT_EQ(rows->FieldName(0), "Selezionato");
}

TEST(SqliteConnection, ProceduresGiveOneRowSetForEachStatement) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE StoredProcedure (Name VARCHAR(50), Ordinal INT, Body TEXT)");
    folder.Run("Studio0012", "CREATE TABLE R (ID INT, Nome VARCHAR(20), Giorno DATETIME)");
    folder.Run("Studio0012", "INSERT INTO R VALUES (12, 'Rossi', '3/1/2011'), (13, 'Verdi', NULL)");
    folder.Run("Studio0012",
               "INSERT INTO StoredProcedure VALUES "
               "('SP_Ricetta', 2, 'SELECT ID + 1 FROM R WHERE ISNULL(ID,0) > ?1'), "
               "('SP_Ricetta', 3, 'UPDATE R SET Nome = Nome + ''!'' WHERE ID = ?1'), "
               "('SP_Ricetta', 1, 'SELECT Nome + '' '' + ''?1'' AS Nome FROM R WHERE ID = ?1'), "
               "('SP_Giorno', 1, 'SELECT ID FROM R WHERE Giorno = ?1 OR Nome = ?2'), "
               "('SP_Anello', 1, 'SP_Anello 1')");
    const ConnectionPtr connection = folder.Connect();
    const RecordsetPtr rows = connection->Open("sp_ricetta 12");
    EXPECT_EQ(RowText(*rows), "Rossi ?1");
    ASSERT_TRUE(rows->NextRecordset());
    EXPECT_EQ(RowText(*rows), "14");
    EXPECT_FALSE(rows->NextRecordset());
    EXPECT_TRUE(rows->AtEnd());
    EXPECT_EQ(RowText(*connection, "SELECT Nome FROM R WHERE ID = 12"), "Rossi!");
    EXPECT_EQ(RowText(*connection, "EXEC SP_Giorno '3/1/2011', 'verdi'"), "12;13");
    EXPECT_EQ(RowText(*connection, "EXEC SP_Ricetta"), "");
    EXPECT_EQ(connection->Execute("SP_Ricetta 13"), 1);
    EXPECT_EQ(ErrorText([&] { connection->Open("SP_Altra 12"); }),
              "La procedura SP_Altra non esiste nel database Studio0012.");
    EXPECT_NE(ErrorText([&] { connection->Open("SP_Anello 1"); }), "");
}

}  // namespace
}  // namespace vlm::data::testing
