#include <gtest/gtest.h>

#include "support/DatabaseFolder.h"
#include "support/RowText.h"

/// The system's own statements, as they stand, over a small clinic.
namespace vlm::data::testing {
namespace {

constexpr const char* kMasterTables[] = {
    "CREATE TABLE Studi (IDStudio INT PRIMARY KEY, IDASL INT, RagioneSociale VARCHAR(50), Nome VARCHAR(50), IDEquipe "
    "INT)",
    "INSERT INTO Studi VALUES (12, 1, 'studio Rossi', 'Nord', 1), (7, 2, 'Studio Bianchi', NULL, 2), (8, 1, 'X', 'Y', "
    "NULL), (9, NULL, NULL, 'Senza', 3)",
    "CREATE TABLE ASL (IDASL INT PRIMARY KEY, NumeroASL VARCHAR(3))",
    "INSERT INTO ASL VALUES (1, '106'), (2, '201')",
    "CREATE TABLE Mese (IDMese INT PRIMARY KEY, Mese VARCHAR(20))",
    "INSERT INTO Mese VALUES (2, 'febbraio'), (1, 'gennaio')",
    "CREATE TABLE Comune (IDComune INT PRIMARY KEY, Comune VARCHAR(50), CodiceISTAT VARCHAR(6))",
    "INSERT INTO Comune VALUES (1, 'CANTÙ', '013041'), (2, 'Corleone', '082034'), (3, 'Palermo', '082053'), "
    "(4, 'Cantù Alta', '013999')",
    "CREATE TABLE Esenzione (IDEsenzione INT PRIMARY KEY, IDTipoEsenzione INT)",
    "INSERT INTO Esenzione VALUES (50, 5)",
    "CREATE TABLE TipoEsenzione (IDTipoEsenzione INT PRIMARY KEY, IDPosizioneTicket INT)",
    "INSERT INTO TipoEsenzione VALUES (5, 2)",
    "CREATE TABLE Patologia (IDPatologia INT PRIMARY KEY, CodificaCompleta VARCHAR(20))",
    "INSERT INTO Patologia VALUES (12, '25000')",
};

constexpr const char* kClinicTables[] = {
    "CREATE TABLE Specialista (IDSpecialista INT PRIMARY KEY, Cognome VARCHAR(30), Nome VARCHAR(30), CodiceRegionale "
    "VARCHAR(10))",
    "INSERT INTO Specialista VALUES (1, 'Verdi', 'Anna', 'R1'), (2, 'bianchi', 'Ugo', NULL), (3, 'Neri', NULL, 'R3')",
    "CREATE TABLE BrancaPerStudioPerSpecialista (IDBrancaPerStudio INT, IDSpecialista INT)",
    "INSERT INTO BrancaPerStudioPerSpecialista VALUES (2, 1), (2, 2), (3, 3)",
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
    "CREATE TABLE RicettaFarmaci (IDRicettaFarmaci INT PRIMARY KEY, IDBrancaPerStudio INT, IDSpecialista INT, "
    "DataRicetta DATETIME)",
    "INSERT INTO RicettaFarmaci VALUES (1, 1, 2, '2011-03-31' || ' 00:00:00'), (2, 1, 2, '2011-03-01'), "
    "(3, 1, 2, '2011-03-31 00:01'), (4, 1, 3, '2011-03-02'), (5, 1, 2, '2011-03-31')",
    "CREATE TABLE Paziente (IDPaziente INT PRIMARY KEY, CodicePaziente VARCHAR(9), NumTesseraSanitaria VARCHAR(20), "
    "NumAssistito VARCHAR(20), DataScelta DATETIME, Cognome VARCHAR(30), Nome VARCHAR(30), DataNascita DATETIME, Sesso "
    "VARCHAR(1), CodiceFiscale VARCHAR(16), Revocato SMALLINT, NonIscrittoASL SMALLINT, DataRevoca DATETIME, "
    "IDTipoRevocaPaziente INT)",
    "INSERT INTO Paziente (IDPaziente, Cognome, DataNascita, Revocato) VALUES (100, 'Rossi', '12/31/1950', NULL), "
    "(101, 'Verdi', NULL, 1), (102, 'Blu', NULL, 0)",
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
    "IS "
    "NULL)) OR (DataAiFiniConvenzione < '3/1/2011' AND IDPosizioneContabile <> 1 AND (ElaborataASL IS NULL OR "
    "ElaborataASL = 0)) AND IDTipoOperazione IN (1,3))";
const std::string kQuarter =
    "(YEAR(DataAiFiniConvenzione) = 2011 AND CEILING(CAST(MONTH(DataAiFiniConvenzione) AS FLOAT) / 3) = 1 AND (NOT "
    "ElaborataASL IS NULL AND ElaborataASL <> 0))";

class SystemStatements : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* sql : kMasterTables) folder.Run("Aldra", sql);
        for (const char* sql : kClinicTables) folder.Run("Studio0012", sql);
        folder.CreateDatabase("Studio0007");
        folder.Run(
            "Studio0007",
            "CREATE TABLE VwPrestazioniASLME (ID INT, DataAutorizzazione DATETIME, IDStatoProgetto INT, Anno INT, "
            "Periodo INT)");
        folder.Run(
            "Studio0007",
            "INSERT INTO VwPrestazioniASLME VALUES (1, '2011-01-01', NULL, 2011, 1), (2, '2011-03-31 23:59', 1, "
            "2011, 2), (3, '2011-02-01', 4, 2011, 1), (4, '2011-02-01', 1, 2010, 1), (5, '2011-02-01', 1, 2011, 3), "
            "(6, '2011-04-01', 1, 2011, 1)");
        connection = folder.Connect();
    }

