#include "support/ConnectionContract.h"

#include "support/Words.h"
#include "values/Error.h"

namespace vlm::data::testing {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ConnectionContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DialectContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(OdbcContract);

void ConnectionContract::SetUp() {
    fixture = GetParam().make();
    Run(
        {"CREATE TABLE Visita (IDVisita INT NOT NULL PRIMARY KEY, Paziente VARCHAR(50), Giorno DATETIME, "
         "Importo MONEY, Peso FLOAT, Fatta BIT, Piano SMALLINT, Protocollo BIGINT, IDComune INT)",
         "INSERT INTO Visita VALUES (1, 'Rossi', '2011-03-31', 12.3456, 70.5, 1, -3, 5000000000, 1), "
         "(2, 'rossi', '2011-03-31 08:30:00', 100, 2, 0, 2, 12, 2), "
         "(3, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL), "
         "(4, '125', '2011-03-01', NULL, NULL, NULL, NULL, NULL, NULL)"});
    connection = fixture->Connect();
}

TEST_P(ConnectionContract, ReadsCellsByTheirDeclaredTypes) {
    const RecordsetPtr rows = connection->Open("SELECT * FROM Visita WHERE IDVisita <= 2 ORDER BY IDVisita");
    const DriverDifferences& differs = GetParam().differs;
    EXPECT_PRED2(Holds, connection->InitialCatalog(), "Studio0012");
    EXPECT_EQ(connection->InitialCatalog() == "Studio0012", !differs.catalogIsFile);
    const FieldType amounts = differs.amountsAreText ? FieldType::Text : FieldType::Currency;
    const std::vector types = {FieldType::Integer, FieldType::Text,    FieldType::Date,     amounts,
                               FieldType::Double,  FieldType::Boolean, FieldType::SmallInt, FieldType::BigInt,
                               FieldType::Integer};
    std::vector<FieldType> told;
    for (int ordinal = 0; ordinal < rows->FieldCount(); ++ordinal) told.push_back(rows->TypeOf(ordinal));
    EXPECT_EQ(told, types);

    EXPECT_EQ(test::Joined(rows->IntegerOf(rows->Ordinal("idvisita")), rows->NumberOf(1), rows->DateOf(2)->Serial(),
                           rows->AmountOf(3).Units(), AmountOf(rows->ValueOf(3), "Importo").Units(),
                           rows->IntegerOf(4) /* half to even */, rows->NumberOf(5), std::get<bool>(rows->ValueOf(5)),
                           rows->Int16Of(6), rows->IntegerOf(7)),
              "1|0|40633|123456|123456|70|-1|1|-3|5000000000|");
    EXPECT_THROW(rows->Int32Of(7), OverflowError);
    const std::string amount = differs.amountsAreText ? std::string(rows->TextOf(3)) : "12,3456";
    EXPECT_EQ(RowText(*rows), "1|Rossi|31/03/2011|" + amount +
                                  "|70,5|True|-3|5000000000|1;"
                                  "2|rossi|31/03/2011 08:30:00|100|2|False|2|12|2");
}

TEST_P(ConnectionContract, ReadsNullLenientlyAndWrongValuesStrictly) {
    RecordsetPtr rows = connection->Open("SELECT * FROM Visita WHERE IDVisita = 3");
    for (int ordinal = 1; ordinal < rows->FieldCount(); ++ordinal) {
        EXPECT_TRUE(rows->IsNull(ordinal) && IsNull(rows->ValueOf(ordinal)) && !rows->DateOf(ordinal)) << ordinal;
        EXPECT_EQ(test::Joined(rows->TextOf(ordinal), rows->NumberOf(ordinal), rows->IntegerOf(ordinal),
                               rows->AmountOf(ordinal).Units()),
                  "|0|0|0|");
    }
    rows = connection->Open("SELECT Paziente FROM Visita WHERE IDVisita IN (1, 4) ORDER BY IDVisita DESC");
    EXPECT_EQ(rows->IntegerOf(0), 125);
    EXPECT_EQ(rows->AmountOf(0).Units(), 1250000);
    rows->MoveNext();
    const std::string wrong = "Il valore 'Rossi' della colonna Paziente non è ";
    EXPECT_EQ(ErrorText([&] { rows->IntegerOf(0); }), wrong + "un numero.");
    EXPECT_EQ(ErrorText([&] { rows->AmountOf(0); }), wrong + "un importo.");
    EXPECT_EQ(ErrorText([&] { rows->DateOf(0); }), wrong + "una data.");
}

TEST_P(ConnectionContract, ARowSetEndsAndCloses) {
    const RecordsetPtr none = connection->Open("SELECT IDVisita, Paziente FROM Visita WHERE IDVisita = 99");
    EXPECT_TRUE(none->IsOpen() && none->AtEnd());
    EXPECT_EQ(none->FieldName(1), "Paziente");
    EXPECT_THROW(none->TextOf(0), Error);
    EXPECT_THROW(none->MoveNext(), Error);
    EXPECT_FALSE(none->NextRecordset());

    const RecordsetPtr rows = connection->Open("SELECT IDVisita FROM Visita");
    for (const int outside : {1, -1}) EXPECT_THROW(rows->TextOf(outside), Error);
    EXPECT_EQ(rows->FindField("Assente"), -1);
    EXPECT_PRED2(Holds, ErrorText([&] { rows->Ordinal("Assente"); }), "Assente");
    for (int twice = 0; twice < 2; ++twice) rows->Close();
    EXPECT_TRUE(!rows->IsOpen() && rows->AtEnd());
    EXPECT_THROW(rows->TextOf(0), Error);
}

TEST_P(ConnectionContract, CountsTheRowsThatItChanges) {
    const RecordsetPtr read = connection->Open("SELECT IDVisita FROM Visita ORDER BY IDVisita");
    Transaction transaction(*connection);
    EXPECT_EQ(connection->Execute("UPDATE Visita SET Fatta = 1, Giorno = '2011-04-02' WHERE IDVisita < 3"), 2);
    transaction.Commit();
    EXPECT_EQ(RowText(*read), "1;2;3;4") << "rows are changed while others are read";
    EXPECT_EQ(Rows("SELECT Giorno FROM Visita WHERE Fatta = 1"), "02/04/2011;02/04/2011");
    EXPECT_EQ(connection->Execute("DELETE FROM Visita WHERE IDVisita > 90"), 0);
    EXPECT_EQ(connection->Execute("INSERT INTO Visita (IDVisita, Paziente) VALUES (9, 'l''ultima + una')"), 1);
    EXPECT_EQ(Rows("SELECT Paziente FROM Visita WHERE IDVisita = 9"), "l'ultima + una");
    EXPECT_THROW(connection->Execute("INSERT INTO Visita (IDVisita) VALUES (9)"), Error);
}

TEST_P(ConnectionContract, TransactionsHoldTogether) {
    const std::string all = "SELECT IDVisita, Paziente FROM Visita ORDER BY IDVisita";
    {
        const Transaction abandoned(*connection);
        const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita = 1");
        Write(*rows, {{"Paziente", "Verdi"}});
        rows->AddNew();
        Write(*rows, {{"IDVisita", 7}});
        connection->Execute("DELETE FROM Visita WHERE IDVisita = 2");
        EXPECT_EQ(Rows(all), "1|Verdi;3|NULL;4|125;7|NULL");
    }
    EXPECT_EQ(Rows(all), "1|Rossi;2|rossi;3|NULL;4|125");
    {
        Transaction transaction(*connection);
        EXPECT_THROW(connection->BeginTransaction(), Error);
        connection->Execute("DELETE FROM Visita WHERE IDVisita = 3");
        transaction.Commit();
    }
    EXPECT_EQ(Rows(all), "1|Rossi;2|rossi;4|125");
    EXPECT_THROW(connection->CommitTransaction(), Error);
    EXPECT_EQ(RowText(*fixture->Connect(), all), "1|Rossi;2|rossi;4|125");
}

TEST_P(ConnectionContract, WritesTheRowsThatItChanges) {
    const UpdatableRecordsetPtr rows =
        connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita < 3 ORDER BY IDVisita DESC");
    EXPECT_EQ(rows->FieldCount(), 9);
    EXPECT_EQ(rows->TextOf(2), "31/03/2011 08:30:00");
    EXPECT_THROW(rows->TextOf(9), Error);
    const bool amounts = !GetParam().differs.amountsAreText;
    if (amounts) rows->SetValue("Importo", "-1.234,5678");
    rows->SetValue("PAZIENTE", "Nicolò 'D''Alò'");
    const std::string all = "SELECT * FROM Visita WHERE IDVisita = 2";
    EXPECT_EQ(Rows(all), "2|rossi|31/03/2011 08:30:00|100|2|False|2|12|2");
    Write(*rows, {{"Giorno", *Date::FromCivil({2011, 4, 5, 18, 30, 0})}, {"Peso", 0.5}, {"Fatta", 1}, {"Piano", {}}});
    const std::string changed = std::string("2|Nicolò 'D''Alò'|05/04/2011 18:30:00|") +
                                (amounts ? "-1234,5678" : "100") + "|0,5|True|NULL|12|2";
    EXPECT_EQ(Rows(all), changed);
    EXPECT_EQ(rows->TextOf(1), "Nicolò 'D''Alò'");

    rows->SetValue("Paziente", "mai");
    rows->MoveNext();
    rows->Update();
    EXPECT_EQ(rows->IntegerOf(0), 1);
    Write(*rows, {{"Giorno", *Date::FromYmd(2012, 2, 29)}});
    rows->SetValue("Paziente", "mai");
    rows->CancelUpdate();
    rows->Update();
    rows->MoveNext();
    EXPECT_TRUE(rows->AtEnd());
    EXPECT_THROW(rows->SetValue(1, "mai"), Error);
    EXPECT_EQ(Rows("SELECT Paziente, Giorno FROM Visita WHERE IDVisita = 1"), "Rossi|29/02/2012");
    EXPECT_EQ(Rows(all), changed);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM Visita WHERE Importo < -1234"), amounts ? "1" : "0");
}

TEST_P(ConnectionContract, WritesTheRowsThatItAdds) {
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita > 90");
    EXPECT_TRUE(rows->AtEnd());
    EXPECT_THROW(rows->SetValue(1, "mai"), Error);
    rows->AddNew();
    rows->SetValue("IDVisita", "98");
    rows->AddNew();  // the one before was not written
    Write(*rows, {{"IDVisita", 99}, {"Paziente", "Lodè"}, {"Fatta", false}});
    Write(*rows, {{"IDVisita", 5000000}});
    Write(*rows, {{"Paziente", "Lode'"}});
    rows->AddNew();
    rows->Close();
    EXPECT_FALSE(rows->IsOpen());
    EXPECT_THROW(rows->AddNew(), Error);
    EXPECT_EQ(Rows("SELECT IDVisita, Paziente, Fatta, Peso FROM Visita WHERE IDVisita > 4"),
              "5000000|Lode'|False|NULL");
}

TEST_P(ConnectionContract, ARowThatCannotBeWrittenStaysInHand) {
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita = 3;");
    EXPECT_THROW(rows->SetValue("Piano", "primo"), TypeMismatchError);
    EXPECT_THROW(rows->SetValue("Piano", 70000), OverflowError);
    EXPECT_THROW(rows->SetValue("Giorno", "31/02/2011"), TypeMismatchError);
    EXPECT_PRED2(Holds, ErrorText([&] { rows->SetValue("Assente", {}); }), "Assente");
    EXPECT_THROW(Write(*rows, {{"Paziente", "Verdi"}, {"IDVisita", 1}}), Error);
    const std::string all = "SELECT IDVisita, Paziente FROM Visita ORDER BY IDVisita";
    EXPECT_EQ(Rows(all), "1|Rossi;2|rossi;3|NULL;4|125");
    Write(*rows, {{"IDVisita", 5}});
    EXPECT_EQ(Rows(all), "1|Rossi;2|rossi;4|125;5|Verdi");

    const UpdatableRecordsetPtr gone = connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita = 2");
    EXPECT_EQ(fixture->Connect()->Execute("DELETE FROM Visita WHERE IDVisita = 2"), 1);
    EXPECT_PRED2(Holds, ErrorText([&] { Write(*gone, {{"Paziente", "Verdi"}}); }), "Visita");
    EXPECT_EQ(Rows(all), "1|Rossi;4|125;5|Verdi");
}

TEST_P(ConnectionContract, OnlyWholeRowsOfOneTableAreChanged) {
    for (const char* sql :
         {"SELECT IDVisita FROM Visita", "SELECT *, 1 FROM Visita", "SELECT * FROM Visita, Visita V",
          "SELECT * FROM Visita V INNER JOIN Visita W ON V.IDComune = W.IDVisita", "SELECT * FROM Assente",
          "SELECT * FROM Studio9999..Visita", "SELECT * FROM Visita WHERE", "SELECT * FROM", "DELETE FROM Visita",
          "SELECT * FROM ..Visita", "SELECT * FROM a.b.c.Visita", ""}) {
        EXPECT_THROW(connection->OpenForUpdate(sql), Error) << sql;
    }
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM Visita"), "4");
    EXPECT_PRED2(Holds, Rows("SELECT * FROM Assente"), "Assente");
    EXPECT_PRED2(Holds, Rows("SELECT Mancante FROM Visita"), "Mancante");
    EXPECT_PRED2(Holds, Rows("UPDATE Visita SET Mancante = 1"), "Mancante");
}

TEST_P(DialectContract, ReadsAndWritesAsTheServerDoes) {
    fixture->Run("Aldra", "CREATE TABLE Comune (IDComune INT NOT NULL PRIMARY KEY, Comune VARCHAR(50))");
    fixture->Run("Aldra", "INSERT INTO Comune VALUES (1, 'Cantù'), (2, 'CANTÙ MARINA'), (3, 'Asti')");
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT IDComune FROM Aldra..Comune WHERE Comune = 'CANTÙ'", "1"},
        {"SELECT IDComune FROM Aldra..Comune WHERE Comune LIKE 'cantù%' ORDER BY Comune", "1;2"},
        {"SELECT IDVisita FROM Visita WHERE Giorno <= '3/31/2011' ORDER BY Giorno, IDVisita", "4;1"},
        {"SELECT V.Paziente + ' da ' + C.Comune AS Chi FROM Visita V INNER JOIN Aldra..Comune C ON V.IDComune = "
         "C.IDComune ORDER BY V.IDVisita",
         "Rossi da Cantù;rossi da CANTÙ MARINA"},
        {"SELECT Studio0012..Visita.IDVisita FROM Studio0012..Visita WHERE Paziente + 'x' IS NULL", "3"},
        {"SELECT [Paziente] FROM [Visita] WHERE IDVisita = 4;", "125"},
    };
    for (const auto& [sql, rows] : cases) EXPECT_EQ(Rows(sql), rows) << sql;

    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Aldra..Comune WHERE Comune = 'asti'");
    Write(*rows, {{"Comune", "Asti Nuova"}});
    rows->AddNew();
    Write(*rows, {{"IDComune", 9}, {"Comune", "Lodè"}});
    EXPECT_EQ(Rows("SELECT IDComune, Comune FROM Aldra..Comune WHERE IDComune > 2 ORDER BY IDComune"),
              "3|Asti Nuova;9|Lodè");
    EXPECT_PRED2(Holds, Rows("SELECT * FROM Studio9999..Visita"), "Studio9999");
}

