#include <gtest/gtest.h>

#include "TextLayout.h"
#include "console/ScriptStep.h"
#include "support/Words.h"

namespace vlm::ui::test {
namespace {

using Words = std::vector<std::string>;

TEST(ConsoleScript, WordsThatAreNoStepsAreRefusedByName) {
    std::vector<std::pair<Words, std::string>> cases{{{"in:frmA", "cmdOk!"}, "in:frmA"},
                                                     {{"in:frmA", "in:frmB", "end:"}, "in:frmA"},
                                                     {{"cmdOk!", "end:"}, "end:"},
                                                     {{"in:frm A", "end:"}, "in:frm A"}};
    for (const char* word : {"",
                             "in:",
                             "cmdOk",
                             "=3",
                             "txt Nome=3",
                             "kay:txtNome=F3",
                             "cmdOk?!",
                             "grdElenco!0",
                             "grdElenco!-1",
                             "grdElenco!1a",
                             "grdElenco!99999999999",
                             "answer:",
                             "help:5",
                             "key:F3",
                             "key:=",
                             "key:=F13",
                             "key:=F0",
                             "key:=F01",
                             "key:=Ctrl+",
                             "key:=Super+R",
                             "key:=RR"}) {
        cases.push_back({{word}, word});
    }
    for (const auto& [words, named] : cases) {
        try {
            ParseSteps(words);
            ADD_FAILURE() << "accepted: " << named;
        } catch (const ScriptError& error) {
            EXPECT_NE(std::string(error.what()).find('"' + named + '"'), std::string::npos) << error.what();
        }
    }
}

TEST(ConsoleScript, StepsAreToldAsTheyWereWritten) {
    const std::string words = "txtNome=a=b! in:frmA in:frmB end: cmdOk! end: help: g!3";
    EXPECT_EQ(Wording(ParseSteps(vlm::test::WordsOf(words))), words);
}

TEST(TextLayout, WrapsAtBlanksAndCutsWithAnEllipsis) {
    EXPECT_EQ(Wrap("uno due tre\r\n\r\nquattro", 7), (Lines{"uno due", "tre", "", "quattro"}));
    EXPECT_EQ(Wrap("lunghissima à b", 3), (Lines{"lunghissima", "à b"}));
    EXPECT_EQ(Wrap("", 5), Lines{""});
    EXPECT_EQ(Fit("città", 5), "città");
    EXPECT_EQ(Fit("cittadina", 5), "citt…");
    EXPECT_EQ(Box("", {"è"}, "fine"), (Lines{"┌──────┐", "│ è    │", "│ fine │", "└──────┘"}));
}

}  // namespace
}  // namespace vlm::ui::test
