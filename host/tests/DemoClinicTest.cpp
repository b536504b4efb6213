#include <gtest/gtest.h>
#include <set>

#include "DemoDatabase.h"
#include "services/FiscalCode.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

using data::testing::ErrorText;
using Names = std::vector<std::string>;

const char* const kFiles[] = {"Aldra.sqlite", "Studio0012.sqlite", "Studio0016.sqlite"};

TEST(DemoClinicCreation, NeverWritesOverAnything) {
    const test::TempFolder temp;
    for (const char* name : {"Aldra.sqlite", "Studio0016.sqlite", "Studio0012.sqlite-journal", "Sorgenti"}) {
        const std::string folder = temp.Folder(std::string("with-") + name);
        test::WriteBytes(folder + "/" + name, "mine");
        const std::string error = ErrorText([&] { CreateDemo(folder, kDemoDay); });
        EXPECT_NE(error.find(name), std::string::npos) << error;
        EXPECT_EQ(test::NamesIn(folder), Names{name});
        EXPECT_EQ(test::ReadBytes(folder + "/" + name), "mine");
    }
    test::WriteBytes(temp / "file", "mine");
    EXPECT_THROW(CreateDemo(temp / "file", kDemoDay), Error);
    EXPECT_EQ(test::ReadBytes(temp / "file"), "mine");
}

TEST(DemoClinicCreation, LeavesNothingHalfMade) {
    const test::TempFolder temp;
    DemoOptions options;
    options.comuniCsv = temp / "comuni.csv";
    // Comuni that lack those of the region are told only when the first clinic is being made.
    for (const auto& [line, told] :
         {std::pair{"Roma;12;H501;RM", "Roma;12"}, {"Aci Castello;087002;A026;CT", "non è in elenco"}}) {
        test::WriteBytes(temp / "comuni.csv", std::string("Comune;CodiceISTAT;CodiceCatastale;Sigla\n") + line + "\n");
        const std::string error = ErrorText([&] { CreateDemo(temp / "deep/demo", kDemoDay, options); });
        EXPECT_NE(error.find(told), std::string::npos) << error;
    }
    EXPECT_EQ(test::NamesIn(temp.Path()), Names{"comuni.csv"});
}

/// Shown with few services, as many as were asked for; the lists are those of any demo of the day.
TEST(DemoClinicCreation, GivesTheSameDataForTheSameSeedAndDay) {
    const test::TempFolder temp;
    DemoOptions options;
    options.serviceRows = 500;
    CreateDemo(temp / "deep/first", kDemoDay, options);
    CreateDemo(temp.Folder("again"), Date(kDemoDay.Serial() + 0.75), options);
    options.seed = 7;
    CreateDemo(temp / "other", kDemoDay, options);
    for (const char* name : kFiles) {
        const std::string first = test::ReadBytes(temp / "deep/first/" + name);
        EXPECT_TRUE(first == test::ReadBytes(temp / "again/" + name)) << name;
        const bool master = name == kFiles[0];  // holds nothing that is drawn
        EXPECT_EQ(first == test::ReadBytes(temp / "other/" + name), master) << name;
    }
    for (const char* name : {"Installazione/SistemaTS.json", "Sorgenti/assistiti.txt", "Sorgenti/catania.txt"}) {
        EXPECT_EQ(test::ReadBytes(temp / "deep/first/" + name), test::ReadBytes(SharedDemo() / name)) << name;
        EXPECT_EQ(test::ReadBytes(temp / "again/" + name), test::ReadBytes(SharedDemo() / name)) << name;
    }
    EXPECT_EQ(test::NamesIn(temp / "again"), (Names{kFiles[0], "Installazione", "Sorgenti", kFiles[1], kFiles[2]}));
    for (const char* name : {"Studio0012", "Studio0016"}) {
        DemoDatabase clinic(temp / "deep/first", name);
        EXPECT_EQ(clinic.Number("SELECT COUNT(*) FROM VwPrestazionePerASL"), 500);
        EXPECT_EQ(clinic.Number("SELECT COUNT(*) FROM Parcella WHERE ElaborataASL = 1 OR IDPosizioneContabile = 1"), 0);
    }
}

class DemoClinicContents : public testing::Test {
protected:
    DemoDatabase sicilia_{SharedDemo().Path(), "Studio0012"}, puglia_{SharedDemo().Path(), "Studio0016"};
};

