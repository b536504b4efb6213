#include "support/ConnectionContract.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DialectContract);

void DialectContract::AddComuni() {
    fixture->Run("Aldra", "CREATE TABLE Comune (IDComune INT NOT NULL PRIMARY KEY, Comune VARCHAR(50))");
    fixture->Run("Aldra",
                 "INSERT INTO Comune (IDComune, Comune) VALUES (1, 'Cantù'), (2, 'CANTÙ MARINA'), (3, 'Asti')");
}

TEST_P(DialectContract, ReadsStatementsAsTheServerDoes) {
    AddComuni();
    const std::pair<const char*, const char*> cases[] = {
        // the month stands first
        {"SELECT IDVisita FROM Visita WHERE Giorno = '3/31/2011'", "1"},
        // texts compare without regard to case
        {"SELECT IDVisita FROM Visita WHERE Paziente = 'ROSSI' ORDER BY IDVisita", "1;2"},
        {"SELECT IDVisita FROM Visita WHERE Paziente <> 'ROSSI'", "4"},
        {"SELECT IDVisita FROM Visita WHERE Paziente IN ('ROSSI', 'Verdi') ORDER BY IDVisita DESC", "2;1"},
        {"SELECT IDComune FROM Aldra..Comune WHERE Comune = 'CANTÙ'", "1"},
        {"SELECT IDComune FROM Aldra..Comune WHERE Comune LIKE 'cantù%' ORDER BY Comune", "1;2"},
        {"SELECT IDComune FROM Aldra..Comune WHERE Comune LIKE '[a-b]st_'", "3"},
        // dates compare as dates
        {"SELECT IDVisita FROM Visita WHERE Giorno <= '2011-03-31' ORDER BY Giorno, IDVisita", "4;1"},
        {"SELECT IDVisita FROM Visita WHERE Giorno > '20110331'", "2"},
        {"SELECT IDVisita FROM Visita WHERE YEAR(Giorno) = 2011 AND MONTH(Giorno) = 3 AND DAY(Giorno) < 31", "4"},
        // joins over databases, texts put together, Null
        {"SELECT V.Paziente + ' da ' + C.Comune AS Chi FROM Visita V INNER JOIN Aldra..Comune C ON V.IDComune = "
         "C.IDComune ORDER BY V.IDVisita",
         "Rossi da Cantù;rossi da CANTÙ MARINA"},
        {"SELECT Studio0012..Visita.IDVisita FROM Studio0012..Visita WHERE Paziente + 'x' IS NULL", "3"},
        {"SELECT COUNT(*), MAX(IDVisita) FROM Visita WHERE ISNULL(Paziente, '') = ''", "1|3"},
        {"SELECT [Paziente] FROM [Visita] WHERE IDVisita = 4;", "125"},
    };
    for (const auto& [sql, rows] : cases) EXPECT_EQ(RowText(*connection, sql), rows) << sql;
    EXPECT_EQ(connection->Execute("UPDATE Visita SET Fatta = 1, Giorno = '4/2/2011' WHERE Paziente = 'ROSSI'"), 2);
    EXPECT_EQ(RowText(*connection, "SELECT Giorno FROM Visita WHERE Fatta = 1"), "02/04/2011;02/04/2011");
}

TEST_P(DialectContract, WritesTheRowsOfAnotherDatabase) {
    AddComuni();
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Aldra..Comune WHERE Comune = 'asti'");
    rows->SetValue("Comune", std::string("Asti Nuova"));
    rows->Update();
    rows->AddNew();
    rows->SetValue("IDComune", std::int64_t{9});
    rows->SetValue("Comune", std::string("Lodè"));
    rows->Update();
    EXPECT_EQ(RowText(*connection, "SELECT IDComune, Comune FROM Aldra..Comune WHERE IDComune > 2 ORDER BY IDComune"),
              "3|Asti Nuova;9|Lodè");
}

TEST_P(DialectContract, AProcedureGivesItsRowSetsOneAfterTheOther) {
    fixture->Run("Studio0012", "CREATE TABLE StoredProcedure (Name VARCHAR(50), Ordinal INT, Body TEXT)");
    fixture->Run("Studio0012",
                 "INSERT INTO StoredProcedure VALUES ('SP_Due', 1, 'SELECT IDVisita FROM Visita WHERE IDVisita < ?1'), "
                 "('SP_Due', 2, 'SELECT Paziente, IDVisita FROM Visita WHERE IDVisita > ?1 ORDER BY IDVisita')");
    for (const bool interrupted : {false, true}) {
        const RecordsetPtr rows = connection->Open("SP_Due 2");
        if (interrupted) {
            EXPECT_EQ(RowText(*connection, "SELECT COUNT(*) FROM Visita"), "4");
        }
        EXPECT_EQ(RowText(*rows), "1");
        EXPECT_TRUE(rows->NextRecordset());
        EXPECT_EQ(rows->FieldCount(), 2);
        EXPECT_EQ(RowText(*rows), "NULL|3;125|4");
        EXPECT_FALSE(rows->NextRecordset());
        EXPECT_TRUE(rows->AtEnd());
        rows->Close();
        EXPECT_FALSE(rows->IsOpen());
    }
}

TEST_P(DialectContract, ErrorsNameTheDatabaseAndTheProcedure) {
    for (const auto& [sql, named] :
         {std::pair("SELECT * FROM Studio9999..Visita", "Studio9999"), std::pair("SP_NonEsiste 12", "SP_NonEsiste")}) {
        const std::string error = ErrorText([&] { connection->Open(sql); });
        EXPECT_NE(error.find(named), std::string::npos) << sql << ": " << error;
    }
}

}  // namespace vlm::data::testing
