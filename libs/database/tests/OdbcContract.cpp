#include "support/ConnectionContract.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(OdbcContract);

void OdbcContract::SetUp() {
    fixture = GetParam().make();
    fixture->Run("Studio0012",
                 "CREATE TABLE Nota (IDNota INT NOT NULL PRIMARY KEY, Testo TEXT, Autore VARCHAR(20), "
                 "Codice INT, Seguito TEXT)");
    fixture->Run("Studio0012",
                 "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1300) INSERT INTO Nota "
                 "(IDNota, Autore, Codice) SELECT i, 'autore ' || i, i * 7 FROM n");
    connection = fixture->Connect();
}

TEST_P(OdbcContract, TextsOfAnyLengthComeWhole) {
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

TEST_P(OdbcContract, AStatementInTheMiddleLeavesTheRowsAsTheyAre) {
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

TEST_P(OdbcContract, ReadsFurtherTypes) {
    const std::string more = GetParam().differs.latinStatements ? "" : " 漢";
    fixture->Run("Studio0012",
                 "CREATE TABLE Vari (ID INT, Giorno DATE, Ora DATETIME, Reale REAL, Nome NVARCHAR(20), "
                 "Prezzo DECIMAL(10, 2), Piccolo TINYINT)");
    fixture->Run("Studio0012", "INSERT INTO Vari VALUES (1, '2012-02-29', '1899-12-30 23:59:59', -0.5, 'Ragò" + more +
                                   "', "
                                   "1234567.89, 255), (2, NULL, NULL, NULL, '', NULL, NULL)");
    const RecordsetPtr rows = connection->Open("SELECT * FROM Vari ORDER BY ID");
    EXPECT_EQ(rows->DateOf(1), Date::FromYmd(2012, 2, 29));
    EXPECT_EQ(rows->CivilOf(2), (Date::Civil{1899, 12, 30, 23, 59, 59}));
    EXPECT_EQ(rows->NumberOf(3), -0.5);
    EXPECT_EQ(rows->TextOf(4), "Ragò" + more);
    EXPECT_EQ(rows->AmountOf(5).Units(), 12345678900);
    EXPECT_EQ(rows->IntegerOf(6), 255);
    rows->MoveNext();
    EXPECT_EQ(RowText(*rows), "2|NULL|NULL|NULL||NULL|NULL");
}

TEST_P(OdbcContract, RowsOfATableAreKnownByItsKey) {
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

}  // namespace vlm::data::testing