TEST_F(DemoClinicContents, PeopleHaveLawfulCodesAndHomesInTheRegion) {
    for (DemoDatabase* clinic : {&sicilia_, &puglia_}) {
        const auto codes = clinic->Rows("SELECT DISTINCT CodiceFiscale FROM Paziente WHERE CodiceFiscale IS NOT NULL");
        EXPECT_GE(codes.size(), 290u);
        EXPECT_EQ(clinic->Number("SELECT COUNT(CodiceFiscale) FROM Paziente"), static_cast<int>(codes.size()));
        for (const auto& row : codes) EXPECT_TRUE(IsFiscalCode(row[0])) << row[0];
        EXPECT_GT(clinic->Number("SELECT COUNT(*) FROM Paziente WHERE Revocato = 1 AND IDTipoRevocaPaziente > 0"), 0);
        EXPECT_EQ(
            clinic->Number("SELECT COUNT(*) FROM Paziente JOIN Residenza USING (IDPaziente) LEFT JOIN Aldra.Comune"
                           " USING (IDComune) WHERE Aldra.Comune.Cap IS NOT Residenza.Cap"),
            0);
    }
    const std::string abroad =
        "SELECT COUNT(*) FROM Residenza JOIN Aldra.Comune USING (IDComune) WHERE NOT CodiceISTAT ";
    EXPECT_EQ(sicilia_.Number(abroad + "BETWEEN '081' AND '089999'"), 0);
    EXPECT_EQ(puglia_.Number(abroad + "BETWEEN '071' AND '075999' AND NOT CodiceISTAT LIKE '110%'"), 0);
    EXPECT_EQ(sicilia_.Number("SELECT COUNT(*) FROM Aldra.Comune"), 7904);
}

TEST_F(DemoClinicContents, DocumentsAddUp) {
    for (DemoDatabase* clinic : {&sicilia_, &puglia_}) {
        EXPECT_EQ(clinic->Number("SELECT COUNT(*) FROM Parcella WHERE ABS(TotTicketEuro - (SELECT SUM(TotaleEuro) FROM"
                                 " Prestazione WHERE Prestazione.IDParcella = Parcella.IDParcella)) > 0.00001 OR"
                                 " TotQuotaPazienteTicketEuro > TotTicketEuro"),
                  0);
        for (const char* length : {"10", "19"})
            EXPECT_GT(clinic->Number("SELECT COUNT(*) FROM Parcella WHERE LENGTH(DataAiFiniConvenzione) = " +
                                     std::string(length)),
                      0);
        const auto months = clinic->Rows(
            "SELECT SUBSTR(DataAiFiniConvenzione, 1, 7) AS m, MIN(IFNULL(ElaborataASL, 0)),"
            " MAX(IFNULL(ElaborataASL, 0)) FROM Parcella GROUP BY m ORDER BY m DESC");
        ASSERT_EQ(months.size(), 24u);
        EXPECT_EQ(months[0], (Names{"2011-03", "0", "0"}));
        EXPECT_EQ(months[1], (Names{"2011-02", "0", "1"}));
        for (std::size_t i = 2; i < months.size(); ++i) EXPECT_EQ(months[i][1], "1") << months[i][0];
        EXPECT_EQ(clinic->Number("SELECT MAX(n) FROM (SELECT COUNT(*) AS n FROM Prestazione GROUP BY IDParcella)"),
                  clinic == &sicilia_ ? 9 : 8);
    }
}

