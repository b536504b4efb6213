#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>

#include "OdbcClient.h"
#include "asltds/TdsServer.h"
#include "support/DatabaseFolder.h"
#include "support/RowText.h"

namespace vlm::host::tds::testing {

namespace {

using data::testing::RowText;

constexpr const char* kTable =
    "CREATE TABLE Prova (ID INT NOT NULL, Vero BIT, Corto SMALLINT, Grande BIGINT, Peso FLOAT, Importo MONEY, "
    "Quota DECIMAL(10, 2), Giorno DATETIME, Nome VARCHAR(20), Largo NVARCHAR(20), Nota VARCHAR(MAX), "
    "Testo NVARCHAR(MAX), CONSTRAINT PK_Prova PRIMARY KEY CLUSTERED (ID)) ON [PRIMARY]";

class TdsServerTest : public ::testing::Test {
protected:
    void Start() {
        server.emplace(folder.Path().string(), TdsServer::Options{.user = "prova", .password = "Segreta1!"});
    }
    void SetUp() override {
        Start();
        OdbcClient client(server->Port());
        ASSERT_EQ(client.Run(kTable), "done");
    }
    /// As another program finds it in the file.
    std::string Stored(const std::string& sql) { return RowText(*folder.Connect(), sql); }

    data::testing::DatabaseFolder folder;
    std::optional<TdsServer> server;
};

class TdsVersions : public TdsServerTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(TdsVersions, GiveCellsByTheirDeclaredTypes) {
    OdbcClient client(server->Port(), "studio0012", std::string("TDS_Version=") + GetParam());
    EXPECT_EQ(client.Run("INSERT INTO Prova VALUES (1, 1, -3, 5000000000, 70.5, -12.3456, 0.25, '2011-03-31 08:30:00', "
                         "N'Cantù € Ω', N'Ω 𝄞', 'nota''s', N'Ω'), (2, 0, 32767, -1, -1e300, 92233720368.5477, "
                         "-7.5, '12/31/1999', '', '', '', '')"),
              "2 changed");
    EXPECT_EQ(client.Run("INSERT INTO Prova (ID) VALUES (3)"), "1 changed");
    EXPECT_EQ(client.Run("SELECT * FROM Prova ORDER BY ID"),
              "1|1|-3|5000000000|70.5|-12.3456|0.2500|2011-03-31 08:30:00.000|Cantù € ?|Ω 𝄞|nota's|Ω;"
              "2|0|32767|-1|-1.0000000000000001e+300|92233720368.5477|-7.5000|1999-12-31 00:00:00.000||||;"
              "3|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL");
    const bool old = std::string(GetParam()) == "7.1";
    EXPECT_EQ(client.Describe("SELECT * FROM Prova"),
              std::string("ID int(10) Vero bit(1) Corto smallint(5) Grande bigint(19) Peso float(53) Importo money(19) "
                          "Quota decimal(19) Giorno datetime(23) Nome varchar(20) Largo nvarchar(20) ") +
                  (old ? "Nota text(2147483647) Testo ntext(1073741823) " : "Nota varchar(0) Testo nvarchar(0) "));
    EXPECT_EQ(client.Run("SELECT COUNT(*) AS N, 'x' + Nome AS T FROM Prova WHERE ID = 2 GROUP BY Nome"), "1|x");
}

TEST_P(TdsVersions, PutParametersIntoStatements) {
    OdbcClient client(server->Port(), "Studio0012", std::string("TDS_Version=") + GetParam());
    SQLLEN here = 0, text = SQL_NTS, null = SQL_NULL_DATA;
    SQLINTEGER id = 7;
    unsigned char truth = 1;
    SQLSMALLINT small = -5;
    SQLBIGINT big = -9000000000;
    double weight = -0.5;
    char money[] = "12.3456", name[] = "l'ò ?1 @P1", wide[] = "Ω--", note[] = "nota /*";
    SQL_TIMESTAMP_STRUCT moment = {2011, 3, 31, 8, 30, 59, 0};
    const struct {
        SQLSMALLINT cType, type;
        SQLULEN size;
        SQLSMALLINT decimals;
        SQLPOINTER value;
        SQLLEN* length;
    } bindings[] = {
        {SQL_C_LONG, SQL_INTEGER, 0, 0, &id, &here},
        {SQL_C_BIT, SQL_BIT, 0, 0, &truth, &here},
        {SQL_C_SHORT, SQL_SMALLINT, 0, 0, &small, &here},
        {SQL_C_SBIGINT, SQL_BIGINT, 0, 0, &big, &here},
        {SQL_C_DOUBLE, SQL_DOUBLE, 0, 0, &weight, &here},
        {SQL_C_CHAR, SQL_DECIMAL, 19, 4, money, &text},
        {SQL_C_CHAR, SQL_NUMERIC, 38, 0, money, &null},
        {SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 23, 3, &moment, &here},
        {SQL_C_CHAR, SQL_VARCHAR, 20, 0, name, &text},
        {SQL_C_CHAR, SQL_WVARCHAR, 20, 0, wide, &text},
        {SQL_C_CHAR, SQL_LONGVARCHAR, 90, 0, note, &text},
        {SQL_C_CHAR, SQL_WLONGVARCHAR, 90, 0, wide, &text},
    };
    SQLUSMALLINT number = 0;
    for (const auto& each : bindings) {
        SQLBindParameter(client.Statement(), ++number, SQL_PARAM_INPUT, each.cType, each.type, each.size, each.decimals,
                         each.value, 0, each.length);
    }
    const std::string insert = "INSERT INTO Prova VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) -- '@P1'";
    EXPECT_EQ(client.RunBound(insert), "1 changed");
    EXPECT_EQ(Stored("SELECT * FROM Prova"),
              "7|True|-5|-9000000000|-0,5|12,3456|NULL|31/03/2011 08:30:59|l'ò ?1 @P1|Ω--|nota /*|Ω--");
    id = 8;
    EXPECT_EQ(Stored("SELECT COUNT(*) FROM Prova WHERE ID = 8"), "0");
    EXPECT_EQ(client.RunBound(insert), "1 changed");  // prepared once more
    SQLFreeStmt(client.Statement(), SQL_RESET_PARAMS);
    SQLBindParameter(client.Statement(), 1, SQL_PARAM_INPUT, SQL_C_LONG, SQL_INTEGER, 0, 0, &id, 0, &here);
    const std::string query = "SELECT ID, '@P1 ?' AS T FROM Prova WHERE ID >= ?";
    EXPECT_EQ(client.RunBound(query, 2), "8|@P1 ?");
    EXPECT_EQ(client.RunBound("{call sp_pkeys('Prova')}"), "Studio0012|dbo|Prova|ID|1|PK_Prova");
}

TEST_P(TdsVersions, HoldTransactionsTogether) {
    const std::string version = std::string("TDS_Version=") + GetParam();
    const std::string count = "SELECT COUNT(*) FROM Prova";
    {
        OdbcClient client(server->Port(), "Studio0012", version);
        client.TakeTransactions();
        client.Run("INSERT INTO Prova (ID) VALUES (1)");
        EXPECT_EQ(Stored(count), "0");
        client.End(SQL_ROLLBACK);
        client.Run("INSERT INTO Prova (ID) VALUES (2)");
        client.End(SQL_COMMIT);
        EXPECT_EQ(Stored("SELECT ID FROM Prova"), "2");
        client.Run("INSERT INTO Prova (ID) VALUES (3)");  // never committed
    }
    EXPECT_EQ(Stored(count), "1");
    OdbcClient client(server->Port(), "Studio0012", version);
    EXPECT_EQ(client.Run("BEGIN TRAN BEGIN TRANSACTION; INSERT INTO Prova (ID) VALUES (4) COMMIT"), "1 changed");
    EXPECT_EQ(client.Run("SELECT @@TRANCOUNT AS N"), "1");
    EXPECT_EQ(Stored(count), "1");
    const char* const commit = "IF @@TRANCOUNT > 0 COMMIT; ELSE IF 1 = 0 SELECT 1 AS A ELSE SELECT 2 AS A";
    EXPECT_EQ(client.Run(commit), "done");
    EXPECT_EQ(client.Run(commit), "2");
    EXPECT_EQ(Stored(count), "2");
    EXPECT_EQ(client.Run("SET IMPLICIT_TRANSACTIONS ON DELETE FROM Prova SELECT @@TRANCOUNT AS N ROLLBACK TRAN"),
              "2 changed / 1");
    EXPECT_EQ(Stored(count), "2");
}

INSTANTIATE_TEST_SUITE_P(Tds, TdsVersions, ::testing::Values("7.1", "7.2", "7.3", "7.4;PacketSize=512"));

TEST_F(TdsServerTest, NumbersErrorsAsTheServerThatItStandsFor) {
    OdbcClient client(server->Port());
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT * FROM Assente", "208 "},
        {"SELECT Assente FROM Prova", "207 "},
        {"SP_Assente 12", "2812 "},
        {"INSERT INTO Prova (ID) VALUES (1), (1)", "2627 "},
        {"INSERT INTO Prova (Vero) VALUES (1)", "515 "},
        {"SELECT * FROM", "102 "},
        {"SELECT @Mai FROM Prova", "102 "},
        {"DECLARE @x INT", "102 "},
        {"SELECT 'aperto", "102 "},
        {"USE Assente", "911 "},
        {"ALTER DATABASE Assente SET SINGLE_USER", "911 "},
        {"CREATE DATABASE Studio0012", "1801 "},
        {"CREATE DATABASE [../Studio0013]", "102 "},
        {"DROP DATABASE Assente", "3701 "},
        {"DROP DATABASE master", "3701 "},
        {kTable, "2714 "},
        {"COMMIT", "3902 "},
        {"ROLLBACK", "3903 "},
        {"INSERT INTO Prova (ID) VALUES (1) SELECT * FROM Assente INSERT INTO Prova (ID) VALUES (2)",
         "1 changed / 208 "},
    };
    for (const auto& [sql, beginning] : cases) {
        const std::string answer = client.Run(sql);
        EXPECT_TRUE(answer.starts_with(beginning)) << sql << ": " << answer;
    }
    for (const char* word : {"IF 1 = 1 ", "BEGIN "}) {
        std::string nested;
        for (int depth = 0; depth < 50'000; ++depth) nested += word;
        EXPECT_EQ(client.Run(nested + "SELECT 1"), "102 Istruzione SQL troppo annidata.");
    }
    EXPECT_EQ(Stored("SELECT ID FROM Prova"), "1");  // an error ends its batch
    folder.Run("Studio0012", "UPDATE Prova SET Nome = 'più di venti caratteri'");
    EXPECT_EQ(client.Run("SELECT Nome FROM Prova"), "50000 Il valore della colonna Nome non sta nel suo tipo.");
}

TEST_F(TdsServerTest, LetsInWhoKnowsThePasswordOfADatabase) {
    const struct {
        const char *database, *more, *error;
    } cases[] = {
        {"Studio0012", "UID=PROVA;PWD=Segreta1!", ""},       {"", "UID=prova;PWD=Segreta1!", ""},
        {"Studio0012", "UID=prova;PWD=segreta1!", "18456 "}, {"Studio0012", "UID=altro;PWD=Segreta1!", "18456 "},
        {"Assente", "UID=prova;PWD=Segreta1!", "4060 "},
    };
    for (const auto& each : cases) {
        const OdbcClient client(server->Port(), each.database, each.more);
        const std::string error = client.ConnectError();
        EXPECT_TRUE(*each.error == '\0' ? error.empty() : error.starts_with(each.error)) << each.more << error;
        EXPECT_EQ(error.find("egreta"), std::string::npos);
    }
}

TEST_F(TdsServerTest, KeepsDatabases) {
    OdbcClient client(server->Port(), "master");
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT name FROM sys.databases ORDER BY name", "Aldra;master;Studio0012"},
        {"IF DB_ID('Studio0013') IS NULL BEGIN CREATE DATABASE [Studio0013] END", "done"},
        {"IF DB_ID('studio0013') IS NULL CREATE DATABASE Studio0013", "done"},
        {"SELECT d.name FROM sys.databases AS d WHERE d.name IN ('studio0013', 'Assente')", "Studio0013"},
        {"ALTER DATABASE Studio0013 SET SINGLE_USER WITH ROLLBACK IMMEDIATE", "done"},
        {"USE Studio0013 SELECT DB_NAME() AS D", "Studio0013"},
        {"CREATE TABLE dbo.T (ID INT IDENTITY(1, 1) PRIMARY KEY NONCLUSTERED, Nome NVARCHAR(9))", "done"},
        {"INSERT INTO Studio0013..T VALUES (1, 'a'), (2, NULL), (3, 'c')", "3 changed"},
        {"CREATE INDEX IX_T ON dbo.T (Nome) INCLUDE (ID)", "done"},
        {"CREATE VIEW V AS SELECT TOP (2) ID, ISNULL(Nome, '-') AS N FROM dbo.T ORDER BY ID DESC", "done"},
        {"SELECT * FROM V", "3|c;2|-"},
        {"CREATE PROCEDURE SP_T @primo INT, @nome VARCHAR(9) = NULL AS BEGIN SET NOCOUNT ON; SELECT Nome FROM T WHERE "
         "ID = @primo; SELECT @nome AS N, '@nome' AS T END",
         "done"},
        {"SP_T 3, 'x'", "c / x|@nome"},
        {"EXEC dbo.SP_T -1, NULL", " / NULL|@nome"},
        {"{call SP_T(1, 'y')}", "a / y|@nome"},
        {"CREATE OR ALTER PROC SP_T AS SELECT 5 AS C", "done"},
        {"exec SP_T SELECT 6 AS S", "5 / 6"},
        {"DROP PROCEDURE SP_T DROP TABLE IF EXISTS T USE master DROP DATABASE Studio0013", "done"},
        {"SELECT DB_ID('Studio0013') AS N", "NULL"},
    };
    for (const auto& [sql, answer] : cases) EXPECT_EQ(client.Run(sql), answer) << sql;
    EXPECT_EQ(client.Run("Studio0012..sp_pkeys 'Prova'"), "Studio0012|dbo|Prova|ID|1|PK_Prova");
    EXPECT_EQ(client.Run("sp_pkeys 'Prova'"), "");
}

TEST_F(TdsServerTest, StopsSendingRowsThatNobodyWants) {
    OdbcClient client(server->Port());
    std::string insert = "INSERT INTO Prova (ID) VALUES (0)";
    for (int row = 1; row < 100; ++row) insert += ", (" + std::to_string(row) + ")";
    client.Run(insert);
    const std::string endless = "SELECT A.* FROM Prova A, Prova B, Prova C, Prova D";
    ASSERT_TRUE(SQL_SUCCEEDED(SQLExecDirect(client.Statement(), Text(endless), SQL_NTS)));
    ASSERT_TRUE(SQL_SUCCEEDED(SQLFetch(client.Statement())));
    EXPECT_TRUE(SQL_SUCCEEDED(SQLCancel(client.Statement())));
    EXPECT_EQ(client.Run("SELECT COUNT(*) AS N FROM Prova"), "100");
}

TEST_F(TdsServerTest, EndsWhatIsOpenAndLeavesPlainFiles) {
    OdbcClient client(server->Port());
    client.TakeTransactions();
    client.Run("INSERT INTO Prova (ID) VALUES (1)");
    server.reset();
    EXPECT_EQ(Stored("SELECT COUNT(*) FROM Prova"), "0");
    EXPECT_EQ(Stored("PRAGMA journal_mode"), "delete");
    EXPECT_THROW(TdsServer((folder.Path() / "Assente").string(), {}), Error);
    Start();
    EXPECT_THROW(TdsServer(folder.Path().string(), {.port = server->Port(), .user = {}, .password = {}}), Error);
}

}  // namespace

}  // namespace vlm::host::tds::testing
