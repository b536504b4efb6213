#include <gtest/gtest.h>
#include <optional>

#include "odbc/OdbcConnection.h"
#include "support/ConnectionContract.h"
#include "support/DatabaseFolder.h"
#include "support/OdbcServerText.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

using host::tds::TdsServer;
using odbc::OdbcConnection;

/// Files behind a server on this machine, through the driver for its protocol.
class Served final : public ConnectionFixture {
public:
    /// `asked`: what the driver is told beside the usual.
    explicit Served(host::tds::Faults faults = {}, std::string asked = {}) : asked_(std::move(asked)) {
        server.emplace(folder.Path().string(), test::ServerOptions(std::move(faults)));
    }

    void Run(const std::string& database, const std::string& sql) override { folder.Run(database, sql); }
    ConnectionPtr Connect() override { return Connect("Studio0012"); }
    ConnectionPtr Connect(const std::string& database) const {
        return OdbcConnection::Connect(test::OdbcServerText(*server, database) + ";PWD=" + test::kServerPassword +
                                       asked_);
    }
    /// As another program finds it in the file.
    std::string Stored(const std::string& sql) { return RowText(*folder.Connect(), sql); }
    void AddRows() {
        Run("Studio0012", "CREATE TABLE Riga (IDRiga INT NOT NULL PRIMARY KEY, Testo VARCHAR(20))");
        Run("Studio0012",
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) INSERT INTO Riga "
            "SELECT i, 'riga' FROM n");
    }

    DatabaseFolder folder;
    std::optional<TdsServer> server;

private:
    std::string asked_;
};

/// Older protocols, answers in many packets, statements with the schema written out. The last of a name counts.
constexpr const char* kAsked[] = {"", ";TDS_Version=7.1", ";TDS_Version=7.2;PacketSize=512", ";Dialect=QualifySchema"};

template <std::size_t Asked>
std::unique_ptr<ConnectionFixture> Make() {
    return std::make_unique<Served>(host::tds::Faults(), kAsked[Asked]);
}

const ConnectionAdapter kServer = {"7.4", Make<0>}, kOldest = {"7.1", Make<1>}, kSmall = {"7.2", Make<2>},
                        kQualified = {"qualified", Make<3>};

INSTANTIATE_TEST_SUITE_P(TdsServer, ConnectionContract, ::testing::Values(kServer, kOldest, kSmall));
INSTANTIATE_TEST_SUITE_P(TdsServer, DialectContract, ::testing::Values(kServer, kQualified));
INSTANTIATE_TEST_SUITE_P(TdsServer, OdbcContract, ::testing::Values(kServer, kOldest, kSmall));

/// The row sets of a batch, parted by " / "; the error that it ends with, from its state on.
std::string Answers(Connection& connection, const std::string& sql) {
    std::string answers;
    const std::string error = ErrorText([&] {
        const RecordsetPtr rows = connection.Open(sql);
        answers = RowText(*rows);
        while (rows->NextRecordset()) answers += " / " + RowText(*rows);
    });
    return answers + error.substr(std::min(error.size(), error.find("(SQLSTATE")));
}