/// The faults of a region are in the second branch's last month, and in no other service.
TEST_F(DemoClinicContents, EveryFaultIsInOneMonthOfOneBranchOnly) {
    const std::string services =
        "SELECT COUNT(*) FROM VwPrestazionePerASL AS P LEFT JOIN Residenza AS R ON R.IDPaziente = P.IDPaziente AND"
        " R.IDTipoResidenza = 1 LEFT JOIN Aldra.Comune AS C ON C.IDComune = R.IDComune"
        " LEFT JOIN Aldra.Esenzione AS E ON E.IDEsenzione = P.IDPartecipazioneSpesa"
        " LEFT JOIN Aldra.TipoEsenzione AS T ON T.IDTipoEsenzione = E.IDTipoEsenzione WHERE (";
    const std::string elsewhere = "(IDBrancaPerStudio_Parcella <> 2 OR DataAiFiniConvenzione < '2011-03-01')";
    const std::string day = "DATE(DataAiFiniConvenzione)";
    const std::pair<DemoDatabase&, Names> regions[] = {
        {sicilia_,
         {"CodiceRegionale IS NULL", "CodiceBranca IS NULL", "CodiceRegionale IS NULL AND CodiceBranca IS NULL",
          "MED_CodiceFiscale IS NULL AND CodRegMedicoFiducia IS NULL",
          "IDConsenso = 2 AND PAZ_CodiceFiscale IS NULL AND PAZ_DataNascita IS NULL",
          "IDConsenso = 2 AND PAZ_CodiceFiscale IS NULL AND PAZ_Cognome IS NULL",
          "IDConsenso <> 2 AND PAZ_CodiceFiscale IS NULL", "PAZ_Sesso IS NULL", "PAZ_Sesso NOT IN ('M', 'F')",
          "C.CodiceISTAT IS NULL", "NumeroASL IS NULL", "NumRicetta1 IS NULL AND NumRicetta2 IS NULL",
          "CodicePrestazioneTariffario IS NULL", "T.IDPosizioneTicket IS NULL"}},
        {puglia_,
         {"DataRefertazione IS NULL", "PrestazioneCiclica AND DataInizioCiclo IS NULL",
          "PrestazioneCiclica AND DataInizioCiclo = " + day, "PrestazioneCiclica AND DataInizioCiclo > " + day,
          "NOT PrestazioneCiclica AND DataInizioCiclo IS NOT NULL",
          "NOT PrestazioneCiclica AND DataRefertazione <> " + day, "NOT PrestazioneCiclica AND DataAssegnata <> " + day,
          "NOT PrestazioneCiclica AND DataAssegnata IS NULL"}}};
    for (const auto& [clinic, faults] : regions) {
        for (const std::string& fault : faults) {
            EXPECT_GT(clinic.Number(services + fault + ") AND NOT " + elsewhere), 0) << fault;
            EXPECT_EQ(clinic.Number(services + fault + ") AND " + elsewhere), 0) << fault;
        }
    }
    EXPECT_EQ(puglia_.Number("SELECT COUNT(*) FROM VwPrestazionePerASL WHERE CodicePrestazione IS NULL"), 0);
    EXPECT_GT(puglia_.Number("SELECT COUNT(*) FROM VwPrestazionePerASL WHERE CodicePrestazioneTariffario IS NULL"), 0);
}

/// What reads them goes by the types; an expression would have none.
TEST_F(DemoClinicContents, ViewsDeliverColumnsWithDeclaredTypes) {
    for (const auto& [view, columns] : {std::pair{"VwPrestazionePerASL", 51}, {"VwPrestazioniASLME", 28}}) {
        std::set<std::string> names;
        for (const auto& row : sicilia_.Rows(std::string("SELECT name, type FROM pragma_table_info('") + view + "')")) {
            EXPECT_NE(row[1], "") << view << "." << row[0] << " has no declared type";
            EXPECT_TRUE(names.insert(row[0]).second) << row[0] << " twice";
        }
        EXPECT_EQ(names.size(), static_cast<std::size_t>(columns)) << view;
    }
}

/// The order of a region's file has to come from an index: sorting a million services first costs more than the rest.
TEST_F(DemoClinicContents, ServicesComeInTheirOrderWithoutSorting) {
    const std::string selection =
        "EXPLAIN QUERY PLAN SELECT VwPrestazionePerASL.*, Aldra.Comune.CodiceISTAT,"
        " Aldra.TipoEsenzione.IDPosizioneTicket"
        " FROM VwPrestazionePerASL LEFT JOIN Residenza ON (VwPrestazionePerASL.IDPaziente = Residenza.IDPaziente"
        " AND Residenza.IDTipoResidenza = 1) LEFT JOIN Aldra.Comune ON Residenza.IDComune = Aldra.Comune.IDComune"
        " LEFT JOIN Aldra.Esenzione ON VwPrestazionePerASL.IDPartecipazioneSpesa = Aldra.Esenzione.IDEsenzione"
        " LEFT JOIN Aldra.TipoEsenzione ON Aldra.Esenzione.IDTipoEsenzione = Aldra.TipoEsenzione.IDTipoEsenzione"
        " WHERE ((CAST(substr(DataAiFiniConvenzione,1,4) AS INTEGER) = 2011 AND"
        " CAST(substr(DataAiFiniConvenzione,6,2) AS INTEGER) = 3 AND (ElaborataASL = 0 OR ElaborataASL IS NULL)) OR"
        " (DataAiFiniConvenzione < '2011-03-01' AND IDPosizioneContabile <> 1 AND"
        " (ElaborataASL IS NULL OR ElaborataASL = 0)))";
    for (const char* filter : {"", " AND IDBrancaPerStudio_Parcella = 1", " AND IDSpecialista_Parcella = 2"}) {
        for (const auto& step : sicilia_.Rows(selection + filter +
                                              " ORDER BY CodiceBranca, datetime(DataAiFiniConvenzione), IDParcella")) {
            EXPECT_EQ(step[3].find("TEMP B-TREE"), std::string::npos) << step[3];
            EXPECT_EQ(step[3].find("AUTOMATIC"), std::string::npos) << step[3];
            const bool whole = step[3].starts_with("SCAN");
            EXPECT_TRUE(!whole || step[3].find("Parcella USING INDEX") != std::string::npos) << step[3];
        }
    }
}

