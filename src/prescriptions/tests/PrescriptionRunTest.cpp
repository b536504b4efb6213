#include <gtest/gtest.h>

#include "PrescriptionClinic.h"
#include "prescriptions/ASLPanoramico.h"
#include "support/FakeServices.h"
#include "support/Positions.h"

namespace vlm::test {
namespace {

/// The line of a prescription of the clinic, with its line end.
std::string LineOf(const std::string& id, const std::string& date) {
    return Positions(76,
                     {At(1, "90000"), At(6, "NCLMGR70E41G273K"), At(22, date), At(30, "0239930131"), At(40, "25000"),
                      At(45, "S02028519015"), At(58, "4019"), At(63, "S0" + id + "F4019"), At(72, "25000")})
        .WithLineEnd();
}

SqlRow On(const std::string& id, const std::string& date, const std::string& more = {}) {
    return Prescription(id, "DataRicetta='" + date + "'; " + more);
}

TEST(PrescriptionRunTest, WritesTheSelectedOnesByDateAndReplacesTheFile) {
    PrescriptionClinic clinic({On("1", "2011-03-31"), On("2", "2011-03-01"), On("3", "2011-03-16"),
                               On("4", "2011-02-28"), On("5", "2011-04-01"),
                               On("6", "2011-03-10", "IDBrancaPerStudio=1"), On("7", "2011-03-10", "IDSpecialista=8"),
                               On("8", "2011-03-10", "NumRicetta=0"), On("9", "2011-03-10", "PrescrivibileSSN=0"),
                               On("9", "2011-03-11", "NumRicetta=NULL")});
    WriteBytes(clinic.File(), "what stood there before");
    const HostRun run = clinic.Export({"chkVisualizza=1"});
    EXPECT_EQ(ReadBytes(clinic.File()), LineOf("2", "01032011") + LineOf("3", "16032011") + LineOf("1", "31032011"));
    EXPECT_EQ(Inside(run), (std::vector{kHourglass, kNormal, kConcludedEvent}));
    EXPECT_EQ(NamesIn(clinic.out), Lines{"ricette.txt"});

    // An anomaly file of its own for each run; this record finds none.
    clinic.Export();
    const Lines anomalies = NamesIn(clinic.work + "/AldraPanoramico");
    ASSERT_EQ(anomalies.size(), 2U);
    for (const std::string& name : anomalies) EXPECT_EQ(ReadBytes(clinic.work + "/AldraPanoramico/" + name), "");
}

TEST(PrescriptionRunTest, TakesTheFirstRowOfEveryRowSet) {
    PrescriptionClinic clinic;
    clinic.procedure.push_back("SELECT * FROM AltreRighe WHERE IDRicettaFarmaci = ?1 ORDER BY Quantita_2");
    clinic.procedure.push_back("SELECT * FROM RicettaFarmaci WHERE IDRicettaFarmaci = ?1 AND Quantita_2 = 2");
    for (const char* other : {"Quantita_2=8", "Quantita_2=7"}) {
        clinic.extraSql += InsertionInto("AltreRighe", On("1", "2011-03-02", other));
    }
    clinic.Create({On("1", "2011-03-02"), On("2", "2011-03-03")});
    clinic.Export();
    EXPECT_EQ(ReadBytes(clinic.File()),
              LineOf("1", "02032011") + LineOf("7", "02032011") + LineOf("2", "03032011") + LineOf("2", "03032011"));
}

TEST(PrescriptionRunTest, AnErrorKeepsTheLinesSoFar) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [changes, description] :
         {Case{"CodiceRegionale=NULL", "Uso di Null non valido: colonna CodiceRegionale."},
          Case{"Quantita_2=NULL", "Uso di Null non valido: colonna Quantita_2."},
          Case{"Quantita_1='due'", "Il valore 'due' della colonna Quantita_1 non è un numero."}}) {
        PrescriptionClinic clinic({On("1", "2011-03-02"), On("2", "2011-03-03", changes), On("3", "2011-03-04")});
        WriteBytes(clinic.File(), "what stood there before");
        EXPECT_EQ(Inside(clinic.Export()),
                  (std::vector{kHourglass, kNormal, ErrorEvent(description), kConcludedEvent}));
        EXPECT_EQ(ReadBytes(clinic.File()), LineOf("1", "02032011"));
        EXPECT_EQ(NamesIn(clinic.out), Lines{"ricette.txt"});
        EXPECT_EQ(NamesIn(clinic.work + "/AldraPanoramico").size(), 1U);
    }
}

