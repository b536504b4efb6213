#include "support/ConnectionContract.h"

#include <limits>

#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ConnectionContract);

void ConnectionContract::SetUp() {
    fixture = GetParam().make();
    fixture->Run("Studio0012",
                 "CREATE TABLE Visita (IDVisita INT NOT NULL PRIMARY KEY, Paziente VARCHAR(50), Giorno DATETIME, "
                 "Importo MONEY, Peso FLOAT, Fatta BIT, Piano SMALLINT, Protocollo BIGINT, IDComune INT)");
    fixture->Run("Studio0012",
                 "INSERT INTO Visita VALUES (1, 'Rossi', '2011-03-31', 12.3456, 70.5, 1, -3, 5000000000, 1), "
                 "(2, 'rossi', '2011-03-31 08:30:00', 100, 2, 0, 2, 12, 2), "
                 "(3, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL), "
                 "(4, '125', '2011-03-01', NULL, NULL, NULL, NULL, NULL, NULL)");
    connection = fixture->Connect();
}

TEST_P(ConnectionContract, ReadsCellsByTheirDeclaredTypes) {
    const RecordsetPtr rows = connection->Open("SELECT * FROM Visita WHERE IDVisita <= 2 ORDER BY IDVisita");
    const DriverDifferences& differs = GetParam().differs;
    EXPECT_NE(connection->InitialCatalog().find("Studio0012"), std::string::npos);
    EXPECT_EQ(connection->InitialCatalog() == "Studio0012", !differs.catalogIsFile);
    const FieldType amounts = differs.amountsAreText ? FieldType::Text : FieldType::Currency;
    const FieldType types[] = {FieldType::Integer, FieldType::Text,    FieldType::Date,     amounts,
                               FieldType::Double,  FieldType::Boolean, FieldType::SmallInt, FieldType::BigInt,
                               FieldType::Integer};
    ASSERT_EQ(rows->FieldCount(), 9);
    for (int ordinal = 0; ordinal < 9; ++ordinal) EXPECT_EQ(rows->TypeOf(ordinal), types[ordinal]) << ordinal;

    EXPECT_EQ(rows->IntegerOf(rows->Ordinal("idvisita")), 1);
    EXPECT_EQ(rows->NumberOf(1), 0);
    EXPECT_EQ(*rows->DateOf(2), *Date::FromYmd(2011, 3, 31));
    EXPECT_EQ(rows->AmountOf(3).Units(), 123456);
    EXPECT_EQ(rows->IntegerOf(4), 70);  // half to even
    EXPECT_EQ(rows->NumberOf(5), -1);
    EXPECT_EQ(rows->Int16Of(6), -3);
    EXPECT_EQ(rows->IntegerOf(7), 5000000000);
    EXPECT_THROW(rows->Int32Of(7), OverflowError);
    EXPECT_EQ(AmountOf(rows->ValueOf(3), "Importo").Units(), 123456);
    EXPECT_EQ(std::get<bool>(rows->ValueOf(5)), true);
    const std::string amount = differs.amountsAreText ? std::string(rows->TextOf(3)) : "12,3456";
    EXPECT_EQ(RowText(*rows), "1|Rossi|31/03/2011|" + amount +
                                  "|70,5|True|-3|5000000000|1;"
                                  "2|rossi|31/03/2011 08:30:00|100|2|False|2|12|2");
}

TEST_P(ConnectionContract, ReadsNullLenientlyAndStrictly) {
    const RecordsetPtr rows = connection->Open("SELECT * FROM Visita WHERE IDVisita = 3");
    for (int ordinal = 1; ordinal < rows->FieldCount(); ++ordinal) {
        EXPECT_TRUE(rows->IsNull(ordinal));
        EXPECT_EQ(rows->TextOf(ordinal), "");
        EXPECT_EQ(rows->NumberOf(ordinal), 0);
        EXPECT_EQ(rows->IntegerOf(ordinal), 0);
        EXPECT_EQ(rows->AmountOf(ordinal), Currency());
        EXPECT_FALSE(rows->DateOf(ordinal));
        EXPECT_TRUE(IsNull(rows->ValueOf(ordinal)));
    }
}