TEST_F(DemoClinicContents, ThePrescriptionProcedureGivesOneCompleteRow) {
    std::string body = sicilia_.Rows("SELECT Body FROM StoredProcedure WHERE Name = 'SP_RicettaFarmaci2005'")[0][0];
    ASSERT_TRUE(body.ends_with("RicettaFarmaci.IDRicettaFarmaci = ?1"));
    body.replace(body.size() - 2, 2, "RicettaFarmaci.IDRicettaFarmaci");  // every prescription
    sicilia_.Rows("CREATE TEMP VIEW Ricette AS " + body);
    EXPECT_EQ(sicilia_.Rows("SELECT name FROM pragma_table_info('Ricette') WHERE type = ''"),
              std::vector<DemoDatabase::Row>());
    EXPECT_EQ(sicilia_.Rows("SELECT IDPatologia_1, IDPatologia_2 FROM Ricette LIMIT 1").size(), 1u);
    const int prescriptions = sicilia_.Number("SELECT COUNT(*) FROM RicettaFarmaci");
    EXPECT_GT(prescriptions, 20);
    EXPECT_EQ(sicilia_.Number("SELECT COUNT(*) FROM Ricette WHERE CodiceRegionale || PAZ_CodiceFiscale || DataRicetta"
                              " || Quantita_1 || Quantita_2 || NumRicetta || PrescrivibileSSN || IDTipoRichiesta ||"
                              " CodiceAIC_1 IS NOT NULL"),
              prescriptions);
    for (const char* left : {"PrescrivibileSSN = 0", "NumRicetta = 0"})
        EXPECT_GT(sicilia_.Number(std::string("SELECT COUNT(*) FROM RicettaFarmaci WHERE ") + left), 0) << left;
}

TEST_F(DemoClinicContents, TheStatesOfAProjectFollowOneAnother) {
    std::string previous;
    int groups = 0;
    for (const auto& row : sicilia_.Rows("SELECT NumeroAutorizzazione FROM VwPrestazioniASLME WHERE Periodo > 0")) {
        if (row[0] != previous) ++groups;
        previous = row[0];
    }
    EXPECT_EQ(groups, sicilia_.Number("SELECT COUNT(*) FROM Progetto"));
    EXPECT_GT(sicilia_.Number("SELECT COUNT(*) FROM StatoProgetto"), groups);
}

/// Other tools fill and change the host's tables too.
TEST_F(DemoClinicContents, RowsCanBeAddedAndChangedFromOutside) {
    sicilia_.Rows(
        "BEGIN; INSERT INTO Parcella (IDParcella, DataAiFiniConvenzione, IDPaziente, CodiceBranca)"
        " VALUES (900001, '2011-03-31 10:00:00', 1, 2);"
        "INSERT INTO Prestazione (IDParcella, Riga, TotaleEuro) VALUES (900001, 1, 12.5);"
        "UPDATE Parcella SET ElaborataASL = 1, DataAiFiniConvenzione = '2011-03-30' WHERE IDParcella = 900001");
    EXPECT_EQ(sicilia_.Rows("SELECT DataAiFiniConvenzione, ElaborataASL, TotaleEuro FROM VwPrestazionePerASL WHERE"
                            " IDParcella = 900001"),
              (std::vector<DemoDatabase::Row>{{"2011-03-30", "1", "12.5"}}));
    EXPECT_EQ(sicilia_.Rows("PRAGMA main.integrity_check")[0][0], "ok");
    sicilia_.Rows("ROLLBACK");
}

}  // namespace
}  // namespace vlm::host
