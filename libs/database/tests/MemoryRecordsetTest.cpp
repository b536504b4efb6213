#include <gtest/gtest.h>

#include "database/MemoryRecordset.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

class MemoryRecordsetTest : public ::testing::Test {
protected:
    void SetUp() override {
        rows.AppendColumn("Selezionato", FieldType::Boolean, false);
        rows.AppendColumn("Cognome", FieldType::Text);
        rows.AppendColumn("DataNascita", FieldType::Date);
        rows.AppendColumn("IDPaziente", FieldType::BigInt);
        rows.AppendColumn("Importo", FieldType::Currency);
        rows.Open();
    }

    void Add(bool selected, const Value& surname, const Value& born, const Value& key, const Value& amount = {}) {
        rows.AddNew();
        rows.SetValue(2, born);
        Write(rows, {{"selezionato", selected}, {"COGNOME", surname}, {"IDPaziente", key}, {"Importo", amount}});
    }

    std::string KeysOf(const std::string& filter) {
        rows.SetFilter(filter);
        std::string keys;
        for (; !rows.AtEnd(); rows.MoveNext()) keys += std::string(rows.TextOf(3)) + " ";
        return keys;
    }

    MemoryRecordset rows;
};

TEST_F(MemoryRecordsetTest, ConvertsValuesToTheColumnsTypes) {
    EXPECT_TRUE(rows.AtEnd());
    Add(true, 12, "31/03/2011", "5000000000", 1.25);
    EXPECT_EQ(RowText(rows), "True|12|31/03/2011|5000000000|1,25");
    EXPECT_THROW(rows.MoveNext(), Error);
    EXPECT_THROW(rows.SetValue(3, 9), Error);
    rows.MoveFirst();
    EXPECT_EQ(rows.NumberOf(0), -1);
    EXPECT_EQ(rows.IntegerOf(1), 12);
    rows.SetValue("Cognome", "D'Alò");
    EXPECT_EQ(ErrorText([&] { rows.IntegerOf(1); }), "Il valore 'D'Alò' della colonna Cognome non è un numero.");
    EXPECT_THROW(rows.SetValue("IDPaziente", "12abc"), TypeMismatchError);
    EXPECT_THROW(rows.SetValue("DataNascita", "31/02/2011"), TypeMismatchError);
    EXPECT_THROW(rows.SetValue("Importo", 1e300), OverflowError);
    rows.Update();
    EXPECT_THROW(rows.AppendColumn("Altra", FieldType::Text), Error);
    rows.AddNew();
    const char* const empty = "La colonna Selezionato non può essere vuota.";
    EXPECT_EQ(ErrorText([&] { rows.SetValue("Selezionato", {}); }), empty);
    EXPECT_EQ(ErrorText([&] { Write(rows, {{"Cognome", "Rossi"}}); }), empty);
    Write(rows, {{"Selezionato", false}});
    rows.AddNew();
    rows.CancelUpdate();
    rows.MoveFirst();
    rows.MovePrevious();
    EXPECT_TRUE(rows.AtStart());
    EXPECT_THROW(rows.TextOf(3), Error);
    EXPECT_THROW(rows.MovePrevious(), Error);
    rows.MoveNext();
    EXPECT_EQ(RowText(rows), "True|D'Alò|31/03/2011|5000000000|1,25;False|Rossi|NULL|NULL|NULL");
    rows.Close();
    EXPECT_THROW(rows.MoveFirst(), Error);
    rows.Open();
    EXPECT_EQ(rows.RecordCount(), 0);
}