TEST_P(ConnectionContract, StrictReadsNameTheColumn) {
    const RecordsetPtr rows =
        connection->Open("SELECT Paziente FROM Visita WHERE IDVisita IN (1, 4) ORDER BY IDVisita DESC");
    EXPECT_EQ(rows->IntegerOf(0), 125);
    EXPECT_EQ(rows->AmountOf(0).Units(), 1250000);
    rows->MoveNext();
    EXPECT_EQ(ErrorText([&] { rows->IntegerOf(0); }), "Il valore 'Rossi' della colonna Paziente non è un numero.");
    EXPECT_EQ(ErrorText([&] { rows->AmountOf(0); }), "Il valore 'Rossi' della colonna Paziente non è un importo.");
    EXPECT_EQ(ErrorText([&] { rows->DateOf(0); }), "Il valore 'Rossi' della colonna Paziente non è una data.");
}

TEST_P(ConnectionContract, ARowSetEndsAndCloses) {
    const RecordsetPtr none = connection->Open("SELECT IDVisita, Paziente FROM Visita WHERE IDVisita = 99");
    EXPECT_TRUE(none->IsOpen() && none->AtEnd());
    EXPECT_EQ(none->FieldName(1), "Paziente");
    EXPECT_THROW(none->TextOf(0), Error);
    EXPECT_THROW(none->MoveNext(), Error);
    EXPECT_FALSE(none->NextRecordset());

    const RecordsetPtr rows = connection->Open("SELECT IDVisita FROM Visita");
    EXPECT_THROW(rows->TextOf(1), Error);
    EXPECT_THROW(rows->TextOf(-1), Error);
    EXPECT_EQ(rows->FindField("Assente"), -1);
    EXPECT_NE(ErrorText([&] { rows->Ordinal("Assente"); }).find("Assente"), std::string::npos);
    rows->Close();
    rows->Close();
    EXPECT_TRUE(!rows->IsOpen() && rows->AtEnd());
    EXPECT_THROW(rows->TextOf(0), Error);
}

TEST_P(ConnectionContract, CountsTheRowsThatItChanges) {
    EXPECT_EQ(connection->Execute("UPDATE Visita SET Fatta = 1, Giorno = '2011-04-02' WHERE IDVisita < 3"), 2);
    EXPECT_EQ(RowText(*connection, "SELECT Giorno FROM Visita WHERE Fatta = 1"), "02/04/2011;02/04/2011");
    EXPECT_EQ(connection->Execute("DELETE FROM Visita WHERE IDVisita > 90"), 0);
    EXPECT_EQ(connection->Execute("INSERT INTO Visita (IDVisita, Paziente) VALUES (9, 'l''ultima + una')"), 1);
    EXPECT_EQ(RowText(*connection, "SELECT Paziente FROM Visita WHERE IDVisita = 9"), "l'ultima + una");
    EXPECT_NE(ErrorText([&] { connection->Execute("INSERT INTO Visita (IDVisita) VALUES (9)"); }), "");
}

TEST_P(ConnectionContract, TransactionsHoldTogether) {
    const auto count = [&] { return RowText(*connection, "SELECT COUNT(*) FROM Visita"); };
    {
        const Transaction abandoned(*connection);
        connection->Execute("DELETE FROM Visita");
        EXPECT_EQ(count(), "0");
    }
    EXPECT_EQ(count(), "4");
    {
        Transaction transaction(*connection);
        EXPECT_THROW(connection->BeginTransaction(), Error);
        connection->Execute("DELETE FROM Visita WHERE IDVisita = 3");
        transaction.Commit();
    }
    EXPECT_EQ(count(), "3");
    EXPECT_THROW(connection->CommitTransaction(), Error);
    const ConnectionPtr other = fixture->Connect();
    EXPECT_EQ(RowText(*other, "SELECT COUNT(*) FROM Visita"), "3");
}

