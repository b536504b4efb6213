#include <gtest/gtest.h>

#include "support/DatabaseFolder.h"
#include "support/RowText.h"

/// The system's own statements, as they stand, over a small clinic.
namespace vlm::data::testing {
namespace {

constexpr const char* kMasterTables[] = {
    "CREATE TABLE Comune (IDComune INT PRIMARY KEY, CodiceISTAT VARCHAR(6))",
    "INSERT INTO Comune VALUES (2, '082034'), (3, '082053')",
    "CREATE TABLE Esenzione (IDEsenzione INT PRIMARY KEY, IDTipoEsenzione INT)",
    "INSERT INTO Esenzione VALUES (50, 5)",
    "CREATE TABLE TipoEsenzione (IDTipoEsenzione INT PRIMARY KEY, IDPosizioneTicket INT)",
    "INSERT INTO TipoEsenzione VALUES (5, 2)",
};

constexpr const char* kClinicTables[] = {
    "CREATE TABLE Residenza (IDResidenza INT PRIMARY KEY, IDPaziente INT, IDTipoResidenza INT, IDComune INT)",
    "INSERT INTO Residenza VALUES (1, 100, 1, 3), (2, 100, 2, 2), (8, 101, 1, 99)",
    "CREATE TABLE Parcella (IDParcella INT PRIMARY KEY, CodiceBranca SMALLINT, DataAiFiniConvenzione DATETIME, "
    "ElaborataASL BIT, IDPosizioneContabile INT, IDTipoOperazione INT, IDSpecialista INT, IDPaziente INT, "
    "IDPartecipazioneSpesa INT, ProgressivoRicetta SMALLINT)",
    "CREATE INDEX PerEsportazione ON Parcella (CodiceBranca, datetime(DataAiFiniConvenzione), IDParcella)",
    "INSERT INTO Parcella VALUES "
    "(1, 8, '2011-03-02', 0, 2, 1, 7, 100, 50, NULL), "
    "(2, 2, '2011-03-31 10:00', NULL, 2, 1, 7, 101, NULL, NULL), "
    "(3, 2, '2011-03-05', 1, 2, 1, 7, 100, NULL, NULL), "
    "(4, 2, '2011-01-15', 0, 2, 1, 7, 102, NULL, NULL), "
    "(5, 8, '2011-03-31' || ' 00:00:00', 0, 2, 2, 7, 100, NULL, NULL), "
    "(6, 8, '2011-03-31', 0, 2, 1, 7, 100, NULL, NULL), "
    "(7, 8, '2011-02-01', 0, 1, 1, 7, 100, NULL, NULL), "
    "(8, 8, '2011-02-01', 0, 2, 2, 7, 100, NULL, NULL), "
    "(9, 8, '2011-03-01', 0, 2, 1, 8, 100, NULL, NULL)",
    "CREATE VIEW VwPrestazionePerASL AS SELECT IDParcella, CodiceBranca, DataAiFiniConvenzione, ElaborataASL, "
    "IDPosizioneContabile, IDTipoOperazione, IDSpecialista AS IDSpecialista_Parcella, IDPaziente, "
    "IDPartecipazioneSpesa, 77 AS IDComune FROM Parcella",
};

const std::string kSelection =
    "SELECT VwPrestazionePerASL.*,Aldra..Comune.CodiceISTAT, Aldra..TipoEsenzione.IDPosizioneTicket FROM "
    "VwPrestazionePerASL LEFT JOIN Residenza ON (VwPrestazionePerASL.IDPaziente = Residenza.IDPaziente AND "
    "Residenza.IDTipoResidenza = 1) LEFT JOIN Aldra..Comune ON Residenza.IDComune = Aldra..Comune.IDComune LEFT JOIN "
    "Aldra..Esenzione ON VwPrestazionePerASL.IDPartecipazioneSpesa = Aldra..Esenzione.IDEsenzione LEFT JOIN "
    "Aldra..TipoEsenzione ON Aldra..Esenzione.IDTipoEsenzione = Aldra..TipoEsenzione.IDTipoEsenzione WHERE ";
const std::string kOrder = " ORDER BY CodiceBranca, DataAiFiniConvenzione, IDParcella";
const std::string kMonth =
    "((YEAR(DataAiFiniConvenzione) = 2011 AND MONTH(DataAiFiniConvenzione) = 3 AND (ElaborataASL = 0 OR ElaborataASL "
    "IS NULL)) OR (DataAiFiniConvenzione < '3/1/2011' AND IDPosizioneContabile <> 1 AND (ElaborataASL IS NULL OR "
    "ElaborataASL = 0)) AND IDTipoOperazione IN (1,3))";
const std::string kQuarter =
    "(YEAR(DataAiFiniConvenzione) = 2011 AND CEILING(CAST(MONTH(DataAiFiniConvenzione) AS FLOAT) / 3) = 1 AND (NOT "
    "ElaborataASL IS NULL AND ElaborataASL <> 0))";

TEST(SystemStatements, SelectInOrderOfAnIndexAndMark) {
    DatabaseFolder folder;
    for (const char* sql : kMasterTables) folder.Run("Aldra", sql);
    for (const char* sql : kClinicTables) folder.Run("Studio0012", sql);
    const ConnectionPtr connection = folder.Connect();
    const std::string month = kSelection + kMonth + " AND IDSpecialista_Parcella = 7" + kOrder;
    // 5 and 6 are of one midnight that is stored in two forms: the key decides.
    EXPECT_EQ(RowText(*connection, month),
              "4|2|15/01/2011|False|2|1|7|102|NULL|77|NULL|NULL;"
              "2|2|31/03/2011 10:00:00|NULL|2|1|7|101|NULL|77|NULL|NULL;"
              "1|8|02/03/2011|False|2|1|7|100|50|77|082053|2;"
              "5|8|31/03/2011|False|2|2|7|100|NULL|77|082053|NULL;"
              "6|8|31/03/2011|False|2|1|7|100|NULL|77|082053|NULL");
    EXPECT_EQ(connection->Open(month)->Ordinal("CodiceISTAT"), 10);
    EXPECT_EQ(RowText(*connection, kSelection + kQuarter + kOrder),
              "3|2|05/03/2011|True|2|1|7|100|NULL|77|082053|NULL");
    const std::string plan = RowText(*connection, "EXPLAIN QUERY PLAN " + month);
    EXPECT_NE(plan.find("PerEsportazione"), std::string::npos) << plan;
    EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;

    connection->Execute("UPDATE Parcella SET ElaborataASL = 1,ProgressivoRicetta = 3 WHERE IDParcella = 9");
    EXPECT_EQ(connection->Execute("UPDATE Parcella SET ElaborataASL = 1 WHERE " + kMonth + " AND IDSpecialista = 7"),
              5);
    EXPECT_EQ(RowText(*connection,
                      "SELECT IDParcella, ProgressivoRicetta FROM Parcella WHERE ElaborataASL = 0 OR "
                      "IDParcella = 9 ORDER BY IDParcella"),
              "7|NULL;8|NULL;9|3");
}

}  // namespace
}  // namespace vlm::data::testing