TEST(TdsServerErrors, KeepStateNumberAndText) {
    Served served;
    served.Run("Studio0012", "CREATE TABLE Prova (ID INT NOT NULL PRIMARY KEY, Nome VARCHAR(20))");
    const ConnectionPtr connection = served.Connect();
    const std::pair<const char*, int> cases[] = {
        {"SELECT * FROM Assente", 208},
        {"SELECT Assente FROM Prova", 207},
        {"SP_Assente 12", 2812},
        {"INSERT INTO Prova (ID) VALUES (1), (1)", 2627},
        {"INSERT INTO Prova (Nome) VALUES ('x')", 515},
        {"SELECT * FROM", 102},
        {"SELECT @Mai FROM Prova", 102},
        {"DECLARE @x INT", 102},
        {"SELECT 'aperto", 102},
        {"USE Assente", 911},
        {"ALTER DATABASE Assente SET SINGLE_USER", 911},
        {"CREATE DATABASE Studio0012", 1801},
        {"CREATE DATABASE [../Studio0013]", 102},
        {"DROP DATABASE Assente", 3701},
        {"DROP DATABASE master", 3701},
        {"CREATE TABLE Prova (ID INT)", 2714},
        {"COMMIT", 3902},
        {"ROLLBACK", 3903},
        {"INSERT INTO Prova (ID) VALUES (1) SELECT * FROM Assente INSERT INTO Prova (ID) VALUES (2)", 208},
    };
    for (const auto& [sql, number] : cases) {
        const std::string answer = Answers(*connection, sql);
        EXPECT_TRUE(answer.ends_with(", codice " + std::to_string(number) + ")")) << sql << ": " << answer;
    }
    EXPECT_EQ(served.Stored("SELECT ID FROM Prova"), "1") << "an error ends its batch";
    EXPECT_EQ(Answers(*connection, "SELECT * FROM Assente"), "(SQLSTATE 42S02, codice 208)");
    for (const char* word : {"IF 1 = 1 ", "BEGIN "}) {
        std::string nested;
        for (int depth = 0; depth < 50'000; ++depth) nested += word;
        EXPECT_EQ(Answers(*connection, nested + "SELECT 1"), "(SQLSTATE 42000, codice 102)");
    }
    served.Run("Studio0012", "UPDATE Prova SET Nome = 'più di venti caratteri'");
    const std::string error = ErrorText([&] { connection->Open("SELECT Nome FROM Prova"); });
    EXPECT_NE(error.find("Il valore della colonna Nome non sta nel suo tipo."), std::string::npos) << error;
}

TEST(TdsServerErrors, WhoDoesNotKnowThePasswordStaysOut) {
    const Served served;
    const std::string text = test::OdbcServerText(*served.server, "Studio0012"),
                      absent = test::OdbcServerText(*served.server, "Assente") + ";PWD=" + test::kServerPassword;
    EXPECT_EQ(served.Connect("")->InitialCatalog(), "master");
    const std::pair<std::string, const char*> cases[] = {
        {text + ";PWD=segreta-errata", "'ospite'"},
        {text + ";PWD=ospite", "18456"},  // the name is the password: neither is told
        {text + ";UID=altro;PWD=" + test::kServerPassword, "18456"},
        {absent, "4060"},
        {"Driver={segreta-errata};PWD=segreta-errata", "non è riuscito"},
    };
    for (const auto& [refused, told] : cases) {
        const std::string error = ErrorText([&, all = refused] { OdbcConnection::Connect(all); });
        EXPECT_NE(error.find("non è riuscito"), std::string::npos) << error;
        EXPECT_NE(error.find(told), std::string::npos) << error;
        EXPECT_EQ(error.find("segret"), std::string::npos) << error;
        EXPECT_EQ(error.find("'ospite'") != std::string::npos, refused == text + ";PWD=segreta-errata") << error;
    }
}

TEST(TdsServerBatches, AreDoneStatementByStatement) {
    Served served;
    const ConnectionPtr connection = served.Connect("master");
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT name FROM sys.databases ORDER BY name", "Aldra;master;Studio0012"},
        {"IF DB_ID('Studio0013') IS NULL BEGIN CREATE DATABASE [Studio0013] END", ""},
        {"IF DB_ID('studio0013') IS NULL CREATE DATABASE Studio0013", ""},
        {"SELECT d.name FROM sys.databases AS d WHERE d.name IN ('studio0013', 'Assente')", "Studio0013"},
        {"ALTER DATABASE Studio0013 SET SINGLE_USER WITH ROLLBACK IMMEDIATE", ""},
        {"USE Studio0013 SELECT DB_NAME() AS D", "Studio0013"},
        {"CREATE TABLE dbo.T (ID INT IDENTITY(1, 1) NOT NULL, Nome NVARCHAR(9), Nota VARCHAR(MAX), Testo "
         "NVARCHAR(MAX), CONSTRAINT PK_T PRIMARY KEY CLUSTERED (ID)) ON [PRIMARY]",
         ""},
        {"INSERT INTO Studio0013..T VALUES (1, 'a', N'Cantù € Ω', N'Ω 𝄞'), (2, NULL, '', NULL), (3, 'c', NULL, '')",
         ""},
        {"SELECT * FROM T", "1|a|Cantù € ?|Ω 𝄞;2|NULL||NULL;3|c|NULL|"},
        {"CREATE INDEX IX_T ON dbo.T (Nome) INCLUDE (ID)", ""},
        {"CREATE VIEW V AS SELECT TOP (2) ID, ISNULL(Nome, '-') AS N FROM dbo.T ORDER BY ID DESC", ""},
        {"SELECT * FROM V", "3|c;2|-"},
        {"CREATE PROCEDURE SP_T @primo INT, @nome VARCHAR(9) = NULL AS BEGIN SET NOCOUNT ON; SELECT Nome FROM T WHERE "
         "ID = @primo; SELECT @nome AS N, '@nome' AS T END",
         ""},
        {"SP_T 3, 'x'", "c / x|@nome"},
        {"EXEC dbo.SP_T -1, NULL", " / NULL|@nome"},
        {"{call SP_T(1, 'y')}", "a / y|@nome"},
        {"CREATE OR ALTER PROC SP_T AS SELECT 5 AS C", ""},
        {"exec SP_T SELECT 6 AS S", "5 / 6"},
        {"sp_pkeys 'T'", "Studio0013|dbo|T|ID|1|PK_T"},
        {"BEGIN TRAN BEGIN TRANSACTION; DELETE FROM T WHERE ID = 3 COMMIT", ""},
        {"SELECT @@TRANCOUNT AS N", "1"},
        {"IF @@TRANCOUNT > 0 COMMIT; ELSE IF 1 = 0 SELECT 1 AS A ELSE SELECT 2 AS A", ""},
        {"IF @@TRANCOUNT > 0 COMMIT; ELSE IF 1 = 0 SELECT 1 AS A ELSE SELECT 2 AS A", "2"},
        {"SET IMPLICIT_TRANSACTIONS ON DELETE FROM T SELECT @@TRANCOUNT AS N ROLLBACK TRAN", "1"},
        {"SET IMPLICIT_TRANSACTIONS OFF SELECT COUNT(*) AS N FROM T", "2"},
        {"DROP PROCEDURE SP_T DROP TABLE IF EXISTS T USE master DROP DATABASE Studio0013", ""},
        {"SELECT DB_ID('Studio0013') AS N", "NULL"},
    };
    for (const auto& [sql, answer] : cases) EXPECT_EQ(Answers(*connection, sql), answer) << sql;
}

