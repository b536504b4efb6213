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
        rows.SetValue("selezionato", selected);
        rows.SetValue("COGNOME", surname);
        rows.SetValue(2, born);
        rows.SetValue(3, key);
        rows.SetValue(4, amount);
        rows.Update();
    }

    /// The keys of the rows that a filter shows.
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
    EXPECT_EQ(rows.RecordCount(), 0);
    Add(true, std::int64_t{12}, std::string("31/03/2011"), std::string("5000000000"), 1.25);
    EXPECT_EQ(RowText(rows), "True|12|31/03/2011|5000000000|1,25");
    rows.MoveFirst();
    EXPECT_EQ(rows.NumberOf(0), -1);
    EXPECT_EQ(rows.IntegerOf(1), 12);
    rows.SetValue("Cognome", std::string("D'Alò"));
    EXPECT_EQ(ErrorText([&] { rows.IntegerOf(1); }), "Il valore 'D'Alò' della colonna Cognome non è un numero.");
    EXPECT_THROW(rows.SetValue("IDPaziente", std::string("12abc")), TypeMismatchError);
    EXPECT_THROW(rows.SetValue("DataNascita", std::string("31/02/2011")), TypeMismatchError);
    EXPECT_THROW(rows.SetValue("Importo", 1e300), OverflowError);
    rows.Update();
    EXPECT_EQ(rows.TextOf(1), "D'Alò");
    EXPECT_THROW(rows.AppendColumn("Altra", FieldType::Text), Error);
}

TEST_F(MemoryRecordsetTest, RefusesNullWhereItIsNotTaken) {
    rows.AddNew();
    EXPECT_EQ(ErrorText([&] { rows.SetValue("Selezionato", {}); }), "La colonna Selezionato non può essere vuota.");
    rows.SetValue("Cognome", std::string("Rossi"));
    EXPECT_EQ(ErrorText([&] { rows.Update(); }), "La colonna Selezionato non può essere vuota.");
    rows.SetValue("Selezionato", false);
    rows.Update();
    rows.AddNew();
    rows.CancelUpdate();
    EXPECT_EQ(RowText(rows), "False|Rossi|NULL|NULL|NULL");
}

TEST_F(MemoryRecordsetTest, MovesOverTheRows) {
    for (std::int64_t key = 1; key <= 3; ++key) Add(false, {}, {}, key);
    rows.MoveFirst();
    rows.MovePrevious();
    EXPECT_TRUE(rows.AtStart());
    EXPECT_THROW(rows.TextOf(3), Error);
    EXPECT_THROW(rows.MovePrevious(), Error);
    rows.MoveNext();
    EXPECT_EQ(RowText(rows), "False|NULL|NULL|1|NULL;False|NULL|NULL|2|NULL;False|NULL|NULL|3|NULL");
    EXPECT_THROW(rows.MoveNext(), Error);
    EXPECT_THROW(rows.SetValue(3, std::int64_t{9}), Error);
    rows.Close();
    EXPECT_THROW(rows.MoveFirst(), Error);
    rows.Open();
    EXPECT_EQ(rows.RecordCount(), 0);
}

TEST_F(MemoryRecordsetTest, FiltersByEveryKindOfLiteral) {
    Add(true, std::string("Rossi"), *Date::FromYmd(2011, 3, 31), std::int64_t{1}, 10.5);
    Add(false, std::string("D'ALÒ"), *Date::FromYmd(2011, 3, 1), std::int64_t{2}, 3.0);
    Add(false, std::string("rossi "), {}, std::int64_t{3});
    Add(true, std::string("Rossi AND Cognome = 'x'"), {}, {});
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
        {"Selezionato = 0 AND Cognome = 'Rossi'", "3 "},
        {"Cognome = 'Rossi' and IDPaziente = 1 AND Selezionato = 1", "1 "},
    };
    for (const auto& [filter, keys] : cases) EXPECT_EQ(KeysOf(filter), keys) << filter;
    for (const char* wrong :
         {"Cognome", "Cognome =", "Cognome = 'x", "Cognome > 'x'", "Assente = 1", "IDPaziente = 'x'",
          "Cognome = 'x' OR Cognome = 'y'", "DataNascita = #31/3/2011#", "IDPaziente = x"}) {
        EXPECT_NE(ErrorText([&] { rows.SetFilter(wrong); }), "") << wrong;
    }
}

TEST_F(MemoryRecordsetTest, TheFilterFollowsChanges) {
    Add(false, std::string("Rossi"), {}, std::int64_t{1});
    EXPECT_EQ(KeysOf("Cognome = 'Rossi'"), "1 ");
    Add(false, std::string("ROSSI"), {}, std::int64_t{2});
    EXPECT_EQ(rows.TextOf(3), "2");
    Add(false, std::string("Verdi"), {}, std::int64_t{3});
    EXPECT_TRUE(rows.AtEnd());
    EXPECT_EQ(rows.RecordCount(), 2);
    EXPECT_EQ(KeysOf("Cognome = 'Verdi'"), "3 ");
    rows.MoveFirst();
    rows.SetValue("Cognome", std::string("Bianchi"));
    rows.Update();
    EXPECT_EQ(KeysOf("Cognome = 'Verdi'"), "");
    EXPECT_EQ(KeysOf("Cognome = 'Bianchi'"), "3 ");
    EXPECT_EQ(KeysOf(""), "1 2 3 ");
    for (std::int64_t key = 4; key < 500; ++key) Add(false, std::string(key % 2 == 0 ? "Neri" : "Verdi"), {}, key);
    rows.SetFilter("Cognome = 'neri'");
    EXPECT_EQ(rows.RecordCount(), 248);
    EXPECT_EQ(rows.IntegerOf(3), 4);
}

TEST_F(MemoryRecordsetTest, FindsTheFirstRowOfATextWithoutRegardToCase) {
    for (const char* surname : {"Rossi", "D'ALÒ", "rossi ", "", "d'alò"}) Add(false, std::string(surname), {}, {});
    Add(true, {}, {}, {});
    rows.SetFilter("Cognome = 'ROSSI'");
    EXPECT_EQ(rows.RecordCount(), 2);
    const auto found = [&](const char* surname) {
        if (!rows.MoveTo(1, surname)) return rows.AtEnd() ? std::string("none") : std::string("lost");
        return std::string(rows.TextOf(1));
    };
    EXPECT_EQ(found("ROSSI"), "Rossi");
    EXPECT_EQ(rows.RecordCount(), 6);
    EXPECT_EQ(found("d'Alò  "), "D'ALÒ");
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(found("Verdi"), "none");
    rows.MoveTo(1, "Rossi");
    rows.SetValue(1, std::string("Verdi"));
    rows.Update();
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
    rows.SetValue("Cognome", std::string("x1"));
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
