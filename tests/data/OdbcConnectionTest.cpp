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
    explicit OdbcServer(host::tds::Faults faults = {})
        : server(folder.Path().string(), test::ServerOptions(std::move(faults))) {}

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

std::unique_ptr<ConnectionFixture> MakeQualified();

INSTANTIATE_TEST_SUITE_P(OdbcQualified, DialectContract,
                         ::testing::Values(ConnectionAdapter{"qualified", MakeQualified}));

/// A server whose statements go with the schema written out.
class QualifiedServer final : public ConnectionFixture {
public:
    void Run(const std::string& database, const std::string& sql) override { server_.Run(database, sql); }
    ConnectionPtr Connect() override { return OdbcConnection::Connect(server_.Text() + ";Dialect=QualifySchema"); }

private:
    OdbcServer server_;
};

std::unique_ptr<ConnectionFixture> MakeQualified() { return std::make_unique<QualifiedServer>(); }

TEST(OdbcText, PartsOfAConnectionText) {
    OdbcText text(" Driver = {Free;TDS} ; server=a.b,1433;;PWD={a}}=;b} ;Pwd=due;UID=;Trusted= yes");
    EXPECT_EQ(text.ValueOf("driver"), "Free;TDS");
    EXPECT_EQ(text.ValueOf("SERVER"), "a.b,1433");
    EXPECT_EQ(text.ValueOf("pwd"), "a}=;b");
    EXPECT_EQ(text.ValueOf("Assente"), "");
    EXPECT_EQ(text.Secrets(), (std::vector<std::string>{"{a}}=;b}", "a}=;b", "due"}));
    EXPECT_EQ(text.Take("trusted"), "yes");
    text.Set("Server", "altro");
    text.Set("Database", "Studio0012");
    EXPECT_EQ(text.Text(), "Driver={Free;TDS};PWD={a}}=;b};Pwd=due;UID=;Server=altro;Database=Studio0012");
    text.Set("PWD", "con;punto} e {");
    EXPECT_EQ(text.Text(), "Driver={Free;TDS};UID=;Server=altro;Database=Studio0012;PWD={con;punto}} e {}");
    EXPECT_EQ(OdbcText(text.Text()).ValueOf("PWD"), "con;punto} e {");
}

TEST(OdbcText, FaultsAreToldWithoutTheSecret) {
    for (const char* text : {"segreta", "PWD={segreta", "PWD={segreta}segreta", "Driver=x;segreta;UID=a"}) {
        const std::string error = ErrorText([&] { OdbcText parsed(text); });
        EXPECT_NE(error.find("testo di connessione ODBC"), std::string::npos) << text << ": " << error;
        EXPECT_EQ(error.find("segreta"), std::string::npos) << error;
    }
    EXPECT_NE(ErrorText([] { OdbcConnection::Connect("Driver={SQLite3};Dialect=Altro"); }).find("QualifySchema"),
              std::string::npos);
}

TEST(OdbcSchema, IsWrittenOutByTokens) {
    const struct {
        const char* sql;
        const char* qualified;
    } cases[] = {
        {"SELECT Aldra..Comune.CodiceISTAT FROM V LEFT JOIN Aldra..Comune ON V.ID = Aldra..Comune.ID",
         "SELECT Aldra.dbo.Comune.CodiceISTAT FROM V LEFT JOIN Aldra.dbo.Comune ON V.ID = Aldra.dbo.Comune.ID"},
        {"SELECT * FROM [Una..base]..[T..x] WHERE a = 'Aldra..Comune' -- Aldra..Comune",
         "SELECT * FROM [Una..base].dbo.[T..x] WHERE a = 'Aldra..Comune' -- Aldra..Comune"},
        {"SELECT N'l''à..x', A..B, \"C\"..D, E . . F /* G..H */",
         "SELECT N'l''à..x', A.dbo.B, \"C\".dbo.D, E . dbo. F /* G..H */"},
        {"SELECT dbo.T.C, 1.5, T.* FROM Aldra.dbo.T", "SELECT dbo.T.C, 1.5, T.* FROM Aldra.dbo.T"},
        {"", ""},
    };
    for (const auto& each : cases) EXPECT_EQ(odbc::WithSchema(each.sql), each.qualified);
}

