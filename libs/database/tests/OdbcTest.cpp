#include <algorithm>
#include <cstdlib>

#include "OdbcColumn.h"
#include "odbc/OdbcConnection.h"
#include "support/ConnectionContract.h"
#include "support/TempFolder.h"
#include "support/Words.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

using odbc::ExactDecimal;
using odbc::OdbcConnection;
using odbc::OdbcText;

class OdbcFiles final : public ConnectionFixture {
public:
    void Run(const std::string& database, const std::string& sql) override { Open(database)->Execute(sql); }
    ConnectionPtr Connect() override { return Open("Studio0012"); }

private:
    /// Where this is an emulated system, its driver is one of the system around it and knows that one's paths.
    std::string PathOf(const std::string& file) const {
        const char* const drive = std::getenv("VLM_DRIVE_C");
        std::string path = folder_ / file;
        if (drive == nullptr) return path;
        std::replace(path.begin(), path.end(), '\\', '/');
        return drive + path.substr(2);
    }
    ConnectionPtr Open(const std::string& database) const {
        return OdbcConnection::Connect("Driver={SQLite3};Database=" + PathOf(database + ".sqlite") +
                                       ";Timeout=0;SyncPragma=OFF");
    }

    test::TempFolder folder_;
};

const ConnectionAdapter kFiles = {
    "files", MakeDatabases<OdbcFiles>, {.amountsAreText = true, .catalogIsFile = true, .latinStatements = true}};

INSTANTIATE_TEST_SUITE_P(OdbcFiles, ConnectionContract, ::testing::Values(kFiles));
INSTANTIATE_TEST_SUITE_P(OdbcFiles, OdbcContract, ::testing::Values(kFiles));

TEST(OdbcText, PartsOfAConnectionText) {
    OdbcText text(" Driver = {Free;TDS} ; server=a.b,1433;;PWD={a}}=;b} ;Pwd=due;UID=;Trusted= yes");
    EXPECT_EQ(text.ValueOf("driver") + text.ValueOf("SERVER") + text.ValueOf("Assente"), "Free;TDSa.b,1433");
    EXPECT_EQ(text.ValueOf("pwd"), "a}=;b");
    EXPECT_EQ(text.Secrets(), (std::vector<std::string>{"{a}}=;b}", "a}=;b", "due"}));
    EXPECT_EQ(text.Take("trusted"), "yes");
    text.Set("Server", "altro");
    text.Set("Database", "Studio0012");
    EXPECT_EQ(text.Text(), "Driver={Free;TDS};PWD={a}}=;b};Pwd=due;UID=;Server=altro;Database=Studio0012");
    text.Set("PWD", "con;punto} e {");
    EXPECT_EQ(text.Text(), "Driver={Free;TDS};UID=;Server=altro;Database=Studio0012;PWD={con;punto}} e {}");
    EXPECT_EQ(OdbcText(text.Text()).ValueOf("PWD"), "con;punto} e {");
    for (const char* wrong : {"segreta", "PWD={segreta", "PWD={segreta}segreta", "Driver=x;segreta;UID=a"}) {
        const std::string error = ErrorText([&] { OdbcText parsed(wrong); });
        EXPECT_PRED2(Holds, error, "testo di connessione ODBC");
        EXPECT_EQ(error.find("segreta"), std::string::npos) << error;
    }
    EXPECT_PRED2(Holds, ErrorText([] { OdbcConnection::Connect("Driver={SQLite3};Dialect=Altro"); }), "QualifySchema");
}

TEST(OdbcSchema, IsWrittenOutByTokens) {
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT Aldra..Comune.CodiceISTAT FROM V LEFT JOIN Aldra..Comune ON V.ID = Aldra..Comune.ID",
         "SELECT Aldra.dbo.Comune.CodiceISTAT FROM V LEFT JOIN Aldra.dbo.Comune ON V.ID = Aldra.dbo.Comune.ID"},
        {"SELECT * FROM [Una..base]..[T..x] WHERE a = 'Aldra..Comune' -- Aldra..Comune",
         "SELECT * FROM [Una..base].dbo.[T..x] WHERE a = 'Aldra..Comune' -- Aldra..Comune"},
        {"SELECT N'l''à..x', A..B, \"C\"..D, E . . F /* G..H */",
         "SELECT N'l''à..x', A.dbo.B, \"C\".dbo.D, E . dbo. F /* G..H */"},
        {"SELECT dbo.T.C, 1.5, T.* FROM Aldra.dbo.T", "SELECT dbo.T.C, 1.5, T.* FROM Aldra.dbo.T"},
        {"", ""},
    };
    for (const auto& [sql, qualified] : cases) EXPECT_EQ(odbc::WithSchema(sql), qualified);
}

TEST(OdbcDecimal, IsExactAndRoundsHalfToEven) {
    std::string units;
    for (const std::string& digits :
         test::WordsOf("0 -0.0001 12.3456 1.234 -1.5 .25 7,5 0.00005 0.00015 -0.00015 0.000050000001 "
                       "99999999999999.9999 922337203685477.5807 -922337203685477.5808 00000000000000000000001.1")) {
        units += std::to_string(ExactDecimal(digits, "Importo").Units()) + ' ';
    }
    EXPECT_EQ(units,
              "0 -1 123456 12340 -15000 2500 75000 0 2 -2 1 "
              "999999999999999999 9223372036854775807 -9223372036854775808 11000 ");
    for (const char* large : {"922337203685477.5808", "99999999999999999999999999999999999999"}) {
        EXPECT_THROW(ExactDecimal(large, "Importo"), OverflowError);
    }
    for (const char* wrong : {"uno", ""}) EXPECT_THROW(ExactDecimal(wrong, "Importo"), TypeMismatchError);
}

}  // namespace
}  // namespace vlm::data::testing
