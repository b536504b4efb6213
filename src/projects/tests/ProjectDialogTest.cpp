#include <gtest/gtest.h>

#include "ProjectClinic.h"
#include "support/Words.h"

namespace vlm::test {
namespace {

TEST(ProjectDialogTest, OpensWithItsListsAndTheLastDestination) {
    ProjectClinic clinic;
    clinic.teamless = "5";
    clinic.masterSql = "INSERT INTO Studi (IDStudio) VALUES (5), (7);";
    clinic.Create({});
    WriteBytes(clinic.settings, "[Aldra\\Settings]\nASLExportPrestazioni=/kept\n");
    const HostRun run =
        clinic.Show(WordsOf("cboStudio? cboStatoProgetto? cboDaTrimestre? cboATrimestre? numAnno? txtPath? dtFromDate? "
                            "dtToDataFine? chkVisualizza? cmdVisualizza! help:"));
    EXPECT_EQ(StatesOf(run, "value"), R"(0 2 -1 -1 0 "/kept" "" "" 0)");
    EXPECT_EQ(StateOf(run, "cboStudio", "items"), R"([{"key":7,"text":"Centro 7"},{"key":12,"text":"Centro 12"})");
    EXPECT_NE(StateOf(run, "cboStatoProgetto", "items").find("Solo progetti aperti"), std::string::npos);
    EXPECT_EQ(StateOf(run, "cboATrimestre", "rows"), "4");
    EXPECT_EQ(run.events.size(), 11U);  // neither the view button nor the help request does anything
}

TEST(ProjectDialogTest, StopsAtTheFirstFieldThatIsNotRight) {
    ProjectClinic clinic(ProjectClinic::Centres{});
    const HostRun run = clinic.Show(
        {"txtPath=  ", "cmdConferma!", "txtPath=" + clinic.out + "/none", "cmdConferma!", "txtPath= " + clinic.out,
         "cmdConferma!", "numAnno=2011", "cmdConferma!", "cboDaTrimestre=#3", "cmdConferma!", "txtPath=" + clinic.out,
         // Dates and quarters in the wrong order pass.
         "cboATrimestre=#0", "dtFromDate=02/01/2011", "dtToDate=01/01/2011", "cmdConferma!"});
    Lines events = Inside(run);
    std::erase_if(events, [](const std::string& event) { return event.find("\"pointer\"") != std::string::npos; });
    EXPECT_EQ(events, (std::vector{MissingEvent("Destinazione"), FocusEvent("txtPath"), kInvalidPathEvent,
                                   FocusEvent("txtPath"), MissingEvent("Anno"), FocusEvent("numAnno"),
                                   MissingEvent("Da trimestre"), FocusEvent("cboDaTrimestre"),
                                   MissingEvent("A trimestre"), FocusEvent("cboATrimestre"), kConcludedEvent}));
}

TEST(ExportDialogsTest, BrowseForAFolderOnCtrlRAlone) {
    for (const char* component : {"ASLExport", "ExportProgetti"}) {
        ServiceClinic clinic(kNoRows);
        const HostRun run =
            clinic.Run(std::vector{std::string("txtPath= /start ")} +
                           WordsOf("answer:/chosen key:txtPath=R key:txtPath=Ctrl+R txtPath? cmdLink! txtPath?"),
                       component);
        ASSERT_EQ(run.Of("choose").size(), 2U);
        EXPECT_NE(run.Of("choose").at(0).find(R"("kind":"folder")"), std::string::npos);
        EXPECT_NE(run.Of("choose").at(0).find(R"("folder":"/start")"), std::string::npos);
        EXPECT_EQ(StatesOf(run, "value"), R"("/chosen" "/chosen")");  // a cancelled choice changes nothing
    }
}

TEST(ExportDialogsTest, KeepTheDestinationHoweverTheyClose) {
    const std::pair<const char*, const char*> dialogs[] = {
        {"ASLExport", "ASLPath"}, {"ASLPanoramico", "ASLPathPanoramico"}, {"ExportProgetti", "ASLExportPrestazioni"}};
    for (const auto& [component, key] : dialogs) {
        for (const std::string close : {"cmdAnnulla!", "key:=Escape", "key:=Alt+F4", "txtPath?"}) {
            SCOPED_TRACE(component + close);
            ServiceClinic clinic(kNoRows);
            clinic.Run({"txtPath=C:\\Dati ASL\\r.txt", close}, component);
            EXPECT_NE(ReadBytes(clinic.settings).find(key), std::string::npos);
            EXPECT_EQ(StateOf(clinic.Run({"txtPath?"}, component), "txtPath", "value"), "\"C:\\\\Dati ASL\\\\r.txt\"");
            clinic.Run({"txtPath=", close}, component);
            EXPECT_EQ(StateOf(clinic.Run({"txtPath?"}, component), "txtPath", "value"), "\"\"");
        }
    }
}

}  // namespace
}  // namespace vlm::test
