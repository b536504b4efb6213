#include <gtest/gtest.h>

#include "PrescriptionClinic.h"
#include "support/Words.h"

namespace vlm::test {
namespace {

TEST(PrescriptionDialogTest, OpensOnTheFirstBranchWithItsSpecialists) {
    PrescriptionClinic clinic(kNoRows);
    WriteBytes(clinic.settings, "[Aldra\\Settings]\nASLPathPanoramico=/kept/file.txt\n");
    const HostRun run = clinic.Show(
        WordsOf("cboBranca? cboSpecialista? dtFromDate? dtToDate? txtPath? chkVisualizza? cmdVisualizza! help:"));
    EXPECT_EQ(StateOf(run, "cboBranca", "items"), R"([{"key":1,"text":"Cardiologia"},{"key":2,"text":"Oculistica"})");
    EXPECT_EQ(StateOf(run, "cboSpecialista", "items"),
              R"([{"key":8,"text":"Bianchi Ugo"},{"key":7,"text":"Rossi Anna"})");
    EXPECT_EQ(StatesOf(run, "value"), R"(1 0 "" "" "/kept/file.txt" 0)");
    // Neither the view button nor the help request does anything.
    EXPECT_EQ(run.events.size(), 8U);
    // The only specialist is chosen; no branch has none.
    const HostRun others = clinic.Show(WordsOf("cboBranca=2 cboSpecialista? cboBranca=#-1 cboSpecialista?"));
    EXPECT_EQ(StatesOf(others, "value") + " of " + StatesOf(others, "rows"), "9 0 of 1 0");
}

TEST(PrescriptionDialogTest, StopsAtTheFirstFieldThatIsNotRight) {
    PrescriptionClinic clinic({Prescription("1")});
    // Dates in the wrong order and nobody chosen pass; they select nothing.
    const Lines confirmations =
        WordsOf(
            "cboBranca=#-1 cmdConferma! cboBranca=1 cmdConferma! dtFromDate=31/03/2011 cmdConferma! "
            "dtToDate=01/03/2011 cmdConferma!") +
        std::vector{std::string("txtPath=   ")} +
        WordsOf("cmdConferma! txtPath=ricette.txt cmdConferma! txtPath=" + clinic.out +
                "\\none\\ricette.txt cmdConferma! txtPath=" + clinic.out + "\\ricette.txt cmdConferma!");
    const std::string path = FocusEvent("txtPath");
    Lines events = Inside(clinic.Show(confirmations));
    std::erase_if(events, [](const std::string& event) { return event.find("\"pointer\"") != std::string::npos; });
    EXPECT_EQ(events, (std::vector{MissingEvent("Branca"), FocusEvent("cboBranca"), MissingEvent("Da data"),
                                   FocusEvent("dtFromDate"), MissingEvent("A data"), FocusEvent("dtToDate"),
                                   MissingEvent("Destinazione"), path, MissingEvent("Destinazione"), path,
                                   kInvalidPathEvent, path, kInvalidPathEvent, path, kNoDataEvent, kConcludedEvent}));
}

TEST(PrescriptionDialogTest, BrowsesForAFileFromTheNameInTheField) {
    PrescriptionClinic clinic(kNoRows);
    const HostRun run = clinic.Show({"txtPath=\\some\\where\\ricette.txt", "answer:\\chosen\\file.txt", "key:txtPath=R",
                                     "key:txtPath=Ctrl+R", "txtPath?", "cmdLink!", "txtPath?"});
    const auto choice = [](const std::string& name, const std::string& answer) {
        return R"({"event":"choose","kind":"file","filter":"All files (*.*)|*.*|File progetto panoramico|*.txt",)"
               R"("filterIndex":2,"folder":"","fileName":")" +
               name + R"(","answer":")" + answer + "\"}";
    };
    EXPECT_EQ(run.Of("choose"),
              (std::vector{choice("ricette.txt", R"(\\chosen\\file.txt)"), choice("file.txt", "cancel")}));
    ASSERT_EQ(run.Of("state").size(), 2U);
    EXPECT_EQ(run.Of("state").at(0), run.Of("state").at(1));
    EXPECT_EQ(StateOf(run, "txtPath", "value"), R"("\\chosen\\file.txt")");
}

}  // namespace
}  // namespace vlm::test