TEST(OdbcDecimal, IsExactAndRoundsHalfToEven) {
    const struct {
        const char* digits;
        std::int64_t units;
    } cases[] = {{"0", 0},
                 {"-0.0001", -1},
                 {"12.3456", 123456},
                 {"1.234", 12340},
                 {"-1.5", -15000},
                 {"1234567.1", 12345671000},
                 {".25", 2500},
                 {"7,5", 75000},
                 {"0.00005", 0},
                 {"0.00015", 2},
                 {"-0.00015", -2},
                 {"0.000050000001", 1},
                 {"99999999999999.9999", 999999999999999999},
                 {"922337203685477.5807", INT64_MAX},
                 {"-922337203685477.5808", INT64_MIN},
                 {"-922337203685477.5807", -INT64_MAX},
                 {"00000000000000000000001.1", 11000}};
    for (const auto& each : cases) EXPECT_EQ(ExactDecimal(each.digits, "Importo").Units(), each.units) << each.digits;
    EXPECT_THROW(ExactDecimal("922337203685477.5808", "Importo"), OverflowError);
    EXPECT_THROW(ExactDecimal("99999999999999999999999999999999999999", "Importo"), OverflowError);
    EXPECT_THROW(ExactDecimal("uno", "Importo"), TypeMismatchError);
    EXPECT_THROW(ExactDecimal("", "Importo"), TypeMismatchError);
}

/// Both drivers: the one for files, and the one for a server.
class OdbcDrivers : public ::testing::TestWithParam<ConnectionAdapter> {
protected:
    void SetUp() override {
        fixture = GetParam().make();
        fixture->Run("Studio0012",
                     "CREATE TABLE Nota (IDNota INT NOT NULL PRIMARY KEY, Testo TEXT, Autore VARCHAR(20), "
                     "Codice INT, Seguito TEXT)");
        fixture->Run("Studio0012",
                     "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1300) INSERT INTO Nota "
                     "(IDNota, Autore, Codice) SELECT i, 'autore ' || i, i * 7 FROM n");
        connection = fixture->Connect();
    }
    std::unique_ptr<ConnectionFixture> fixture;
    ConnectionPtr connection;
};

INSTANTIATE_TEST_SUITE_P(Odbc, OdbcDrivers,
                         ::testing::Values(ConnectionAdapter{"files", MakeFiles},
                                           ConnectionAdapter{"server", MakeServer}));

TEST_P(OdbcDrivers, TextsOfAnyLengthComeWhole) {
    std::string longText;
    while (longText.size() < 100000) longText += "perché € ";
    const std::string edge(4095, 'x');  // as long as a piece that the driver hands out
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Nota WHERE IDNota <= 4");
    for (const std::string& text : {longText, edge, std::string()}) {
        rows->SetValue("Testo", text);
        rows->SetValue("Seguito", text + "!");
        rows->Update();
        rows->MoveNext();
    }
    const RecordsetPtr read = connection->Open("SELECT * FROM Nota WHERE IDNota <= 4 ORDER BY IDNota");
    for (const std::string& text : {longText, edge, std::string()}) {
        EXPECT_FALSE(read->IsNull(1));
        EXPECT_EQ(read->TextOf(4), text + "!");
        EXPECT_EQ(read->TextOf(1), text);
        EXPECT_EQ(read->IntegerOf(3), read->IntegerOf(0) * 7);
        read->MoveNext();
    }
    EXPECT_EQ(RowText(*read), "4|NULL|autore 4|28|NULL");
}

TEST_P(OdbcDrivers, AStatementInTheMiddleLeavesTheRowsAsTheyAre) {
    const RecordsetPtr rows = connection->Open("SELECT IDNota, Autore, Codice FROM Nota ORDER BY IDNota");
    for (std::int64_t id = 1; id <= 1300; ++id, rows->MoveNext()) {
        ASSERT_FALSE(rows->AtEnd());
        const std::string_view author = rows->TextOf(1);
        if (id == 700 || id == 701 || id == 1300) {
            const std::string key = std::to_string(id);
            EXPECT_EQ(RowText(*connection, "SELECT Codice FROM Nota WHERE IDNota = " + key), std::to_string(id * 7));
            EXPECT_EQ(connection->Execute("UPDATE Nota SET Autore = 'altro' WHERE IDNota >= " + key), 1301 - id);
        }
        ASSERT_EQ(author, "autore " + std::to_string(id));
        ASSERT_EQ(rows->IntegerOf(2), id * 7);
    }
    EXPECT_TRUE(rows->AtEnd());
    EXPECT_FALSE(rows->NextRecordset());
}