TEST(TdsServerEnd, LeavesPlainFilesAndNothingThatWasNotCommitted) {
    Served served;
    served.AddRows();
    const ConnectionPtr connection = served.Connect();
    // Rows that nobody wants are not sent.
    connection->Open("SELECT A.* FROM Riga A, Riga B, Riga C, Riga D").reset();
    connection->BeginTransaction();
    connection->Execute("DELETE FROM Riga");
    EXPECT_EQ(RowText(*connection, "SELECT COUNT(*) FROM Riga"), "0");
    served.server.reset();
    EXPECT_EQ(served.Stored("SELECT COUNT(*) FROM Riga"), "5000");
    EXPECT_EQ(served.Stored("PRAGMA journal_mode"), "delete");
    EXPECT_THROW(TdsServer((served.folder.Path() / "Assente").string(), {}), Error);
    const TdsServer first(served.folder.Path().string(), {});
    EXPECT_THROW(TdsServer(served.folder.Path().string(), {.port = first.Port()}), Error);
}

/// What the first row set of an open call comes to: rows read, then the error.
std::string ReadToTheEnd(Recordset& rows) {
    int read = 0;
    const std::string error = ErrorText([&] {
        for (; !rows.AtEnd(); rows.MoveNext()) ++read;
    });
    return (read > 0 && read < 5000 ? "some" : std::to_string(read)) + ", " + error;
}