    /// The first cell of each row.
    std::string KeysOf(const std::string& sql) {
        std::string keys;
        for (const RecordsetPtr rows = connection->Open(sql); !rows->AtEnd(); rows->MoveNext()) {
            keys += (keys.empty() ? "" : ",") + std::string(rows->TextOf(0));
        }
        return keys;
    }

    DatabaseFolder folder;
    ConnectionPtr connection;
};

TEST_F(SystemStatements, Lookups) {
    const struct {
        const char* sql;
        const char* rows;
    } cases[] = {
        {"SELECT Aldra..ASL.NumeroASL FROM Aldra..Studi INNER JOIN Aldra..ASL ON Aldra..Studi.IDASL = Aldra..ASL.IDASL "
         "WHERE Aldra..Studi.IDStudio = 12",
         "106"},
        {"SELECT IDSpecialista, Cognome + ' ' + Nome AS Specialista, CodiceRegionale FROM Specialista",
         "1|Verdi Anna|R1;2|bianchi Ugo|NULL;3|NULL|R3"},
        {"SELECT IDMese,Mese FROM Aldra..Mese ORDER BY IDMese", "1|gennaio;2|febbraio"},
        {"SELECT IDStudio, IsNull(RagioneSociale,'') + ' ' + IsNull(Nome,'') AS Studio FROM Aldra..Studi WHERE "
         "ISNULL([IDEquipe],0) > 0 ORDER BY RagioneSociale",
         "9| Senza;7|Studio Bianchi ;12|studio Rossi Nord"},
        {"SELECT Specialista.IDSpecialista, Cognome + ' ' + Nome AS Specialista, Specialista.CodiceRegionale FROM "
         "Specialista INNER JOIN BrancaPerStudioPerSpecialista ON Specialista.IDSpecialista = "
         "BrancaPerStudioPerSpecialista.IDSpecialista WHERE IDBrancaPerStudio = 2 ORDER BY Cognome + ' ' + Nome",
         "2|bianchi Ugo|NULL;1|Verdi Anna|R1"},
        {"SELECT CodificaCompleta FROM Aldra..Patologia WHERE IDPatologia = 12", "25000"},
        {"SELECT IDComune FROM Aldra..Comune WHERE CodiceISTAT = 82053", "3"},
        {"SELECT IDComune, Comune FROM Aldra..Comune WHERE Comune LIKE 'cantù%' ORDER BY Comune",
         "1|CANTÙ;4|Cantù Alta"},
        {"SELECT MAX(IDResidenza) FROM Residenza WHERE IDResidenza > 0", "8"},
        {"SELECT 0 as Selezionato, IDPaziente, CodicePaziente, NumTesseraSanitaria, NumAssistito, DataScelta, Cognome, "
         "Nome, DataNascita, Sesso, CodiceFiscale ,Revocato, NonIscrittoASL, DataRevoca, IDTipoRevocaPaziente FROM "
         "Paziente WHERE IsNull(Revocato, 0) = 0",
         "0|100|NULL|NULL|NULL|NULL|Rossi|NULL|31/12/1950|NULL|NULL|NULL|NULL|NULL|NULL;"
         "0|102|NULL|NULL|NULL|NULL|Blu|NULL|NULL|NULL|NULL|0|NULL|NULL|NULL"},
        {"SELECT IDRicettaFarmaci FROM RicettaFarmaci WHERE IDBrancaPerStudio = 1 AND IDSpecialista = 2 AND "
         "DataRicetta "
         ">= '2011-03-01' AND DataRicetta <= '2011-03-31' ORDER BY DataRicetta",
         "2;1;5"},
    };
    for (const auto& each : cases) EXPECT_EQ(RowText(*connection, each.sql), each.rows) << each.sql;
    EXPECT_EQ(KeysOf("SELECT * FROM Studio0007..VwPrestazioniASLME WHERE 1 = 1 AND DataAutorizzazione >= '2011-01-01' "
                     "AND DataAutorizzazione <= '2011-03-31 23:59:00' AND ISNULL(IDStatoProgetto,0) <> 4 AND "
                     "ISNULL(Anno,0) = 2011 AND Periodo >= 1 AND Periodo <= 2"),
              "1,2");
}