TEST_P(ConnectionContract, RowsMayBeChangedWhileOthersAreRead) {
    const RecordsetPtr rows = connection->Open("SELECT IDVisita FROM Visita ORDER BY IDVisita");
    Transaction transaction(*connection);
    connection->Execute("UPDATE Visita SET Piano = 7 WHERE IDVisita = 1");
    transaction.Commit();
    EXPECT_EQ(RowText(*rows), "1;2;3;4");
}

TEST_P(ConnectionContract, WritesTheRowsThatItChanges) {
    const UpdatableRecordsetPtr rows =
        connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita < 3 ORDER BY IDVisita DESC");
    EXPECT_EQ(rows->FieldCount(), 9);
    EXPECT_EQ(rows->TextOf(2), "31/03/2011 08:30:00");
    EXPECT_THROW(rows->TextOf(9), Error);
    rows->SetValue("PAZIENTE", std::string("Nicolò 'D''Alò'"));
    rows->SetValue("Giorno", *Date::FromCivil({2011, 4, 5, 18, 30, 0}));
    const bool amounts = !GetParam().differs.amountsAreText;
    if (amounts) rows->SetValue("Importo", std::string("-1.234,5678"));
    rows->SetValue("Peso", 0.5);
    rows->SetValue("Fatta", std::int64_t{1});
    rows->SetValue("Piano", Value());
    const char* const all = "SELECT * FROM Visita WHERE IDVisita = 2";
    EXPECT_EQ(RowText(*connection, all), "2|rossi|31/03/2011 08:30:00|100|2|False|2|12|2");
    rows->Update();
    const std::string changed = std::string("2|Nicolò 'D''Alò'|05/04/2011 18:30:00|") +
                                (amounts ? "-1234,5678" : "100") + "|0,5|True|NULL|12|2";
    EXPECT_EQ(RowText(*connection, all), changed);
    EXPECT_EQ(rows->TextOf(1), "Nicolò 'D''Alò'");

    rows->SetValue("Paziente", std::string("mai"));
    rows->MoveNext();
    rows->Update();
    EXPECT_EQ(rows->IntegerOf(0), 1);
    rows->SetValue("Giorno", *Date::FromYmd(2012, 2, 29));
    rows->Update();
    rows->SetValue("Paziente", std::string("mai"));
    rows->CancelUpdate();
    rows->Update();
    rows->MoveNext();
    EXPECT_TRUE(rows->AtEnd());
    EXPECT_THROW(rows->SetValue(1, std::string("mai")), Error);
    EXPECT_EQ(RowText(*connection, "SELECT Paziente, Giorno FROM Visita WHERE IDVisita = 1"), "Rossi|29/02/2012");
    EXPECT_EQ(RowText(*connection, all), changed);
    EXPECT_EQ(RowText(*connection, "SELECT COUNT(*) FROM Visita WHERE Importo < -1234"), amounts ? "1" : "0");
}

TEST_P(ConnectionContract, WritesTheRowsThatItAdds) {
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita > 90");
    EXPECT_TRUE(rows->AtEnd());
    EXPECT_THROW(rows->SetValue(1, std::string("mai")), Error);
    rows->AddNew();
    rows->SetValue("IDVisita", std::string("98"));
    rows->AddNew();  // the one before was not written
    rows->SetValue("IDVisita", std::int64_t{99});
    rows->SetValue("Paziente", std::string("Lodè"));
    rows->SetValue("Fatta", false);
    rows->Update();
    rows->SetValue("IDVisita", std::int64_t{5000000});
    rows->Update();
    rows->SetValue("Paziente", std::string("Lode'"));
    rows->Update();
    rows->AddNew();
    rows->Close();
    EXPECT_FALSE(rows->IsOpen());
    EXPECT_THROW(rows->AddNew(), Error);
    EXPECT_EQ(RowText(*connection, "SELECT IDVisita, Paziente, Fatta, Peso FROM Visita WHERE IDVisita > 4"),
              "5000000|Lode'|False|NULL");
}

