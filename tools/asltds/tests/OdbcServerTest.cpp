#include <gtest/gtest.h>

#include "odbc/OdbcConnection.h"
#include "support/ConnectionContract.h"
#include "support/DatabaseFolder.h"
#include "support/OdbcServerText.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

using odbc::OdbcConnection;

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

/// A server whose statements go with the schema written out.
class QualifiedServer final : public ConnectionFixture {
public:
    void Run(const std::string& database, const std::string& sql) override { server_.Run(database, sql); }
    ConnectionPtr Connect() override { return OdbcConnection::Connect(server_.Text() + ";Dialect=QualifySchema"); }

private:
    OdbcServer server_;
};

template <typename Fixture>
std::unique_ptr<ConnectionFixture> Make() {
    return std::make_unique<Fixture>();
}

const ConnectionAdapter kServer = {"server", Make<OdbcServer>}, kQualified = {"qualified", Make<QualifiedServer>};

INSTANTIATE_TEST_SUITE_P(OdbcServer, ConnectionContract, ::testing::Values(kServer));
INSTANTIATE_TEST_SUITE_P(OdbcServer, DialectContract, ::testing::Values(kServer, kQualified));
INSTANTIATE_TEST_SUITE_P(OdbcServer, OdbcContract, ::testing::Values(kServer));

TEST(OdbcServerErrors, KeepStateNumberAndText) {
    const OdbcServer server;
    const ConnectionPtr connection = OdbcConnection::Connect(server.Text());
    const std::pair<const char*, const char*> cases[] = {{"SELECT * FROM Assente", "(SQLSTATE 42S02, codice 208)"},
                                                         {"SP_Assente 1", "(SQLSTATE 42000, codice 2812)"}};
    for (const auto& [sql, code] : cases) {
        const std::string error = ErrorText([&, text = sql] { connection->Open(text); });
        EXPECT_TRUE(error.ends_with(code)) << error;
        EXPECT_NE(error.find("Assente"), std::string::npos) << error;
        EXPECT_EQ(error.find('['), std::string::npos) << error;
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
    const ConnectionPtr connection = server.Connect(), other = server.Connect();
    const RecordsetPtr rows = connection->Open("SELECT IDRiga FROM Riga");
    const std::string end = ReadToTheEnd(*rows);
    EXPECT_NE(ErrorText([&] { other->Execute("DELETE FROM Riga"); }).find("caduta"), std::string::npos);
    EXPECT_NE(ErrorText([&] { server.Connect(); }).find("non è riuscito"), std::string::npos);
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

}  // namespace
}  // namespace vlm::data::testing