TEST_P(OdbcDrivers, RowsOfATableAreKnownByItsKey) {
    fixture->Run("Studio0012", "CREATE TABLE Senza (A INT, B VARCHAR(5))");
    fixture->Run("Studio0012",
                 "CREATE TABLE Doppia (A INT NOT NULL, [un nome] VARCHAR(5) NOT NULL, C DATETIME, "
                 "PRIMARY KEY (A, [un nome]))");
    fixture->Run("Studio0012", "INSERT INTO Doppia VALUES (1, 'x', NULL), (1, 'y', NULL), (2, 'x', NULL)");
    EXPECT_NE(ErrorText([&] { connection->OpenForUpdate("SELECT * FROM Senza"); }).find("chiave primaria"),
              std::string::npos);
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Doppia ORDER BY A, [un nome]");
    rows->MoveNext();
    rows->SetValue("un nome", std::string("z"));
    rows->SetValue("C", *Date::FromCivil({2011, 3, 31, 23, 59, 58}));
    rows->Update();
    rows->SetValue("C", Value());
    rows->SetValue("A", std::int64_t{9});
    rows->Update();
    rows->AddNew();
    EXPECT_THROW(rows->Update(), Error) << "the key does not take a null";
    EXPECT_EQ(RowText(*connection, "SELECT * FROM Doppia ORDER BY A, [un nome]"), "1|x|NULL;2|x|NULL;9|z|NULL");
}

TEST(OdbcServerErrors, KeepStateNumberAndText) {
    const OdbcServer server;
    const ConnectionPtr connection = OdbcConnection::Connect(server.Text());
    const struct {
        const char* sql;
        const char* state;
        long number;
    } cases[] = {{"SELECT * FROM Assente", "42S02", 208}, {"SP_Assente 1", "42000", 2812}};
    for (const auto& each : cases) {
        try {
            connection->Open(each.sql);
            ADD_FAILURE() << each.sql;
        } catch (const OdbcError& error) {
            EXPECT_EQ(error.State(), each.state) << error.what();
            EXPECT_EQ(error.NativeCode(), each.number) << error.what();
            EXPECT_NE(std::string(error.what()).find("Assente"), std::string::npos);
            EXPECT_EQ(std::string(error.what()).find('['), std::string::npos) << error.what();
        }
    }
    EXPECT_TRUE(connection->IsOpen());
    const std::string text = test::OdbcServerText(server.server);
    for (const std::string& refused : std::vector<std::string>{text + ";PWD=segreta-errata", text + ";PWD=ospite",
                                                               "Driver={segreta-errata};PWD=segreta-errata"}) {
        const std::string error = ErrorText([&] { OdbcConnection::Connect(refused); });
        EXPECT_NE(error.find("non è riuscito"), std::string::npos) << error;
        EXPECT_EQ(error.find("segreta"), std::string::npos) << error;
        EXPECT_EQ(error.find("'ospite'") != std::string::npos, refused == text + ";PWD=segreta-errata") << error;
    }
}

void AddRows(OdbcServer& server) {
    server.Run("Studio0012", "CREATE TABLE Riga (IDRiga INT NOT NULL PRIMARY KEY, Testo VARCHAR(20))");
    server.Run("Studio0012",
               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) INSERT INTO Riga "
               "SELECT i, 'riga' FROM n");
}

/// What the first row set of an open call comes to: rows read, then the error.
std::string ReadToTheEnd(Recordset& rows) {
    int read = 0;
    const std::string error = ErrorText([&] {
        for (; !rows.AtEnd(); rows.MoveNext()) ++read;
    });
    return (read > 0 && read < 5000 ? "some" : std::to_string(read)) + ", " + error;
}

TEST(OdbcServerLoss, IsAnErrorAndStaysOne) {
    OdbcServer server({.endAfterRows = 3000});
    AddRows(server);
    const ConnectionPtr connection = OdbcConnection::Connect(server.Text());
    const RecordsetPtr rows = connection->Open("SELECT IDRiga FROM Riga");
    const std::string end = ReadToTheEnd(*rows);
    EXPECT_EQ(end.find("some, La connessione con il server di database è caduta"), 0U) << end;
    EXPECT_FALSE(rows->IsOpen());
    EXPECT_FALSE(connection->IsOpen());
    EXPECT_EQ("0" + end.substr(4), ReadToTheEnd(*rows)) << "no end of the rows without the error";
    // The server is back, but what this connection had begun is not.
    const host::tds::TdsServer again(server.folder.Path().string(), {.port = server.server.Port()});
    for (const char* sql : {"DELETE FROM Riga", "SELECT 1"}) {
        EXPECT_NE(ErrorText([&] { connection->Execute(sql); }).find("caduta"), std::string::npos) << sql;
    }
    EXPECT_THROW(connection->BeginTransaction(), Error);
    EXPECT_EQ(RowText(*server.folder.Connect(), "SELECT COUNT(*) FROM Riga"), "5000");
}

