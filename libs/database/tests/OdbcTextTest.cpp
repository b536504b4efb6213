#include <gtest/gtest.h>

#include "OdbcColumn.h"
#include "odbc/OdbcConnection.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

using odbc::ExactDecimal;
using odbc::OdbcConnection;
using odbc::OdbcText;

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
    const std::pair<const char*, std::int64_t> cases[] = {{"0", 0},
                                                          {"-0.0001", -1},
                                                          {"12.3456", 123456},
                                                          {"1.234", 12340},
                                                          {"-1.5", -15000},
                                                          {".25", 2500},
                                                          {"1234567.1", 12345671000},
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
    for (const auto& [digits, units] : cases) EXPECT_EQ(ExactDecimal(digits, "Importo").Units(), units) << digits;
    EXPECT_THROW(ExactDecimal("922337203685477.5808", "Importo"), OverflowError);
    EXPECT_THROW(ExactDecimal("99999999999999999999999999999999999999", "Importo"), OverflowError);
    EXPECT_THROW(ExactDecimal("uno", "Importo"), TypeMismatchError);
    EXPECT_THROW(ExactDecimal("", "Importo"), TypeMismatchError);
}

}  // namespace
}  // namespace vlm::data::testing
