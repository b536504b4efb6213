#include <gtest/gtest.h>

#include "support/Events.h"
#include "support/Words.h"

namespace vlm::test {
namespace {

TEST(ServiceExportDialogTest, ProposesThePeriodBeforeToday) {
    struct Case {
        const char* today;
        const char *month, *year, *quarter, *quarterYear;
    };
    for (const Case& c : {Case{"2011-01-01", "12", "2010", "3", "2010"}, Case{"2011-02-28", "1", "2011", "3", "2010"},
                          Case{"2011-03-31", "2", "2011", "3", "2010"}, Case{"2011-04-01", "3", "2011", "0", "2011"},
                          Case{"2011-05-15", "4", "2011", "0", "2011"}, Case{"2011-06-30", "5", "2011", "0", "2011"},
                          Case{"2011-07-01", "6", "2011", "1", "2011"}, Case{"2011-10-01", "9", "2011", "2", "2011"},
                          Case{"2011-12-31", "11", "2011", "2", "2011"}}) {
        SCOPED_TRACE(c.today);
        ServiceClinic clinic;
        clinic.today = c.today;
        clinic.Create({});
        const HostRun run = clinic.Run({"cboMese?", "numAnno?", "cboTrimestre?", "numAnnoTrimestre?"});
        EXPECT_EQ(StateOf(run, "cboMese", "value"), c.month);
        EXPECT_EQ(StateOf(run, "numAnno", "value"), c.year);
        EXPECT_EQ(StateOf(run, "cboTrimestre", "value"), c.quarter);
        EXPECT_EQ(StateOf(run, "numAnnoTrimestre", "value"), c.quarterYear);
    }
}

TEST(ServiceExportDialogTest, ShowsAndEnablesWhatTypeAndRegionAllow) {
    struct Case {
        const char* control;
        bool monthly, quarterly, puglia;  // shown with "Mensile", shown with "Trimestrale", enabled in region 13
    };
    for (const int region : {19, 13, 0}) {
        for (const Case& c : {Case{"fraTipoExport", true, true, false}, Case{"optTipoExport", true, true, false},
                              Case{"cboMese", true, false, true}, Case{"numAnno", true, false, true},
                              Case{"cboTrimestre", false, true, false}, Case{"numAnnoTrimestre", false, true, false},
                              Case{"cboBranca", true, true, true}, Case{"cboSpecialista", true, true, true},
                              Case{"lstTipoOperazione", true, true, true}, Case{"txtPath", true, true, true},
                              Case{"cmdLink", true, true, true}, Case{"chkVisualizza", true, true, true},
                              Case{"chkSimulazione", true, true, true}, Case{"chkIncludiElaborate", true, false, true},
                              Case{"chkIncludiPrecedenti", true, false, false}, Case{"cmdConferma", true, true, true},
                              Case{"cmdVisualizza", true, true, true}, Case{"cmdAnnulla", true, true, true}}) {
            SCOPED_TRACE(std::string(c.control) + " in region " + std::to_string(region));
            ServiceClinic clinic;
            clinic.idRegioneTariffario = region;
            clinic.Create({});
            const std::string query = std::string(c.control) + "?";
            const HostRun monthly = clinic.Run({query});
            EXPECT_EQ(StateOf(monthly, c.control, "visible"), c.monthly ? "true" : "false");
            EXPECT_EQ(StateOf(monthly, c.control, "enabled"), region != 13 || c.puglia ? "true" : "false");
            const HostRun quarterly = clinic.Run({"optTipoExport=1", query});
            EXPECT_EQ(quarterly.status, region == 13 ? 2 : 0);
            if (region != 13) {
                EXPECT_EQ(StateOf(quarterly, c.control, "visible"), c.quarterly ? "true" : "false");
            }
        }
    }
}

TEST(ServiceExportDialogTest, TheBranchFillsTheSpecialists) {
    ServiceClinic clinic;
    clinic.Create({});
    const HostRun first = clinic.Run({"cboBranca?", "cboSpecialista?"});
    EXPECT_EQ(StateOf(first, "cboBranca", "value"), "1");
    EXPECT_EQ(StateOf(first, "cboSpecialista", "value"), "0");
    EXPECT_NE(first.Of("state").at(1).find(R"("items":[{"key":8,"text":"Bianchi Ugo"},{"key":7,"text":"Rossi Anna"}])"),
              std::string::npos);
    // The only specialist of a branch is chosen; choosing a branch again clears the choice.
    EXPECT_EQ(StateOf(clinic.Run({"cboBranca=2", "cboSpecialista?"}), "cboSpecialista", "value"), "9");
    EXPECT_EQ(StateOf(clinic.Run({"cboSpecialista=7", "cboBranca=1", "cboSpecialista?"}), "cboSpecialista", "value"),
              "0");

    ServiceClinic puglia;
    puglia.idRegioneTariffario = 13;
    puglia.Create({});
    EXPECT_EQ(StateOf(puglia.Run({"cboBranca?"}), "cboBranca", "value"), "0");
}

TEST(ServiceExportDialogTest, EveryFailingCheckIsToldAndMovesTheFocus) {
    ServiceClinic clinic;
    clinic.Create({});
    const std::string path = FocusEvent("txtPath");
    const std::pair<std::vector<std::string>, std::vector<std::string>> cases[] = {
        {{"cboBranca=#-1", "txtPath=", "cmdConferma!"},
         {MissingEvent("Branca"), FocusEvent("cboBranca"), MissingEvent("Destinazione"), path}},
        {{"txtPath=   ", "cmdConferma!"}, {MissingEvent("Destinazione"), path}},
        {{"txtPath=" + clinic.out + "/none", "cmdConferma!"}, {kInvalidPathEvent, path}},
        // Checked as typed: the blank makes it another folder.
        {{"txtPath= " + clinic.out, "cmdConferma!"}, {kInvalidPathEvent, path}}};
    for (const auto& [steps, events] : cases) EXPECT_EQ(Inside(clinic.Run(steps)), events);
    ServiceClinic puglia;
    puglia.idRegioneTariffario = 13;
    puglia.Create({});
    EXPECT_EQ(puglia.Run({"txtPath=", "cmdConferma!"}).Of("message"), std::vector{MissingEvent("Destinazione")});
}

TEST(ServiceExportDialogTest, KeepsTheDestinationThoughAStepCannotBeDone) {
    ServiceClinic clinic;
    clinic.Create({});
    EXPECT_EQ(clinic.Run({"txtPath=/kept", "cboMese=99"}).status, 2);
    EXPECT_NE(ReadBytes(clinic.settings).find("/kept"), std::string::npos);
}

TEST(ServiceExportDialogTest, ADatabaseWithoutItsTablesIsToldAndKeepsTheSettings) {
    ServiceClinic clinic;
    clinic.masterSql = "DROP TABLE Mese;";
    clinic.Create({});
    WriteBytes(clinic.settings, "[Aldra\\Settings]\nASLPath=/kept\n");
    const HostRun run = clinic.Run({});
    ASSERT_EQ(run.Of("message").size(), 1U);
    EXPECT_NE(run.Of("message").at(0).find("Mese"), std::string::npos);
    EXPECT_NE(ReadBytes(clinic.settings).find("/kept"), std::string::npos);
}

TEST(FileSelectionTest, ProposesTheFileOfThePeriodAndTellsOfIt) {
    ServiceClinic clinic;
    clinic.Create({});
    WriteBytes(clinic.out + "/2010111S.txt", std::string(1234567, 'x'));
    const auto run = [&](const std::vector<std::string>& before) {
        return clinic.Run(before + WordsOf("in:frmSelectFile lblNonTrovato? lblData? lblDataValore? lblDimensione? "
                                           "lblDimensioneValore? txtPath? end: cmdVisualizza!"));
    };
    const HostRun there = run({"optTipoExport=1", "txtPath=" + clinic.out});
    EXPECT_EQ(StateOf(there, "txtPath", "value"), "\"" + clinic.out + "\\\\2010111S.txt\"");
    EXPECT_EQ(StateOf(there, "lblNonTrovato", "visible"), "false");
    for (const char* label : {"lblData", "lblDataValore", "lblDimensione", "lblDimensioneValore"}) {
        EXPECT_EQ(StateOf(there, label, "visible"), "true") << label;
    }
    EXPECT_EQ(StateOf(there, "lblDimensioneValore", "caption"), "\"1.234.567 bytes\"");
    const HostRun missing = run({"cboMese=7", "numAnno=2009", "txtPath= " + clinic.out + "\\ "});
    EXPECT_EQ(StateOf(missing, "txtPath", "value"), "\"" + clinic.out + "\\\\2010709M.txt\"");
    EXPECT_EQ(StateOf(missing, "lblNonTrovato", "visible"), "true");
    EXPECT_EQ(StateOf(missing, "lblDimensione", "visible"), "false");
    const HostRun empty = run({"txtPath="});
    EXPECT_EQ(StateOf(empty, "txtPath", "value"), "\"\"");
    EXPECT_EQ(StateOf(empty, "lblNonTrovato", "visible"), "false");
    EXPECT_EQ(StateOf(empty, "lblDimensioneValore", "visible"), "false");
}

TEST(FileSelectionTest, OnlyConfirmingShowsTheFile) {
    ServiceClinic clinic;
    clinic.Create({});
    WriteBytes(clinic.out + "/2010311M.txt", "");
    for (const auto& [step, shown] : std::vector<std::pair<std::string, std::size_t>>{
             {"cmdConferma!", 1}, {"cmdAnnulla!", 0}, {"key:=Escape", 0}, {"key:=Alt+F4", 0}, {"key:=F3", 0}}) {
        SCOPED_TRACE(step);
        const HostRun run = clinic.Run({"txtPath=" + clinic.out, "in:frmSelectFile", step, "end:", "cmdVisualizza!"});
        EXPECT_EQ(run.Of("run").size(), shown);
        EXPECT_EQ(run.Of("closed").size(), 2U);
    }
    // F3 goes nowhere: the dialog takes its next step.
    const HostRun swallowed = clinic.Run(
        {"txtPath=" + clinic.out, "in:frmSelectFile", "key:txtPath=F3", "cmdConferma!", "end:", "cmdVisualizza!"});
    EXPECT_EQ(swallowed.Of("run").size(), 1U);
}

TEST(FileSelectionTest, BrowsesForTextFilesFromTheDestination) {
    ServiceClinic clinic;
    clinic.Create({});
    const HostRun run = clinic.Run({"txtPath=" + clinic.out, "answer:/some/file.txt", "in:frmSelectFile",
                                    "key:txtPath=Ctrl+R", "txtPath?", "end:", "cmdVisualizza!"});
    EXPECT_EQ(
        run.Of("choose"),
        std::vector{
            R"({"event":"choose","kind":"file","filter":"All files (*.*)|*.*|ASL files|*.txt","filterIndex":2,"folder":")" +
            clinic.out + R"(","fileName":"2010311M.txt","answer":"/some/file.txt"})"});
    EXPECT_EQ(StateOf(run, "txtPath", "value"), "\"/some/file.txt\"");
}

}  // namespace
}  // namespace vlm::test