TEST_P(ConnectionContract, ARowThatCannotBeWrittenStaysInHand) {
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita = 3;");
    EXPECT_THROW(rows->SetValue("Piano", std::string("primo")), TypeMismatchError);
    EXPECT_THROW(rows->SetValue("Piano", std::int64_t{70000}), OverflowError);
    EXPECT_THROW(rows->SetValue("Giorno", std::string("31/02/2011")), TypeMismatchError);
    EXPECT_NE(ErrorText([&] { rows->SetValue("Assente", Value()); }).find("Assente"), std::string::npos);
    rows->SetValue("Paziente", std::string("Verdi"));
    rows->SetValue("IDVisita", std::int64_t{1});
    EXPECT_THROW(rows->Update(), Error);
    EXPECT_EQ(RowText(*connection, "SELECT Paziente FROM Visita ORDER BY IDVisita"), "Rossi;rossi;NULL;125");
    rows->SetValue("IDVisita", std::int64_t{5});
    rows->Update();
    EXPECT_EQ(RowText(*connection, "SELECT Paziente FROM Visita ORDER BY IDVisita"), "Rossi;rossi;125;Verdi");
}

TEST_P(ConnectionContract, ARowThatIsGoneIsNotWritten) {
    const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita = 2");
    EXPECT_EQ(fixture->Connect()->Execute("DELETE FROM Visita WHERE IDVisita = 2"), 1);
    rows->SetValue("Paziente", std::string("Verdi"));
    EXPECT_NE(ErrorText([&] { rows->Update(); }).find("Visita"), std::string::npos);
    EXPECT_EQ(RowText(*connection, "SELECT IDVisita FROM Visita ORDER BY IDVisita"), "1;3;4");
}

TEST_P(ConnectionContract, WrittenRowsBelongToTheTransaction) {
    {
        const Transaction abandoned(*connection);
        const UpdatableRecordsetPtr rows = connection->OpenForUpdate("SELECT * FROM Visita WHERE IDVisita = 1");
        rows->SetValue("Paziente", std::string("Verdi"));
        rows->Update();
        rows->AddNew();
        rows->SetValue("IDVisita", std::int64_t{7});
        rows->Update();
        EXPECT_EQ(RowText(*connection, "SELECT COUNT(*), MAX(IDVisita) FROM Visita"), "5|7");
    }
    EXPECT_EQ(RowText(*connection, "SELECT Paziente FROM Visita ORDER BY IDVisita"), "Rossi;rossi;NULL;125");
}

TEST_P(ConnectionContract, OnlyWholeRowsOfOneTableAreChanged) {
    for (const char* sql :
         {"SELECT IDVisita FROM Visita", "SELECT *, 1 FROM Visita", "SELECT * FROM Visita, Visita V",
          "SELECT * FROM Visita V INNER JOIN Visita W ON V.IDComune = W.IDVisita", "SELECT * FROM Assente",
          "SELECT * FROM Studio9999..Visita", "SELECT * FROM Visita WHERE", "SELECT * FROM", "DELETE FROM Visita",
          "SELECT * FROM ..Visita", "SELECT * FROM a.b.c.Visita", ""}) {
        EXPECT_THROW(connection->OpenForUpdate(sql), Error) << sql;
    }
    EXPECT_EQ(RowText(*connection, "SELECT COUNT(*) FROM Visita"), "4");
}

TEST_P(ConnectionContract, ErrorsNameWhatIsWrong) {
    for (const auto& [sql, named] :
         {std::pair("SELECT * FROM Assente", "Assente"), std::pair("SELECT Mancante FROM Visita", "Mancante"),
          std::pair("UPDATE Visita SET Mancante = 1", "Mancante")}) {
        const std::string error = ErrorText([&, text = sql] { connection->Open(text); });
        EXPECT_NE(error.find(named), std::string::npos) << sql << ": " << error;
    }
}

}  // namespace vlm::data::testing
