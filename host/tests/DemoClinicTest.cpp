#include <gtest/gtest.h>

#include "DemoDatabase.h"
#include "demo/DemoClinic.h"
#include "services/FiscalCode.h"
#include "support/TempFolder.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

const Date kToday = *Date::FromYmd(2011, 4, 15);
const char* const kFiles[] = {"Aldra.sqlite", "Studio0012.sqlite", "Studio0016.sqlite"};

class DemoClinicCreation : public testing::Test {
protected:
    static std::string ErrorOf(const std::string& folder, const DemoOptions& options = {}) {
        try {
            CreateDemo(folder, kToday, options);
        } catch (const Error& error) {
            return error.what();
        }
        return "";
    }

    test::TempFolder temp_;
};

TEST_F(DemoClinicCreation, NeverWritesOverAnything) {
    for (const char* name : {"Aldra.sqlite", "Studio0016.sqlite", "Studio0012.sqlite-journal", "Sorgenti"}) {
        const std::string folder = temp_.Folder(std::string("with-") + name);
        test::WriteBytes(folder + "/" + name, "mine");
        EXPECT_NE(ErrorOf(folder).find(name), std::string::npos) << ErrorOf(folder);
        EXPECT_EQ(test::NamesIn(folder), std::vector<std::string>{name});
        EXPECT_EQ(test::ReadBytes(folder + "/" + name), "mine");
    }
    test::WriteBytes(temp_ / "file", "mine");
    EXPECT_NE(ErrorOf(temp_ / "file"), "");
    EXPECT_EQ(test::ReadBytes(temp_ / "file"), "mine");
}

TEST_F(DemoClinicCreation, LeavesNothingHalfMade) {
    test::WriteBytes(temp_ / "comuni.csv", "Comune;CodiceISTAT;CodiceCatastale;Sigla\nRoma;12;H501;RM\n");
    DemoOptions options;
    options.comuniCsv = temp_ / "comuni.csv";
    EXPECT_NE(ErrorOf(temp_ / "deep/demo", options).find("Roma;12"), std::string::npos);
    // These comuni lack those of the region, which shows only when the first clinic is being made.
    test::WriteBytes(temp_ / "comuni.csv", "Comune;CodiceISTAT;CodiceCatastale;Sigla\nAci Castello;087002;A026;CT\n");
    EXPECT_NE(ErrorOf(temp_ / "deep/demo", options), "");
    EXPECT_EQ(test::NamesIn(temp_.Path()), std::vector<std::string>{"comuni.csv"});
}

TEST_F(DemoClinicCreation, GivesTheSameDataForTheSameSeedAndDay) {
    DemoOptions other;
    other.seed = 7;
    CreateDemo(temp_ / "deep/first", kToday);
    CreateDemo(temp_.Folder("second"), Date(kToday.Serial() + 0.75));
    CreateDemo(temp_ / "third", kToday, other);
    for (const char* name : kFiles) {
        const std::string first = test::ReadBytes(temp_ / "deep/first/" + name);
        EXPECT_TRUE(first == test::ReadBytes(temp_ / "second/" + name)) << name;
        const bool master = name == kFiles[0];  // holds nothing that is drawn
        EXPECT_EQ(first == test::ReadBytes(temp_ / "third/" + name), master) << name;
    }
    EXPECT_EQ(test::NamesIn(temp_ / "second").size(), std::size(kFiles) + 2);
    for (const char* name : {"Installazione/SistemaTS.json", "Sorgenti/assistiti.txt", "Sorgenti/catania.txt"}) {
        EXPECT_EQ(test::ReadBytes(temp_ / "deep/first/" + name), test::ReadBytes(temp_ / "second/" + name)) << name;
    }
}

TEST_F(DemoClinicCreation, MakesAsManyServicesAsAMeasurementWants) {
    DemoOptions options;
    options.serviceRows = 5000;
    CreateDemo(temp_.Path(), kToday, options);
    for (const char* name : {"Studio0012", "Studio0016"}) {
        DemoDatabase clinic(temp_.Path(), name);
        EXPECT_EQ(clinic.Number("SELECT COUNT(*) FROM VwPrestazionePerASL"), 5000);
        EXPECT_EQ(clinic.Number("SELECT COUNT(*) FROM Parcella WHERE ElaborataASL = 1 OR IDPosizioneContabile = 1"), 0);
    }
}

/// One demo for the questions that only read.
class DemoClinicContents : public testing::Test {
protected:
    static void SetUpTestSuite() {
        temp_ = new test::TempFolder;
        CreateDemo(temp_->Path(), kToday);
    }
    static void TearDownTestSuite() { delete temp_; }

