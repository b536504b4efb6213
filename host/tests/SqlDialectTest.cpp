#include <gtest/gtest.h>
#include <limits>

#include "databases/TSqlWriter.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

std::string Joined(const std::vector<std::string>& statements) {
    std::string all;
    for (const std::string& sql : statements) all += sql + ";\n";
    return all;
}

/// Every kind of column, key, index, join and query.
const DatabaseSchema& Schema() {
    static const DatabaseSchema schema{
        {{"Casa", {Key("IDCasa"), Text("Via", 100), Money("Valore"), Bit("Abitata")}},
         {"Blocco", {TextKey("Tabella", 50), Key("Chiave", ColumnType::SmallInt), Moment("Dal")}},
         {"Nota", {Int("IDCasa"), SmallInt("Riga")}}},
        {{"IX_Via", "Casa", {{"Via", IndexUse::NameText}, {"IDCasa"}}},
         {"IX_Dal", "Blocco", {{"Dal", IndexUse::Moment}, {"Tabella", IndexUse::CodeText}}}},
        {{"VwCase",
          {{{"Casa", "IDCasa"}, {"Nota", "Riga", "Quale"}},
           "Casa",
           {{JoinKind::Ordered, "Nota", "Nota.IDCasa = Casa.IDCasa"}, {JoinKind::Left, "Blocco", "1 = 1"}},
           {"Casa.Via", "Nota.Riga"}}}},
        {{"SP_Casa",
          "IDCasa",
          "Casa.IDCasa",
          {{{"Casa", "Via"}}, "Casa", {{JoinKind::Inner, "Nota", "Nota.Testo = 'x'"}}}}}};
    return schema;
}

TEST(SqlDialect, TheServerNamesItsKeysAndLimitsAnOrderedView) {
    EXPECT_EQ(Joined(TSqlDialect().Tables(Schema())) + Joined(TSqlDialect().Indices(Schema())),
              R"(CREATE TABLE Casa (
    IDCasa INT NOT NULL,
    Via VARCHAR(100) NULL,
    Valore MONEY NULL,
    Abitata BIT NULL,
    CONSTRAINT PK_Casa PRIMARY KEY (IDCasa));
CREATE TABLE Blocco (
    Tabella VARCHAR(50) NOT NULL,
    Chiave SMALLINT NOT NULL,
    Dal DATETIME NULL,
    CONSTRAINT PK_Blocco PRIMARY KEY (Tabella, Chiave));
CREATE TABLE Nota (
    IDCasa INT NULL,
    Riga SMALLINT NULL);
CREATE VIEW VwCase AS
SELECT TOP (2147483647) Casa.IDCasa AS IDCasa,
    Nota.Riga AS Quale
FROM Casa
    INNER JOIN Nota ON Nota.IDCasa = Casa.IDCasa
    LEFT JOIN Blocco ON 1 = 1
ORDER BY Casa.Via, Nota.Riga;
CREATE PROCEDURE SP_Casa @IDCasa INT AS
SELECT Casa.Via AS Via
FROM Casa
    INNER JOIN Nota ON Nota.Testo = 'x'
WHERE Casa.IDCasa = @IDCasa;
CREATE INDEX IX_Via ON Casa (Via, IDCasa);
CREATE INDEX IX_Dal ON Blocco (Dal, Tabella);
)");
}

/// What a million services are selected, joined and put in order by.
TEST(SqlDialect, TheEmbeddedEngineIsToldItsIndicesAndTheOrderOfItsJoins) {
    EXPECT_EQ(Joined(SqliteDialect().Indices(Schema())),
              "CREATE INDEX IX_Via ON Casa (Via COLLATE NOCASE, IDCasa);\n"
              "CREATE INDEX IX_Dal ON Blocco (datetime(Dal), rtrim(Tabella) COLLATE NOCASE);\n");
    EXPECT_NE(SqliteDialect().Tables(Schema()).at(3).find("CROSS JOIN Nota"), std::string::npos);
    EXPECT_EQ(SqliteDialect().Indices(ClinicSchema()).front(),
              "CREATE INDEX IX_Parcella_Esportazione ON Parcella (CodiceBranca, datetime(DataAiFiniConvenzione), "
              "IDParcella)");
}

using Cell = DatabaseWriter::Cell;
constexpr Column kText = Text("C", 50), kMoment = Moment("C"), kMoney = Money("C"), kBit = Bit("C"), kInt = Int("C");

TEST(TSqlLiteral, SaysEachValueAsItsColumnTakesIt) {
    const auto said = [](const Column& column, std::initializer_list<Cell> cells) {
        std::string all;
        for (const Cell& cell : cells) all += TSqlLiteral(cell, column) + ";";
        return all;
    };
    const auto units = [](std::int64_t count) { return Currency::FromUnits(count); };
    EXPECT_EQ(said(kText, {nullptr, OrNull(""), "", "'", "Nicolò D'Angelo", "2011-03-01", 82053}),
              "NULL;NULL;'';'''';N'Nicolò D''Angelo';'2011-03-01';'82053';");
    EXPECT_EQ(said(kMoment, {OrNull(0), "2011-03-01 00:00:00", "2011-03-31 08:05:09"}),
              "NULL;'20110301';'20110331 08:05:09';");
    EXPECT_EQ(said(kMoney, {units(1), units(-361500), units(std::numeric_limits<std::int64_t>::min()), 12}),
              "0.0001;-36.1500;-922337203685477.5808;12.0000;");
    EXPECT_EQ(said(kBit, {7}) + said(kInt, {-5}), "1;-5;");
    const std::pair<Cell, Column> refused[] = {{nullptr, Key("C")}, {"01/03/2011", kMoment}, {20110301, kMoment},
                                               {"12.50", kMoney},   {Currency(), kText},     {"12", kInt}};
    for (const auto& [cell, column] : refused) EXPECT_THROW(TSqlLiteral(cell, column), Error);
}

}  // namespace
}  // namespace vlm::host
