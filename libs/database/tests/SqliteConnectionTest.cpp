#include "database/MemoryRecordset.h"
#include "support/DatabaseFolder.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

const ConnectionAdapter kSqlite = {"sqlite", MakeDatabases<DatabaseFolder>};

INSTANTIATE_TEST_SUITE_P(Sqlite, ConnectionContract, ::testing::Values(kSqlite));
INSTANTIATE_TEST_SUITE_P(Sqlite, DialectContract, ::testing::Values(kSqlite));

class SqliteConnectionTest : public DatabaseTest {};

TEST_F(SqliteConnectionTest, OpensOnlyWhatExists) {
    const std::string source = "Provider=SQLite;Data Source=" + Folder().Path().string();
    const std::pair<std::string, const char*> cases[] = {
        {source + ";Initial Catalog=Studio0099", "Studio0099"},
        {source, "Initial Catalog"},
        {"Provider=SQLite;Initial Catalog=Studio0012", "Data Source"},
        {"Provider=SQLite;Data Source=/no/such/folder;Initial Catalog=Studio0012", "/no/such/folder"},
        {"Provider=Altro;Data Source=x;Initial Catalog=y", "Altro"},
        {source + ";Initial Catalog=Studio0012;Busy Timeout=molto", "molto"},
        {source + ";Initial Catalog", "Initial Catalog"},
        {"Data Source='aperto", "non chiuso"},
    };
    for (const auto& [text, named] : cases) {
        EXPECT_PRED2(Holds, ErrorText([&, &each = text] { SqliteConnection::Connect(each); }), named);
    }
    EXPECT_EQ(SqliteConnection::Connect(source + ";INITIAL CATALOG='studio0012';")->InitialCatalog(), "studio0012");

    test::WriteBytes((Folder().Path() / "Studio0003.sqlite").string(), std::string(4096, 'x'));
    EXPECT_PRED2(Holds, Rows("SELECT * FROM Studio0003..T"), "Studio0003");
    EXPECT_PRED2(Holds, Rows("SELECT * FROM Studio0003..T"), "non è un database");
    EXPECT_PRED2(Holds, Rows("SELECT * FROM Studio0077..T"), "Studio0077");
    EXPECT_THROW(connection->Open("SELECT * FROM [../altro]..T"), Error);
    EXPECT_EQ(test::NamesIn(Folder().Path()),
              (std::vector<std::string>{"Aldra.sqlite", "Studio0003.sqlite", "Studio0012.sqlite"}));
}

TEST_F(SqliteConnectionTest, ChangesRowsByTheirNumber) {
    Run({"CREATE TABLE Numerata (Rowid VARCHAR(9), [una colonna] INT, Quando DATETIME)",
         "INSERT INTO Numerata VALUES ('a', 1, '2011-03-31 10:00:00'), ('a', 1, NULL)",
         "UPDATE Numerata SET _rowid_ = 5000000000 WHERE Quando IS NULL",
         "CREATE TABLE Chiave (ID INTEGER PRIMARY KEY, Nome VARCHAR(9) DEFAULT 'nuovo')"});
    const UpdatableRecordsetPtr twins = connection->OpenForUpdate("SELECT * FROM [Numerata] WHERE Rowid = 'A'");
    twins->MoveNext();
    EXPECT_TRUE(twins->IsNull(2));
    Write(*twins, {{"una colonna", 2}});
    EXPECT_EQ(Rows("SELECT * FROM Numerata"), "a|1|31/03/2011 10:00:00;a|2|NULL");

    // The key is the row's number: first the engine's own, then another.
    const UpdatableRecordsetPtr keyed = connection->OpenForUpdate("SELECT * FROM studio0012..Chiave");
    keyed->AddNew();
    keyed->Update();
    Write(*keyed, {{"ID", 7}});
    Write(*keyed, {{"Nome", "sette"}});
    EXPECT_EQ(Rows("SELECT * FROM Chiave"), "7|sette");
}