TEST(PrescriptionRunTest, WhatIsMissingIsNamed) {
    PrescriptionClinic unknown;
    unknown.procedure.clear();
    unknown.Create({On("1", "2011-03-02")});
    EXPECT_NE(unknown.Export().Of("message").at(0).find("SP_RicettaFarmaci2005"), std::string::npos);

    PrescriptionClinic clinic({On("1", "2011-03-02")});
    const HostRun folder = clinic.Export({"txtPath=" + clinic.out});
    EXPECT_NE(folder.Of("message").at(0).find(InJson(clinic.out)), std::string::npos);
    EXPECT_EQ(folder.Of("message").at(1), kConcludedEvent);
    WriteBytes(clinic.work + "/AldraPanoramico", "a file where the folder should be");
    EXPECT_NE(clinic.Export().Of("message").at(0).find("AldraPanoramico"), std::string::npos);
}

TEST(PrescriptionRunTest, TellsWhatItCameTo) {
    PrescriptionClinic clinic({On("1", "2011-03-02"), On("2", "2011-03-05", "Quantita_1=NULL")});
    FakeServices services;
    services.utility = PlainHostUtility(clinic.work);
    services.library.SetConnection(clinic.Connect());
    ASLPanoramico component(services.library);
    component.IDSpecialista = 9;
    component.IDBranca = 2;
    std::string outcomes;
    for (const int lastDay : {1, 4, 5}) {
        component.FromDate = *Date::FromYmd(2011, 3, 1);
        component.ToDate = *Date::FromYmd(2011, 3, lastDay);
        outcomes += std::to_string(component.ExportFile(clinic.File())) + " ";
    }
    EXPECT_EQ(outcomes, "1 2 0 ");
}

TEST(PrescriptionRunTest, AnEmptySelectionCreatesNothing) {
    PrescriptionClinic clinic({On("1", "2011-03-02")});
    WriteBytes(clinic.out + "/old.txt", "old");
    // Nobody chosen selects nobody.
    for (const std::string filter : {"cboSpecialista=#-1", "dtFromDate=03/03/2011"}) {
        const HostRun run = clinic.Export({filter, "txtPath=" + clinic.out + "\\old.txt"});
        EXPECT_EQ(Inside(run), (std::vector{kHourglass, kNormal, kNoDataEvent, kConcludedEvent}));
    }
    EXPECT_EQ(ReadBytes(clinic.out + "/old.txt"), "old");
    EXPECT_EQ(NamesIn(clinic.out), Lines{"old.txt"});
    EXPECT_TRUE(NamesIn(clinic.work).empty());
}

TEST(PrescriptionRunTest, ARunTakesWhatTheDialogShowsNow) {
    PrescriptionClinic clinic(
        {On("1", "2011-03-02"), On("2", "2011-04-02"), On("3", "2011-04-02", "IDBrancaPerStudio=1; IDSpecialista=8")});
    clinic.Export({"cmdConferma!", "dtFromDate=01/04/2011", "dtToDate=02/04/2011", "cmdConferma!", "cboBranca=1",
                   "cboSpecialista=8", "txtPath=" + clinic.out + "/due.txt"});
    EXPECT_EQ(ReadBytes(clinic.File()), LineOf("2", "02042011"));
    EXPECT_EQ(ReadBytes(clinic.out + "/due.txt"), LineOf("3", "02042011"));
}

}  // namespace
}  // namespace vlm::test