TEST(TdsServerLoss, IsAnErrorAndStaysOne) {
    Served served({.endAfterRows = 3000});
    served.AddRows();
    const ConnectionPtr connection = served.Connect(), other = served.Connect();
    const RecordsetPtr rows = connection->Open("SELECT IDRiga FROM Riga");
    const std::string end = ReadToTheEnd(*rows);
    EXPECT_NE(ErrorText([&] { other->Execute("DELETE FROM Riga"); }).find("caduta"), std::string::npos);
    EXPECT_NE(ErrorText([&] { served.Connect(); }).find("non è riuscito"), std::string::npos);
    EXPECT_EQ(end.find("some, La connessione con il server di database è caduta"), 0U) << end;
    EXPECT_FALSE(rows->IsOpen());
    EXPECT_FALSE(connection->IsOpen());
    EXPECT_EQ("0" + end.substr(4), ReadToTheEnd(*rows)) << "no end of the rows without the error";
    // The server is back, but what this connection had begun is not.
    const TdsServer again(served.folder.Path().string(), {.port = served.server->Port()});
    for (const char* sql : {"DELETE FROM Riga", "SELECT 1"}) {
        EXPECT_NE(ErrorText([&] { connection->Execute(sql); }).find("caduta"), std::string::npos) << sql;
    }
    EXPECT_THROW(connection->BeginTransaction(), Error);
    EXPECT_EQ(served.Stored("SELECT COUNT(*) FROM Riga"), "5000");
}

TEST(TdsServerLoss, AnErrorBehindRowsIsToldByWhoeverReadsThem) {
    for (const std::int64_t count : {1, 511, 512, 513, 3000}) {  // within a block and at its ends
        Served served({.failAfterRows = count});
        served.AddRows();
        const ConnectionPtr connection = served.Connect();
        const std::string error = RowText(*connection, "SELECT IDRiga FROM Riga");
        EXPECT_NE(error.find("a favore di un altro utente"), std::string::npos) << count << ": " << error;
        EXPECT_TRUE(connection->IsOpen());
        if (count < 3000) continue;
        // A statement in between reads the rows to their end, and finds it.
        const RecordsetPtr interrupted = connection->Open("SELECT IDRiga, Testo FROM Riga");
        EXPECT_NE(ErrorText([&] { connection->Open("SELECT 1"); }).find("altro utente"), std::string::npos);
        EXPECT_NE(ReadToTheEnd(*interrupted).find("altro utente"), std::string::npos);
    }
}

TEST(TdsServerLoss, ATransactionEndsWhateverRowsAreOpen) {
    Served served({.failAfterRows = 3000});
    served.AddRows();
    const ConnectionPtr connection = served.Connect();
    RecordsetPtr rows;
    {
        const Transaction abandoned(*connection);
        connection->Execute("UPDATE Riga SET Testo = 'mai' WHERE IDRiga = 1");
        rows = connection->Open("SELECT IDRiga, Testo FROM Riga");
    }
    Transaction transaction(*connection);
    connection->Execute("UPDATE Riga SET Testo = 'altra' WHERE IDRiga = 2");
    transaction.Commit();
    EXPECT_EQ(served.Stored("SELECT Testo FROM Riga WHERE IDRiga < 4 ORDER BY IDRiga"), "riga;altra;riga");
}

TEST(TdsServerLoss, ACommitIsAnErrorOnlyWhenItDidNotHappen) {
    for (const bool happens : {false, true}) {
        Served served({.endAtCommit = !happens, .endAfterCommit = happens});
        served.AddRows();
        const ConnectionPtr connection = served.Connect();
        const std::string error = ErrorText([&] {
            Transaction transaction(*connection);
            connection->Execute("UPDATE Riga SET Testo = 'nuova' WHERE IDRiga = 1");
            transaction.Commit();
        });
        EXPECT_EQ(error.find("caduta") == std::string::npos, happens) << error;
        EXPECT_EQ(error.empty(), happens) << error;
        EXPECT_EQ(served.Stored("SELECT Testo FROM Riga WHERE IDRiga = 1"), happens ? "nuova" : "riga");
        EXPECT_NE(ErrorText([&] { connection->Execute("DELETE FROM Riga"); }).find("caduta"), std::string::npos);
    }
}

}  // namespace
}  // namespace vlm::data::testing