TEST_F(SqliteConnectionTest, RowsThatCannotBeToldOrReadAreNotChanged) {
    Run({"CREATE TABLE SenzaNumeri (ID INT PRIMARY KEY) WITHOUT ROWID",
         "CREATE VIEW Vista AS SELECT * FROM SenzaNumeri", "CREATE TABLE Coperta (rowid INT, _rowid_ INT, oid INT)",
         "CREATE TABLE Visita (Piano SMALLINT, Quando DATETIME)",
         "INSERT INTO Visita VALUES (1, 'mai'), (2, '2011-03-31')",
         "CREATE TRIGGER Rifiuta BEFORE INSERT ON Visita WHEN NEW.Piano = 13 BEGIN SELECT RAISE(ABORT, 'no'); END"});
    const std::pair<const char*, const char*> cases[] = {
        {"SenzaNumeri", "SenzaNumeri non si possono modificare"},
        {"Vista", "Vista non si possono modificare"},
        {"Coperta", "Coperta non si possono modificare"},
        {"Visita WHERE Piano = 1", "'mai' della colonna Quando"},
    };
    for (const auto& [table, told] : cases) {
        const std::string sql = std::string("SELECT * FROM ") + table;
        EXPECT_PRED2(Holds, ErrorText([&] { connection->OpenForUpdate(sql); }), told);
    }
    EXPECT_EQ(connection->OpenForUpdate("SELECT * FROM Visita WHERE Piano = 2")->TextOf(1), "31/03/2011");
    EXPECT_PRED2(Holds, Rows("INSERT INTO Visita (Piano) VALUES (13)"), "no");
    EXPECT_EQ(connection->Execute("INSERT INTO Visita (Piano) VALUES (12)"), 1);
}

TEST_F(SqliteConnectionTest, ReadsMoreDatabasesThanTheEngineAttaches) {
    constexpr int kDatabases = 15;
    const auto table = [](int number) { return "Studio01" + std::to_string(10 + number) + "..T"; };
    std::string all = "SELECT 1 FROM Studio0110..T";
    for (int number = 0; number < kDatabases; ++number) {
        const std::string name = table(number).substr(0, 10);
        Folder().CreateDatabase(name);
        Folder().Run(name, "CREATE TABLE T (N INT)");
        Folder().Run(name, "INSERT INTO T VALUES (" + std::to_string(number) + ")");
        if (number > 0) all += ", " + table(number) + " AS T" + std::to_string(number);
    }
    const RecordsetPtr held = connection->Open("SELECT N FROM Studio0110..T");
    for (int round = 0; round < 2; ++round) {
        for (int number = 0; number < kDatabases; ++number) {
            EXPECT_EQ(Rows("SELECT N FROM " + table(number)), std::to_string(number));
        }
    }
    EXPECT_EQ(RowText(*held), "0");

    // Within a transaction none can be let go, and a statement cannot name more than there is room for.
    connection->BeginTransaction();
    std::string error;
    for (int number = 0; number < kDatabases && error.empty(); ++number) {
        error = ErrorText([&] { connection->Open("SELECT N FROM " + table(number)); });
    }
    EXPECT_PRED2(Holds, error, "troppi database");
    connection->RollbackTransaction();
    EXPECT_PRED2(Holds, Rows(all), "troppi database");
    EXPECT_EQ(Rows("SELECT N FROM studio0111.dbo.T"), "1");
}