    DemoDatabase sicilia_{temp_->Path(), "Studio0012"}, puglia_{temp_->Path(), "Studio0016"};

private:
    static inline test::TempFolder* temp_ = nullptr;
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
    const std::string wrong =
        "SELECT COUNT(*) FROM Parcella WHERE ABS(TotTicketEuro - (SELECT SUM(TotaleEuro) FROM Prestazione WHERE"
        " Prestazione.IDParcella = Parcella.IDParcella)) > 0.00001 OR TotQuotaPazienteTicketEuro > TotTicketEuro";
    const std::string largest = "SELECT MAX(n) FROM (SELECT COUNT(*) AS n FROM Prestazione GROUP BY IDParcella)";
    for (DemoDatabase* clinic : {&sicilia_, &puglia_}) {
        EXPECT_EQ(clinic->Number(wrong), 0);
        EXPECT_GT(clinic->Number("SELECT COUNT(*) FROM Parcella WHERE LENGTH(DataAiFiniConvenzione) = 10"), 0);
        EXPECT_GT(clinic->Number("SELECT COUNT(*) FROM Parcella WHERE LENGTH(DataAiFiniConvenzione) = 19"), 0);
        const auto months = clinic->Rows(
            "SELECT SUBSTR(DataAiFiniConvenzione, 1, 7) AS m, MIN(IFNULL(ElaborataASL, 0)), MAX(IFNULL(ElaborataASL, "
            "0))"
            " FROM Parcella GROUP BY m ORDER BY m DESC");
        ASSERT_EQ(months.size(), 24u);
        EXPECT_EQ(months[0], (std::vector<std::string>{"2011-03", "0", "0"}));
        EXPECT_EQ(months[1], (std::vector<std::string>{"2011-02", "0", "1"}));
        for (std::size_t i = 2; i < months.size(); ++i) EXPECT_EQ(months[i][1], "1") << months[i][0];
    }
    EXPECT_EQ(sicilia_.Number(largest), 9);
    EXPECT_EQ(puglia_.Number(largest), 8);
}

const std::string kServices =
    " FROM VwPrestazionePerASL AS P LEFT JOIN Residenza AS R ON R.IDPaziente = P.IDPaziente AND R.IDTipoResidenza = 1"
    " LEFT JOIN Aldra.Comune AS C ON C.IDComune = R.IDComune"
    " LEFT JOIN Aldra.Esenzione AS E ON E.IDEsenzione = P.IDPartecipazioneSpesa"
    " LEFT JOIN Aldra.TipoEsenzione AS T ON T.IDTipoEsenzione = E.IDTipoEsenzione ";

/// The services that are no part of the second branch's last month.
const std::string kElsewhere = "(IDBrancaPerStudio_Parcella <> 2 OR DataAiFiniConvenzione < '2011-03-01')";

void ExpectOnlyInFaultyMonth(DemoDatabase& clinic, const std::string& fault) {
    const std::string count = "SELECT COUNT(*)" + kServices + "WHERE (" + fault + ") AND ";
    EXPECT_GT(clinic.Number(count + "NOT " + kElsewhere), 0) << fault;
    EXPECT_EQ(clinic.Number(count + kElsewhere), 0) << fault;
}

TEST_F(DemoClinicContents, EverySicilianFaultIsInOneMonthOfOneBranchOnly) {
    for (const char* fault : {"CodiceRegionale IS NULL", "CodiceBranca IS NULL",
                              "MED_CodiceFiscale IS NULL AND CodRegMedicoFiducia IS NULL",
                              "IDConsenso = 2 AND PAZ_CodiceFiscale IS NULL AND PAZ_DataNascita IS NULL",
                              "IDConsenso = 2 AND PAZ_CodiceFiscale IS NULL AND PAZ_Cognome IS NULL",
                              "IDConsenso <> 2 AND PAZ_CodiceFiscale IS NULL", "PAZ_Sesso IS NULL",
                              "PAZ_Sesso NOT IN ('M', 'F')", "C.CodiceISTAT IS NULL", "NumeroASL IS NULL",
                              "NumRicetta1 IS NULL AND NumRicetta2 IS NULL", "CodicePrestazioneTariffario IS NULL",
                              "T.IDPosizioneTicket IS NULL", "CodiceRegionale IS NULL AND CodiceBranca IS NULL"})
        ExpectOnlyInFaultyMonth(sicilia_, fault);
}

TEST_F(DemoClinicContents, EveryApulianFaultIsInOneMonthOfOneBranchOnly) {
    const std::string day = "DATE(DataAiFiniConvenzione)";
    for (const std::string& fault :
         {std::string("DataRefertazione IS NULL"), std::string("PrestazioneCiclica AND DataInizioCiclo IS NULL"),
          "PrestazioneCiclica AND DataInizioCiclo = " + day, "PrestazioneCiclica AND DataInizioCiclo > " + day,
          std::string("NOT PrestazioneCiclica AND DataInizioCiclo IS NOT NULL"),
          "NOT PrestazioneCiclica AND DataRefertazione <> " + day, "NOT PrestazioneCiclica AND DataAssegnata <> " + day,
          std::string("NOT PrestazioneCiclica AND DataAssegnata IS NULL")})
        ExpectOnlyInFaultyMonth(puglia_, fault);
    EXPECT_EQ(puglia_.Number("SELECT COUNT(*) FROM VwPrestazionePerASL WHERE CodicePrestazione IS NULL"), 0);
    EXPECT_GT(puglia_.Number("SELECT COUNT(*) FROM VwPrestazionePerASL WHERE CodicePrestazioneTariffario IS NULL"), 0);
}

}  // namespace
}  // namespace vlm::host