TEST_F(MemoryRecordsetTest, FiltersByEveryKindOfLiteral) {
    Add(true, "Rossi", *Date::FromYmd(2011, 3, 31), 1, 10.5);
    Add(false, "D'ALÒ", *Date::FromYmd(2011, 3, 1), 2, 3.0);
    Add(false, "rossi ", {}, 3);
    Add(true, "Rossi AND Cognome = 'x'", {}, {});
    const std::pair<const char*, const char*> cases[] = {
        {"", "1 2 3  "},
        {"Cognome = 'ROSSI'", "1 3 "},
        {"cognome='d''alò'", "2 "},
        {"[Cognome] = 'rossi and cognome = ''X'''", " "},
        {"IDPaziente = 2", "2 "},
        {"IDPaziente = '2'", "2 "},
        {"IDPaziente = 2.5", ""},
        {"IDPaziente = 0", ""},
        {"DataNascita = #3/31/2011#", "1 "},
        {"DataNascita = '2011-03-01'", "2 "},
        {"Importo = 10.5", "1 "},
        {"Selezionato = True", "1  "},
        {"IDPaziente>1", "2 3 "},
        {"IDPaziente <> 2 AND Importo >= 10.5", "1 "},
        {"DataNascita <= #3/31/2011# AND DataNascita < #3/31/2011#", "2 "},
        {"Cognome LIKE 'ross*'", "1 3  "},
        {"Cognome like '%Cogn%' AND Selezionato = 1", " "},
        {"Selezionato = 0 AND Cognome = 'Rossi'", "3 "},
        {"Cognome = 'Rossi' and IDPaziente = 1 AND Selezionato = 1", "1 "},
    };
    for (const auto& [filter, keys] : cases) EXPECT_EQ(KeysOf(filter), keys) << filter;
    for (const char* wrong :
         {"Cognome", "Cognome =", "Cognome = 'x", "Cognome ! 'x'", "IDPaziente LIKE '1*'", "Assente = 1",
          "IDPaziente = 'x'", "Cognome = 'x' OR Cognome = 'y'", "DataNascita = #31/3/2011#", "IDPaziente = x"}) {
        EXPECT_THROW(rows.SetFilter(wrong), Error) << wrong;
    }
}

TEST_F(MemoryRecordsetTest, TheFilterFollowsChanges) {
    Add(false, "Rossi", {}, 1);
    rows.SetFilter("Cognome = 'Rossi'");
    Add(false, "ROSSI", {}, 2);
    EXPECT_EQ(rows.TextOf(3), "2");
    Add(false, "Verdi", {}, 3);
    EXPECT_TRUE(rows.AtEnd());
    EXPECT_EQ(rows.RecordCount(), 2);
    EXPECT_EQ(KeysOf("Cognome = 'Verdi'"), "3 ");
    rows.MoveFirst();
    Write(rows, {{"Cognome", "Bianchi"}});
    EXPECT_EQ(KeysOf("Cognome = 'Verdi'"), "");
    EXPECT_EQ(KeysOf("Cognome = 'Bianchi'"), "3 ");
    EXPECT_EQ(KeysOf(""), "1 2 3 ");
}

TEST_F(MemoryRecordsetTest, ViewsOfTheSameRowsSortFilterAndDeleteEachForItself) {
    for (const auto& [surname, key] : {std::pair<Value, int>("Rossi", 1), {"bianchi", 2}, {{}, 3}, {"ROSSI", 4}}) {
        Add(false, surname, {}, key);
    }
    rows.SetSort("[Cognome] desc, IDPaziente DESC");
    EXPECT_EQ(KeysOf(""), "4 1 2 3 ");
    EXPECT_EQ(KeysOf("IDPaziente > 1"), "4 2 3 ");
    EXPECT_THROW(rows.SetSort("Cognome su"), Error);
    rows.MoveToRow(1);
    const auto view = rows.Share();
    EXPECT_EQ(view->TextOf(3), "2");
    rows.Delete();
    EXPECT_EQ(rows.RecordCount(), 2);
    EXPECT_THROW(rows.TextOf(3), Error);
    rows.MoveNext();
    EXPECT_EQ(rows.TextOf(3), "3");
    rows.SetSort("");
    EXPECT_EQ(KeysOf("Cognome <> 'x'"), "1 4 ");
    view->MoveNext();  // over the row that is gone
    EXPECT_EQ(view->TextOf(3), "3");
    Write(*view, {{"Cognome", "Verdi"}});
    EXPECT_EQ(KeysOf("Cognome = 'Verdi'") + KeysOf(""), "3 1 3 4 ");
    rows.AddNew();
    EXPECT_THROW(view->AddNew(), Error);
    rows.Close();
    view->Delete();
    view->MovePrevious();
    EXPECT_EQ(RowText(*view), "False|Rossi|NULL|1|NULL;False|ROSSI|NULL|4|NULL");
}