TEST_F(SqliteConnectionTest, ALockedDatabaseIsNamed) {
    Run({"CREATE TABLE T (N INT)"});
    Folder().Run("Aldra", "CREATE TABLE A (N INT)");
    connection->BeginTransaction();
    EXPECT_EQ(connection->Execute("INSERT INTO ALDRA..A VALUES (5)"), 1);  // attached within the transaction
    connection->CommitTransaction();
    EXPECT_EQ(Rows("SELECT A.N FROM aldra..A LEFT JOIN T ON T.N = A.N"), "5");
    const ConnectionPtr other = Folder().Connect();
    other->Execute("BEGIN EXCLUSIVE");
    for (const char* sql : {"SELECT N FROM T", "INSERT INTO T VALUES (1)"}) {
        EXPECT_PRED2(Holds, Rows(sql), "Il database Studio0012 è bloccato da un altro utente.");
        EXPECT_PRED2(Holds, Rows(sql), "database is locked");
    }
    other->Execute("ROLLBACK");
    EXPECT_EQ(connection->Execute("INSERT INTO T VALUES (1)"), 1);
    // Who has only looked a table up within a transaction holds nobody up.
    connection->BeginTransaction();
    EXPECT_PRED2(Holds, Rows("SELECT N FROM Nessuna"), "Nessuna");
    other->Execute("BEGIN EXCLUSIVE");
    other->Execute("ROLLBACK");
    connection->RollbackTransaction();

    const ConnectionPtr master = SqliteConnection::Connect(Folder().ConnectionText("Aldra"));
    master->Execute("BEGIN EXCLUSIVE");
    // Where files of one name in other letters are one file, it is called as it was called first.
    const char* const name = std::filesystem::path::preferred_separator == '/' ? "Aldra" : "ALDRA";
    EXPECT_PRED2(Holds, Rows("SELECT N FROM Aldra..A"), std::string("Il database ") + name + " è bloccato");
    EXPECT_EQ(Rows("SELECT N FROM T"), "1");
}

TEST_F(SqliteConnectionTest, ARowSetMayBeClosedAfterItsConnection) {
    Run({"CREATE TABLE T (N INT)", "INSERT INTO T VALUES (1), (2)"});
    RecordsetPtr rows = connection->Open("SELECT N FROM T");
    connection->BeginTransaction();
    connection->Execute("DELETE FROM T");
    connection.reset();
    rows.reset();
    EXPECT_EQ(RowText(*Folder().Connect(), "SELECT N FROM T"), "1;2");
}

TEST_F(SqliteConnectionTest, SeesChangesOfTheSchema) {
    Run({"CREATE TABLE T (Giorno VARCHAR(20))", "INSERT INTO T VALUES ('3/1/2011')"});
    EXPECT_EQ(Rows("SELECT * FROM T WHERE Giorno = '3/1/2011'"), "3/1/2011");
    Run({"DROP TABLE T", "CREATE TABLE T (Altro INT, Giorno DATETIME)", "INSERT INTO T VALUES (1, '3/1/2011')"});
    EXPECT_EQ(Rows("SELECT * FROM T WHERE Giorno = '3/1/2011'"), "1|01/03/2011");
}

TEST_F(SqliteConnectionTest, CellsThatDoNotFitTheirColumn) {
    Run({"CREATE TABLE T (Riga INT, NumeroDocumento INT, Giorno DATETIME, Importo MONEY, Nota TEXT)",
         "INSERT INTO T VALUES (1, '12abc', 'x' || 'y', 'molto', 'A\xFF-'), (2, 12.5, 40633.5, 0.00005, NULL), "
         "(3, 1e30, 1e30, 1e30, '12,5')"});
    const RecordsetPtr rows = connection->Open("SELECT * FROM T ORDER BY Riga");
    EXPECT_EQ(ErrorText([&] { rows->IntegerOf(1); }),
              "Il valore '12abc' della colonna NumeroDocumento non è un numero.");
    EXPECT_EQ(ErrorText([&] { rows->DateOf(2); }), "Il valore 'xy' della colonna Giorno non è una data.");
    EXPECT_EQ(ErrorText([&] { rows->AmountOf(3); }), "Il valore 'molto' della colonna Importo non è un importo.");
    EXPECT_EQ(ErrorText([&] { MemoryRecordset::CopyOf(*connection->Open("SELECT NumeroDocumento FROM T")); }),
              "Il valore '12abc' della colonna NumeroDocumento non è un numero.");
    EXPECT_EQ(rows->NumberOf(1) + rows->NumberOf(2) + rows->NumberOf(3), 0);
    rows->MoveNext();
    EXPECT_EQ(rows->IntegerOf(1), 12);
    EXPECT_EQ(rows->AmountOf(3).Units(), 0);  // half to even
    rows->MoveNext();
    EXPECT_THROW(rows->IntegerOf(1), OverflowError);
    EXPECT_THROW(rows->DateOf(2), TypeMismatchError);
    EXPECT_PRED2(Holds, ErrorText([&] { rows->AmountOf(3); }), "Importo");
    EXPECT_EQ(rows->NumberOf(4), 12.5);
    EXPECT_EQ(Rows("SELECT NumeroDocumento, Giorno, Nota FROM T ORDER BY Riga"),
              "12abc|xy|A\xFF-;12,5|31/03/2011 12:00:00|NULL;1E+30|1E+30|12,5");
}

