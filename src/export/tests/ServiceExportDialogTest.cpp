#include <gtest/gtest.h>

#include "support/Events.h"
#include "support/Words.h"

namespace vlm::test {
namespace {

TEST(ServiceExportDialogTest, ProposesThePeriodBeforeToday) {
    for (const std::string proposal :
         {"2011-01-01 12 2010 3 2010", "2011-02-28 1 2011 3 2010", "2011-03-31 2 2011 3 2010",
          "2011-04-01 3 2011 0 2011", "2011-05-15 4 2011 0 2011", "2011-06-30 5 2011 0 2011",
          "2011-07-01 6 2011 1 2011", "2011-10-01 9 2011 2 2011", "2011-12-31 11 2011 2 2011"}) {
        ServiceClinic clinic;
        clinic.today = proposal.substr(0, 10);
        clinic.Create({});
        const HostRun run = clinic.Run(WordsOf("cboMese? numAnno? cboTrimestre? numAnnoTrimestre?"));
        EXPECT_EQ(clinic.today + " " + StatesOf(run, "value"), proposal);
    }
}

TEST(ServiceExportDialogTest, ShowsAndEnablesWhatTypeAndRegionAllow) {
    const Lines controls = WordsOf(
        "fraTipoExport? optTipoExport? cboMese? numAnno? cboTrimestre? numAnnoTrimestre? chkIncludiElaborate? "
        "chkIncludiPrecedenti? cboBranca? cboSpecialista? lstTipoOperazione? txtPath? cmdLink? chkVisualizza? "
        "chkSimulazione? cmdConferma? cmdVisualizza? cmdAnnulla?");
    const std::string others(10, '+');
    for (const int region : {19, 13, 0}) {
        SCOPED_TRACE(region);
        const bool puglia = region == 13;
        ServiceClinic clinic;
        clinic.idRegioneTariffario = region;
        clinic.Create({});
        const HostRun monthly = clinic.Run(controls);
        EXPECT_EQ(FlagsOf(monthly, "visible"), "++++--++" + others);
        EXPECT_EQ(FlagsOf(monthly, "enabled"), (puglia ? "--++--+-" : "++++++++") + others);
        EXPECT_EQ(StateOf(monthly, "cboBranca", "value"), puglia ? "0" : "1");
        const HostRun quarterly = clinic.Run(WordsOf("optTipoExport=1") + controls);
        EXPECT_EQ(quarterly.status, puglia ? 2 : 0);
        EXPECT_EQ(FlagsOf(quarterly, "visible"), puglia ? "" : "++--++--" + others);
    }
}

TEST(ServiceExportDialogTest, TheBranchFillsTheSpecialists) {
    ServiceClinic clinic(kNoRows);
    const HostRun first = clinic.Run({"cboSpecialista?"});
    EXPECT_EQ(StateOf(first, "cboSpecialista", "items"),
              R"([{"key":8,"text":"Bianchi Ugo"},{"key":7,"text":"Rossi Anna"})");
    // The only specialist of a branch is chosen; choosing a branch again clears the choice.
    EXPECT_EQ(StatesOf(clinic.Run(WordsOf("cboSpecialista? cboBranca=2 cboSpecialista? cboBranca=1 cboSpecialista=7 "
                                          "cboSpecialista? cboBranca=1 cboSpecialista? cboBranca=#-1 cboSpecialista?")),
                       "value"),
              "0 9 7 0 0");
    EXPECT_EQ(StateOf(clinic.Run({"cboBranca=#-1", "cboSpecialista?"}), "cboSpecialista", "rows"), "3");
}

TEST(ServiceExportDialogTest, EveryFailingCheckIsToldAndMovesTheFocus) {
    ServiceClinic clinic(kNoRows);
    const std::string path = FocusEvent("txtPath");
    const std::pair<Lines, Lines> cases[] = {
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

TEST(ServiceExportDialogTest, KeepsTheDestinationThoughAStepCannotBeDoneOrATableIsMissing) {
    ServiceClinic clinic;
    clinic.masterSql = "DROP TABLE Mese;";
    clinic.Create({});
    EXPECT_EQ(clinic.Run({"txtPath=/kept", "cboBranca=99"}).status, 2);
    const HostRun run = clinic.Run({});
    ASSERT_EQ(run.Of("message").size(), 1U);
    EXPECT_NE(run.Of("message").at(0).find("Mese"), std::string::npos);
    EXPECT_NE(ReadBytes(clinic.settings).find("/kept"), std::string::npos);
}

TEST(FileSelectionTest, ProposesTheFileOfThePeriodAndTellsOfIt) {
    ServiceClinic clinic(kNoRows);
    WriteBytes(clinic.out + "/2010111S.txt", std::string(1234567, 'x'));
    using Case = std::tuple<Lines, std::string, std::string>;
    for (const auto& [before, path, visible] :
         {Case{{"optTipoExport=1", "txtPath=" + clinic.out}, clinic.out + "\\2010111S.txt", "+-++++"},
          Case{
              {"cboMese=7", "numAnno=2009", "txtPath= " + clinic.out + "\\ "}, clinic.out + "\\2010709M.txt", "++----"},
          Case{{"txtPath="}, "", "+-----"}}) {
        const HostRun run =
            clinic.Run(before + WordsOf("in:frmSelectFile txtPath? lblNonTrovato? lblData? lblDataValore? "
                                        "lblDimensione? lblDimensioneValore? end: cmdVisualizza!"));
        EXPECT_EQ(StateOf(run, "txtPath", "value"), "\"" + InJson(path) + "\"");
        EXPECT_EQ(FlagsOf(run, "visible"), visible) << path;
        if (visible.back() == '+') {
            EXPECT_EQ(StateOf(run, "lblDimensioneValore", "caption"), "\"1.234.567 bytes\"");
        }
    }
}

TEST(FileSelectionTest, OnlyConfirmingShowsTheFile) {
    ServiceClinic clinic(kNoRows);
    WriteBytes(clinic.out + "/2010311M.txt", "");
    // F3 goes nowhere: the dialog takes its next step.
    for (const auto& [steps, shown] :
         std::vector<std::pair<std::string, std::size_t>>{{"cmdConferma!", 1},
                                                          {"cmdAnnulla!", 0},
                                                          {"key:=Escape", 0},
                                                          {"key:=Alt+F4", 0},
                                                          {"key:=F3", 0},
                                                          {"key:txtPath=F3 cmdConferma!", 1}}) {
        SCOPED_TRACE(steps);
        const HostRun run = clinic.Run(std::vector{"txtPath=" + clinic.out, std::string("in:frmSelectFile")} +
                                       WordsOf(steps) + WordsOf("end: cmdVisualizza!"));
        EXPECT_EQ(run.Of("run").size(), shown);
        EXPECT_EQ(run.Of("closed").size(), 2U);
    }
}

TEST(FileSelectionTest, BrowsesForTextFilesFromTheDestination) {
    ServiceClinic clinic(kNoRows);
    const HostRun run = clinic.Run({"txtPath=" + clinic.out, "answer:/some/file.txt", "in:frmSelectFile",
                                    "key:txtPath=Ctrl+R", "txtPath?", "end:", "cmdVisualizza!"});
    EXPECT_EQ(
        run.Of("choose"),
        std::vector{
            R"({"event":"choose","kind":"file","filter":"All files (*.*)|*.*|ASL files|*.txt","filterIndex":2,"folder":")" +
            InJson(clinic.out) + R"(","fileName":"2010311M.txt","answer":"/some/file.txt"})"});
    EXPECT_EQ(StateOf(run, "txtPath", "value"), "\"/some/file.txt\"");
}

}  // namespace
}  // namespace vlm::test