TEST_P(DialectContract, AProcedureGivesItsRowSetsOneAfterTheOther) {
    Run({"CREATE TABLE StoredProcedure (Name VARCHAR(50), Ordinal INT, Body TEXT)",
         "INSERT INTO StoredProcedure VALUES ('SP_Due', 1, 'SELECT IDVisita FROM Visita WHERE IDVisita < ?1'), "
         "('SP_Due', 2, 'SELECT Paziente, IDVisita FROM Visita WHERE IDVisita > ?1 ORDER BY IDVisita')"});
    for (const bool interrupted : {false, true}) {
        const RecordsetPtr rows = connection->Open("SP_Due 2");
        ASSERT_TRUE(!interrupted || Rows("SELECT COUNT(*) FROM Visita") == "4");
        EXPECT_EQ(RowText(*rows), "1");
        EXPECT_TRUE(rows->NextRecordset());
        EXPECT_EQ(rows->FieldCount(), 2);
        EXPECT_EQ(RowText(*rows), "NULL|3;125|4");
        EXPECT_TRUE(!rows->NextRecordset() && rows->AtEnd());
        rows->Close();
        EXPECT_FALSE(rows->IsOpen());
    }
    EXPECT_PRED2(Holds, Rows("SP_NonEsiste 12"), "SP_NonEsiste");
}

