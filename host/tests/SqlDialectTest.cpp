#include <gtest/gtest.h>

#include "databases/SqlDialect.h"

namespace vlm::host {
namespace {

using Statements = std::vector<std::string>;

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

TEST(SqlDialect, TheEmbeddedEngineKeysByRowAndCallsAProcedureByItsText) {
    EXPECT_EQ(SqliteDialect().Tables(Schema()), (Statements{R"(CREATE TABLE Casa (
    IDCasa INTEGER PRIMARY KEY,
    Via VARCHAR(100),
    Valore MONEY,
    Abitata BIT))",
                                                            R"(CREATE TABLE Blocco (
    Tabella VARCHAR(50) NOT NULL,
    Chiave SMALLINT NOT NULL,
    Dal DATETIME,
    PRIMARY KEY (Tabella, Chiave)) WITHOUT ROWID)",
                                                            R"(CREATE TABLE Nota (
    IDCasa INT,
    Riga SMALLINT))",
                                                            R"(CREATE VIEW VwCase AS
SELECT Casa.IDCasa AS IDCasa,
    Nota.Riga AS Quale
FROM Casa
    CROSS JOIN Nota ON Nota.IDCasa = Casa.IDCasa
    LEFT JOIN Blocco ON 1 = 1
ORDER BY Casa.Via, Nota.Riga)",
                                                            R"(CREATE TABLE StoredProcedure (
    Name VARCHAR(128),
    Ordinal INT,
    Body TEXT))",
                                                            "INSERT INTO StoredProcedure (Name, Ordinal, Body) VALUES"
                                                            R"( ('SP_Casa', 1, 'SELECT Casa.Via AS Via
FROM Casa
    INNER JOIN Nota ON Nota.Testo = ''x''
WHERE Casa.IDCasa = ?1'))"}));
    EXPECT_EQ(SqliteDialect().Indices(Schema()),
              (Statements{"CREATE INDEX IX_Via ON Casa (Via COLLATE NOCASE, IDCasa)",
                          "CREATE INDEX IX_Dal ON Blocco (datetime(Dal), rtrim(Tabella) COLLATE NOCASE)"}));
    EXPECT_EQ(SqliteDialect().Tables({Schema().tables, {}}).size(), 3u) << "no table for procedures where none are";
}

TEST(SqlDialect, TheServerNamesItsKeysAndLimitsAnOrderedView) {
    EXPECT_EQ(TSqlDialect().Tables(Schema()), (Statements{R"(CREATE TABLE Casa (
    IDCasa INT NOT NULL,
    Via VARCHAR(100) NULL,
    Valore MONEY NULL,
    Abitata BIT NULL,
    CONSTRAINT PK_Casa PRIMARY KEY (IDCasa)))",
                                                          R"(CREATE TABLE Blocco (
    Tabella VARCHAR(50) NOT NULL,
    Chiave SMALLINT NOT NULL,
    Dal DATETIME NULL,
    CONSTRAINT PK_Blocco PRIMARY KEY (Tabella, Chiave)))",
                                                          R"(CREATE TABLE Nota (
    IDCasa INT NULL,
    Riga SMALLINT NULL))",
                                                          R"(CREATE VIEW VwCase AS
SELECT TOP (2147483647) Casa.IDCasa AS IDCasa,
    Nota.Riga AS Quale
FROM Casa
    INNER JOIN Nota ON Nota.IDCasa = Casa.IDCasa
    LEFT JOIN Blocco ON 1 = 1
ORDER BY Casa.Via, Nota.Riga)",
                                                          R"(CREATE PROCEDURE SP_Casa @IDCasa INT AS
SELECT Casa.Via AS Via
FROM Casa
    INNER JOIN Nota ON Nota.Testo = 'x'
WHERE Casa.IDCasa = @IDCasa)"}));
    EXPECT_EQ(TSqlDialect().Indices(Schema()), (Statements{"CREATE INDEX IX_Via ON Casa (Via, IDCasa)",
                                                           "CREATE INDEX IX_Dal ON Blocco (Dal, Tabella)"}));
}

/// What the export, the projects and the import look up by.
TEST(SqlDialect, TheHostsTablesHaveTheirIndices) {
    const Statements all = SqliteDialect().Indices(ClinicSchema()), master = SqliteDialect().Indices(MasterSchema());
    EXPECT_EQ(master, (Statements{"CREATE INDEX IX_Comune_Nome ON Comune (Comune COLLATE NOCASE)",
                                  "CREATE INDEX IX_Comune_CodiceCatastale ON Comune (rtrim(CodiceCatastale) COLLATE"
                                  " NOCASE)"}));
    EXPECT_EQ(all.size(), 7u);
    EXPECT_EQ(all.front(),
              "CREATE INDEX IX_Parcella_Esportazione ON Parcella (CodiceBranca,"
              " datetime(DataAiFiniConvenzione), IDParcella)");
}

}  // namespace
}  // namespace vlm::host