TEST_F(SystemStatements, TheSelectionOfServices) {
    const RecordsetPtr rows = connection->Open(kSelection + kMonth + " AND IDSpecialista_Parcella = 7" + kOrder);
    // 5 and 6 are of one midnight that is stored in two forms: the key decides.
    EXPECT_EQ(RowText(*rows),
              "4|2|15/01/2011|False|2|1|7|102|NULL|77|NULL|NULL;"
              "2|2|31/03/2011 10:00:00|NULL|2|1|7|101|NULL|77|NULL|NULL;"
              "1|8|02/03/2011|False|2|1|7|100|50|77|082053|2;"
              "5|8|31/03/2011|False|2|2|7|100|NULL|77|082053|NULL;"
              "6|8|31/03/2011|False|2|1|7|100|NULL|77|082053|NULL");
    EXPECT_EQ(rows->FieldName(0), "IDParcella");
    EXPECT_EQ(rows->FieldName(9), "IDComune");
    EXPECT_EQ(rows->FieldName(10), "CodiceISTAT");
    EXPECT_EQ(rows->TypeOf(2), FieldType::Date);
    EXPECT_EQ(KeysOf(kSelection + kQuarter + kOrder), "3");
}

TEST_F(SystemStatements, AnIndexServesTheOrderOfTheSelection) {
    const std::string plan =
        RowText(*connection, "EXPLAIN QUERY PLAN " + kSelection + kMonth + " AND IDSpecialista_Parcella = 7" + kOrder);
    EXPECT_NE(plan.find("PerEsportazione"), std::string::npos) << plan;
    EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
}

TEST_F(SystemStatements, MarkingOfDocuments) {
    EXPECT_EQ(connection->Execute("UPDATE Parcella SET ElaborataASL = 1,ProgressivoRicetta = 3 WHERE IDParcella = 9"),
              1);
    EXPECT_EQ(connection->Execute("UPDATE Parcella SET ElaborataASL = 1 WHERE " + kMonth + " AND IDSpecialista = 7"),
              5);
    EXPECT_EQ(KeysOf("SELECT IDParcella FROM Parcella WHERE ElaborataASL = 0 ORDER BY IDParcella"), "7,8");
    EXPECT_EQ(RowText(*connection, "SELECT ElaborataASL, ProgressivoRicetta FROM Parcella WHERE IDParcella = 9"),
              "True|3");
}

TEST_F(SystemStatements, EveryCentreIsReadWhileTheListOfCentresIsOpen) {
    constexpr int kCentres = 14;
    for (int centre = 20; centre < 20 + kCentres; ++centre) {
        const std::string name = "Studio00" + std::to_string(centre);
        folder.CreateDatabase(name);
        folder.Run(name, "CREATE TABLE VwPrestazioniASLME (ID INT)");
        folder.Run(name, "INSERT INTO VwPrestazioniASLME VALUES (" + std::to_string(centre) + ")");
        folder.Run("Aldra", "INSERT INTO Studi (IDStudio, IDEquipe) VALUES (" + std::to_string(centre) + ", 100)");
    }
    const RecordsetPtr centres =
        connection->Open("SELECT IDStudio FROM Aldra..Studi WHERE ISNULL([IDEquipe],0) > 99 ORDER BY IDStudio");
    int read = 0;
    for (; !centres->AtEnd(); centres->MoveNext(), ++read) {
        const std::string centre(centres->TextOf(0));
        EXPECT_EQ(KeysOf("SELECT * FROM Studio00" + centre + "..VwPrestazioniASLME WHERE 1 = 1"), centre);
    }
    EXPECT_EQ(read, kCentres);
}

}  // namespace
}  // namespace vlm::data::testing