TEST_F(MemoryRecordsetTest, WhatAnotherViewDeletesMovesNobodyOn) {
    for (int key = 1; key <= 5; ++key) Add(false, "Rossi", {}, key);
    rows.MoveFirst();
    rows.MoveNext();
    const auto view = rows.Share();
    rows.Delete();  // 2
    view->MoveFirst();
    view->Delete();  // 1
    rows.MoveNext();
    EXPECT_EQ(rows.TextOf(3), "3");
    view->MoveNext();
    view->MoveNext();
    view->Delete();  // 4
    rows.MoveNext();
    EXPECT_EQ(rows.TextOf(3), "5");
}

TEST_F(MemoryRecordsetTest, FindsTheFirstRowOfATextWithoutRegardToCase) {
    for (const char* surname : {"Rossi", "D'ALÒ", "rossi ", "", "d'alò"}) Add(false, std::string(surname), {}, {});
    Add(true, {}, {}, {});
    rows.SetFilter("Cognome = 'ROSSI'");
    const auto found = [&](const char* surname) {
        if (!rows.MoveTo(1, surname)) return std::string(rows.AtEnd() ? "none" : "lost");
        return std::string(rows.TextOf(1));
    };
    EXPECT_EQ(found("ROSSI"), "Rossi");
    EXPECT_EQ(rows.RecordCount(), 6);
    EXPECT_EQ(found("d'Alò  "), "D'ALÒ");
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(found("Verdi"), "none");
    rows.MoveTo(1, "Rossi");
    Write(rows, {{"Cognome", "Verdi"}});
    EXPECT_EQ(found("rossi"), "rossi ");
    EXPECT_EQ(found("VERDI"), "Verdi");
    EXPECT_THROW(rows.MoveTo(3, "1"), Error);
}

// Rows of one value stand in a circle, and cells in chunks: both must hold over their borders.
TEST_F(MemoryRecordsetTest, KeepsThousandsOfRowsAndTheirOrder) {
    constexpr int kRows = 9000;
    rows.SetFilter("IDPaziente = 7");  // an index that grows with the rows
    const auto name = [](int row) { return std::string(row % 1000 == 999 ? 300 : 1, 'x') + std::to_string(row); };
    for (int row = 0; row < kRows; ++row) {
        Add(row % 2 == 0, name(row), {}, row % 3 == 0 ? Value() : Value(std::int64_t{row % 7}));
    }
    rows.AddNew();
    rows.SetValue("Cognome", "x1");
    rows.CancelUpdate();
    rows.SetFilter("");
    EXPECT_EQ(rows.RecordCount(), kRows);
    for (int row = 0; row < kRows; ++row, rows.MoveNext()) {
        ASSERT_EQ(rows.TextOf(1), name(row));
        ASSERT_EQ(rows.IsNull(3), row % 3 == 0);
        ASSERT_EQ(rows.IntegerOf(3), row % 3 == 0 ? 0 : row % 7);
    }
    rows.SetFilter("IDPaziente = 5");
    int next = 5;
    for (; !rows.AtEnd(); rows.MoveNext(), next += 7) {
        if (next % 3 == 0) next += 7;
        ASSERT_EQ(rows.TextOf(1), name(next));
    }
    EXPECT_EQ(rows.RecordCount(), 857);
    EXPECT_TRUE(rows.MoveTo(1, "X8998"));
}

}  // namespace
}  // namespace vlm::data::testing