constexpr const char* kNote =
    "CREATE TABLE Nota (IDNota INT NOT NULL PRIMARY KEY, Testo TEXT, Autore VARCHAR(20), Codice INT, Seguito TEXT)";
constexpr const char* kNotes =
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1300) INSERT INTO Nota "
    "(IDNota, Autore, Codice) SELECT i, 'autore ' || i, i * 7 FROM n";

TEST_P(OdbcContract, TextsOfAnyLengthComeWhole) {
    Run({kNote, kNotes});
    std::string longText;
    while (longText.size() < 100000) longText += "perché € ";
    const std::string texts[] = {longText, std::string(4095, 'x'), ""};  // 4095: a piece that the driver hands out
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Nota WHERE IDNota <= 4");
    for (const std::string& text : texts) {
        Write(*rows, {{"Testo", text}, {"Seguito", text + "!"}});
        rows->MoveNext();
    }
    const RecordsetPtr read = connection->Open("SELECT * FROM Nota WHERE IDNota <= 4 ORDER BY IDNota");
    for (const std::string& text : texts) {
        EXPECT_FALSE(read->IsNull(1));
        EXPECT_EQ(read->TextOf(4), text + "!");
        EXPECT_EQ(read->TextOf(1), text);
        EXPECT_EQ(read->IntegerOf(3), read->IntegerOf(0) * 7);
        read->MoveNext();
    }
    EXPECT_EQ(RowText(*read), "4|NULL|autore 4|28|NULL");
}