TEST(OdbcServerLoss, AnErrorBehindRowsIsToldByWhoeverReadsThem) {
    for (const std::int64_t rows : {1, 2, 511, 512, 513, 3000}) {  // within a block and at its ends
        OdbcServer server({.failAfterRows = rows});
        AddRows(server);
        const ConnectionPtr connection = server.Connect();
        const std::string error = ErrorText([&] {
            const RecordsetPtr read = connection->Open("SELECT IDRiga FROM Riga");
            while (!read->AtEnd()) read->MoveNext();
        });
        EXPECT_NE(error.find("a favore di un altro utente"), std::string::npos) << rows << ": " << error;
        EXPECT_TRUE(connection->IsOpen());
        if (rows < 3000) continue;
        // A statement in between reads the rows to their end, and finds it.
        const RecordsetPtr interrupted = connection->Open("SELECT IDRiga, Testo FROM Riga");
        const char* const count = "SELECT COUNT(*) FROM Riga";
        EXPECT_NE(ErrorText([&] { connection->Open(count); }).find("altro utente"), std::string::npos);
        EXPECT_NE(ReadToTheEnd(*interrupted).find("altro utente"), std::string::npos);
        EXPECT_EQ(RowText(*connection, count), "5000");
    }
}

TEST(OdbcServerLoss, ATransactionEndsWhateverRowsAreOpen) {
    OdbcServer server({.failAfterRows = 3000});
    AddRows(server);
    const ConnectionPtr connection = server.Connect();
    RecordsetPtr rows;
    {
        const Transaction abandoned(*connection);
        connection->Execute("UPDATE Riga SET Testo = 'mai' WHERE IDRiga = 1");
        rows = connection->Open("SELECT IDRiga, Testo FROM Riga");
    }
    Transaction transaction(*connection);
    connection->Execute("UPDATE Riga SET Testo = 'altra' WHERE IDRiga = 2");
    transaction.Commit();
    EXPECT_EQ(RowText(*server.folder.Connect(), "SELECT Testo FROM Riga WHERE IDRiga < 4 ORDER BY IDRiga"),
              "riga;altra;riga");
}

TEST(OdbcServerLoss, ACommitIsAnErrorOnlyWhenItDidNotHappen) {
    const struct {
        host::tds::Faults faults;
        bool fails;
        const char* stored;
    } cases[] = {{{.endAtCommit = true}, true, "riga"}, {{.endAfterCommit = true}, false, "nuova"}};
    for (const auto& each : cases) {
        OdbcServer server(each.faults);
        AddRows(server);
        const ConnectionPtr connection = server.Connect();
        const std::string error = ErrorText([&] {
            Transaction transaction(*connection);
            connection->Execute("UPDATE Riga SET Testo = 'nuova' WHERE IDRiga = 1");
            transaction.Commit();
        });
        EXPECT_EQ(error.find("caduta") != std::string::npos, each.fails) << error;
        EXPECT_EQ(error.empty(), !each.fails) << error;
        EXPECT_EQ(RowText(*server.folder.Connect(), "SELECT Testo FROM Riga WHERE IDRiga = 1"), each.stored);
        EXPECT_NE(ErrorText([&] { connection->Execute("DELETE FROM Riga"); }).find("caduta"), std::string::npos);
    }
}

TEST(OdbcServerRowSets, ComeOneAfterTheOther) {
    OdbcServer server;
    server.Run("Studio0012", "CREATE TABLE StoredProcedure (Name VARCHAR(50), Ordinal INT, Body TEXT)");
    server.Run("Studio0012", "CREATE TABLE Riga (IDRiga INT, Testo VARCHAR(20))");
    server.Run("Studio0012", "INSERT INTO Riga VALUES (1, 'uno'), (2, 'due'), (3, 'tre')");
    server.Run("Studio0012",
               "INSERT INTO StoredProcedure VALUES ('SP_Due', 1, 'SELECT IDRiga FROM Riga WHERE IDRiga <= ?1'), "
               "('SP_Due', 2, 'SELECT Testo, IDRiga FROM Riga ORDER BY IDRiga')");
    const ConnectionPtr connection = server.Connect();
    for (const bool interrupted : {false, true}) {
        const RecordsetPtr rows = connection->Open("SP_Due 2");
        if (interrupted) {
            EXPECT_EQ(RowText(*connection, "SELECT COUNT(*) FROM Riga"), "3");
        }
        EXPECT_EQ(RowText(*rows), "1;2");
        EXPECT_TRUE(rows->NextRecordset());
        EXPECT_EQ(rows->FieldCount(), 2);
        EXPECT_EQ(RowText(*rows), "uno|1;due|2;tre|3");
        EXPECT_FALSE(rows->NextRecordset());
        EXPECT_TRUE(rows->AtEnd());
    }
}

}  // namespace
}  // namespace vlm::data::testing