TEST_F(SqliteConnectionTest, ColumnsKeepTheirTypesAndExpressionsHaveThatOfTheirFirstRow) {
    Run({"CREATE TABLE T (N INT, Nome VARCHAR(20), Giorno DATETIME)",
         "INSERT INTO T VALUES (1, 'a', '3/31/2011'), (2, 'b', NULL), (3, 'A', NULL)"});
    const auto copy = MemoryRecordset::CopyOf(*connection->Open("SELECT *, N AS Nome, 0, 1.5, 'a' + 'b', NULL FROM T"));
    const FieldType types[] = {FieldType::Integer, FieldType::Text,   FieldType::Date, FieldType::Integer,
                               FieldType::BigInt,  FieldType::Double, FieldType::Text, FieldType::Text};
    for (int ordinal = 0; ordinal < 8; ++ordinal) EXPECT_EQ(copy->TypeOf(ordinal), types[ordinal]) << ordinal;
    copy->SetFilter("Nome = 'a'");
    EXPECT_EQ(RowText(*copy), "1|a|31/03/2011|1|0|1,5|ab|NULL;3|A|NULL|3|0|1,5|ab|NULL");
}

TEST_F(SqliteConnectionTest, ProceduresGiveOneRowSetForEachStatement) {
    Run({"CREATE TABLE StoredProcedure (Name VARCHAR(50), Ordinal INT, Body TEXT)",
         "CREATE TABLE R (ID INT, Nome VARCHAR(20), Giorno DATETIME)",
         "INSERT INTO R VALUES (12, 'Rossi', '3/1/2011'), (13, 'Verdi', NULL)",
         "INSERT INTO StoredProcedure VALUES "
         "('SP_Ricetta', 2, 'SELECT ID + 1 FROM R WHERE ISNULL(ID,0) > ?1'), "
         "('SP_Ricetta', 3, 'UPDATE R SET Nome = Nome + ''!'' WHERE ID = ?1'), "
         "('SP_Ricetta', 1, 'SELECT Nome + '' '' + ''?1'' AS Nome FROM R WHERE ID = ?1'), "
         "('SP_Giorno', 1, 'SELECT ID FROM R WHERE Giorno = ?1 OR Nome = ?2'), "
         "('SP_Anello', 1, 'SP_Anello 1')"});
    const RecordsetPtr rows = connection->Open("sp_ricetta 12");
    EXPECT_EQ(RowText(*rows), "Rossi ?1");
    ASSERT_TRUE(rows->NextRecordset());
    EXPECT_EQ(RowText(*rows), "14");
    EXPECT_FALSE(rows->NextRecordset());
    EXPECT_EQ(Rows("SELECT Nome FROM R WHERE ID = 12"), "Rossi!");
    EXPECT_EQ(Rows("EXEC SP_Giorno '3/1/2011', 'verdi'"), "12;13");
    EXPECT_EQ(Rows("EXEC SP_Ricetta"), "");
    EXPECT_EQ(connection->Execute("SP_Ricetta 13"), 1);
    EXPECT_EQ(Rows("SP_Altra 12"), "La procedura SP_Altra non esiste nel database Studio0012.");
    EXPECT_THROW(connection->Open("SP_Anello 1"), Error);
}

}  // namespace
}  // namespace vlm::data::testing