TEST_P(OdbcContract, AStatementInTheMiddleLeavesTheRowsAsTheyAre) {
    Run({kNote, kNotes});
    const RecordsetPtr rows = connection->Open("SELECT IDNota, Autore, Codice FROM Nota ORDER BY IDNota");
    for (std::int64_t id = 1; id <= 1300; ++id, rows->MoveNext()) {
        ASSERT_FALSE(rows->AtEnd());
        const std::string_view author = rows->TextOf(1);
        if (id == 700 || id == 701 || id == 1300) {
            const std::string key = std::to_string(id);
            EXPECT_EQ(Rows("SELECT Codice FROM Nota WHERE IDNota = " + key), std::to_string(id * 7));
            EXPECT_EQ(connection->Execute("UPDATE Nota SET Autore = 'altro' WHERE IDNota >= " + key), 1301 - id);
        }
        ASSERT_EQ(author, "autore " + std::to_string(id));
        ASSERT_EQ(rows->IntegerOf(2), id * 7);
    }
    EXPECT_TRUE(rows->AtEnd() && !rows->NextRecordset());
}

TEST_P(OdbcContract, ReadsFurtherTypes) {
    const std::string name = GetParam().differs.latinStatements ? "Ragò" : "Ragò 漢";
    Run(
        {"CREATE TABLE Vari (ID INT, Giorno DATE, Ora DATETIME, Reale REAL, Nome NVARCHAR(20), "
         "Prezzo DECIMAL(10, 2), Piccolo TINYINT)",
         "INSERT INTO Vari VALUES (1, '2012-02-29', '1899-12-30 23:59:59', -0.5, '" + name +
             "', 1234567.89, 255), (2, NULL, NULL, NULL, '', NULL, NULL)"});
    const RecordsetPtr rows = connection->Open("SELECT * FROM Vari ORDER BY ID");
    EXPECT_EQ(rows->CivilOf(2), (Date::Civil{1899, 12, 30, 23, 59, 59}));
    EXPECT_EQ(rows->AmountOf(5).Units(), 12345678900);
    const std::string price(rows->TextOf(5));  // a text where amounts are
    EXPECT_EQ(RowText(*rows),
              "1|29/02/2012|30/12/1899 23:59:59|-0,5|" + name + '|' + price + "|255;2|NULL|NULL|NULL||NULL|NULL");
}

TEST_P(OdbcContract, RowsOfATableAreKnownByItsKey) {
    Run({"CREATE TABLE Senza (A INT, B VARCHAR(5))",
         "CREATE TABLE Doppia (A INT NOT NULL, [un nome] VARCHAR(5) NOT NULL, C DATETIME, PRIMARY KEY (A, [un nome]))",
         "INSERT INTO Doppia VALUES (1, 'x', NULL), (1, 'y', NULL), (2, 'x', NULL)"});
    EXPECT_PRED2(Holds, ErrorText([&] { connection->OpenForUpdate("SELECT * FROM Senza"); }), "chiave primaria");
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Doppia ORDER BY A, [un nome]");
    rows->MoveNext();
    Write(*rows, {{"un nome", "z"}, {"C", *Date::FromCivil({2011, 3, 31, 23, 59, 58})}});
    Write(*rows, {{"C", {}}, {"A", 9}});
    rows->AddNew();
    EXPECT_THROW(rows->Update(), Error) << "the key does not take a null";
    EXPECT_EQ(Rows("SELECT * FROM Doppia ORDER BY A, [un nome]"), "1|x|NULL;2|x|NULL;9|z|NULL");
}

}  // namespace vlm::data::testing
