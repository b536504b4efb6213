#include <gtest/gtest.h>

#include "ProjectClinic.h"
#include "console/ConsoleToolkit.h"
#include "console/JsonEventLog.h"
#include "projects/ExportProgetti.h"
#include "support/FakeServices.h"
#include "support/Words.h"

namespace vlm::test {
namespace {

TEST(ProjectRunTest, WritesEveryCentreWithATeamInTheirOrder) {
    ProjectClinic clinic;
    clinic.teamless = "20";
    clinic.Create({{12, {Project("121"), Project("122")}},
                   {7, {Project("71")}},
                   {123, {Project("1231")}},
                   {20, {Project("201")}},
                   {13, {}}});
    WriteBytes(clinic.File(), "what stood there before");
    const HostRun run = clinic.Export();
    EXPECT_EQ(clinic.Projects(), "71 121 122 1231");
    EXPECT_EQ(Inside(run), (std::vector{kHourglass, kNormal, kConcludedEvent}));

    clinic.Export({"cboStudio=7"});
    EXPECT_EQ(clinic.Projects("07"), "71");
    clinic.Export({"cboStudio=123"});
    EXPECT_EQ(clinic.Projects("123"), "1231");
    clinic.Export({"cboStudio=13"});  // nothing matches
    EXPECT_EQ(clinic.Content("13"), "");
    clinic.Export({"numAnno=900", "cboDaTrimestre=#3", "cboATrimestre=#2", "txtPath=" + clinic.out + "\\"});
    EXPECT_EQ(NamesIn(clinic.out), (Lines{"S20110120110200.txt", "S20110120110207.txt", "S201101201102123.txt",
                                          "S20110120110213.txt", "S900049000300.txt"}));
}

TEST(ProjectRunTest, TakesWhatTheFiltersLetThrough) {
    ProjectClinic clinic(
        {{12,
          {Project("1", "DataAutorizzazione='2011-01-31'; IDStatoProgetto=4"),
           Project("2", "DataAutorizzazione='2011-02-01'; IDStatoProgetto=NULL"),
           Project("3", "DataAutorizzazione='2011-02-28 23:59:00'; IDStatoProgetto=1"),
           Project("4", "DataAutorizzazione='2011-02-28 23:59:30'"), Project("5", "DataAutorizzazione=NULL"),
           Project("6", "Periodo=2"), Project("7", "Periodo=3"), Project("8", "Anno=2010"), Project("9", "Anno=NULL"),
           Project("10", "Periodo=4")}}});
    using Case = std::pair<Lines, const char*>;
    for (const auto& [steps, projects] :
         {Case{{}, "1 2 3 4 5 6"}, Case{{"cboStatoProgetto=#0"}, "2 3 4 5 6"}, Case{{"cboStatoProgetto=#1"}, "1"},
          Case{{"cboStatoProgetto=#-1"}, "1 2 3 4 5 6"}, Case{{"dtFromDate=01/02/2011"}, "2 3 4"},
          Case{{"dtToDate=28/02/2011"}, "1 2 3 6"}, Case{{"dtFromDate=01/02/2011", "dtToDate=28/02/2011"}, "2 3"},
          // The end dates are no filter.
          Case{{"dtFromDataFine=01/01/2020", "dtToDataFine=01/01/2020"}, "1 2 3 4 5 6"}}) {
        clinic.Export(steps);
        EXPECT_EQ(clinic.Projects(), projects);
    }
    clinic.Export({"cboDaTrimestre=#2", "cboATrimestre=#3"});
    EXPECT_EQ(ReadBytes(clinic.out + "/S20110320110400.txt").size(), 2U * 197);
    clinic.Export({"numAnno=2010"});
    EXPECT_EQ(ReadBytes(clinic.out + "/S20100120100200.txt").size(), 197U);
}

TEST(ProjectRunTest, AnEmptiedDateStillFilters) {
    ProjectClinic clinic({{12, {Project("1", "DataAutorizzazione='2011-01-31'"), Project("2")}}});
    clinic.Export({"dtFromDate=20/01/2011", "cmdConferma!", "dtFromDate="});
    EXPECT_EQ(clinic.Projects(), "1");
    clinic.Export();  // another component
    EXPECT_EQ(clinic.Projects(), "1 2");

    // One component, two dialogs.
    std::ostringstream log;
    ui::JsonEventLog events(log);
    const Lines run = {"numAnno=2011", "cboDaTrimestre=#0", "cboATrimestre=#1", "txtPath=" + clinic.out,
                       "cmdConferma!"};
    const Lines first = WordsOf("in:frmExportProgetti dtToDate=15/01/2011");
    const Lines words = first + run + WordsOf("end: in:frmExportProgetti") + run + WordsOf("end:");
    ui::ConsoleToolkit toolkit(ui::ConsoleScript(words), events);
    FakeServices services;
    Library library(services.With(toolkit));
    ExportProgetti component(library);
    component.SetConnection(clinic.Connect());
    for (int i = 0; i < 2; ++i) {
        component.ShowDialog();
        EXPECT_EQ(clinic.Projects(), "2");
        WriteBytes(clinic.File(), "");
    }
}

TEST(ProjectRunTest, OpensTheFileWhenAsked) {
    ProjectClinic clinic({{12, {Project("1"), Project("1", "CodiceFiscale='ALTRO'")}}});
    const HostRun run = clinic.Export({"chkVisualizza=1"});
    EXPECT_EQ(clinic.Projects(), "1 1");  // of two patients
    EXPECT_EQ(Inside(run),
              (std::vector{kHourglass, kNormal, NotepadEvent(clinic.out + "\\S20110120110200.txt"), kConcludedEvent}));
}

TEST(ProjectRunTest, AnErrorKeepsTheLinesSoFar) {
    ProjectClinic clinic(
        {{7, {Project("71")}}, {12, {Project("1"), Project("2", "DataScelta='domani'"), Project("3")}}});
    WriteBytes(clinic.File(), "what stood there before");
    EXPECT_EQ(
        Inside(clinic.Export({"chkVisualizza=1"})),
        (std::vector{kHourglass, kNormal, ErrorEvent("Il valore 'domani' della colonna DataScelta non è una data."),
                     kConcludedEvent}));
    EXPECT_EQ(clinic.Projects(), "71 1");
    EXPECT_EQ(NamesIn(clinic.out), Lines{"S20110120110200.txt"});
}

TEST(ProjectRunTest, ACentreWithoutItsDatabaseIsNamed) {
    ProjectClinic clinic;
    clinic.masterSql = "INSERT INTO Studi (IDStudio) VALUES (9), (3);";
    clinic.Create({{7, {Project("71")}}, {12, {Project("121")}}});
    const HostRun first = clinic.Export();
    EXPECT_NE(first.Of("message").at(0).find("Studio0003"), std::string::npos);
    EXPECT_EQ(first.Of("message").at(1), kConcludedEvent);
    EXPECT_EQ(clinic.Content(), "");
    clinic.Export({"cboStudio=12"});  // the others are not looked at
    EXPECT_EQ(clinic.Projects("12"), "121");
    // A folder that a blank in front makes another one passes the check and cannot be written to.
    EXPECT_NE(clinic.Export({"cboStudio=12", "txtPath= " + clinic.out}).Of("message").at(0).find("Impossibile"),
              std::string::npos);
}

}  // namespace
}  // namespace vlm::test
