#include <gtest/gtest.h>

#include "console/JsonWriter.h"
#include "console/ScriptError.h"
#include "console/ScriptStep.h"

namespace vlm::ui::test {
namespace {

TEST(ConsoleScript, WordsThatAreNoStepsAreRefusedByName) {
    const std::vector<std::pair<std::vector<std::string>, const char*>> cases{
        {{"in:frmA", "cmdOk!"}, "\"in:frmA\""},
        {{"in:frmA", "in:frmB", "end:"}, "\"in:frmA\""},
        {{"cmdOk!", "end:"}, "\"end:\""},
        {{"in:"}, "\"in:\""},
        {{"in:frm A", "end:"}, "\"in:frm A\""},
        {{""}, "\"\""},
        {{"cmdOk"}, "\"cmdOk\""},
        {{"=3"}, "\"=3\""},
        {{"txt Nome=3"}, "\"txt Nome=3\""},
        {{"kay:txtNome=F3"}, "\"kay:txtNome=F3\""},
        {{"cmdOk?!"}, "\"cmdOk?!\""},
        {{"grdElenco!0"}, "\"grdElenco!0\""},
        {{"grdElenco!-1"}, "\"grdElenco!-1\""},
        {{"grdElenco!1a"}, "\"grdElenco!1a\""},
        {{"grdElenco!99999999999"}, "\"grdElenco!99999999999\""},
        {{"answer:"}, "\"answer:\""},
        {{"help:5"}, "\"help:5\""},
        {{"key:F3"}, "\"key:F3\""},
        {{"key:="}, "\"key:=\""},
        {{"key:=F13"}, "\"key:=F13\""},
        {{"key:=F0"}, "\"key:=F0\""},
        {{"key:=F01"}, "\"key:=F01\""},
        {{"key:=Ctrl+"}, "\"key:=Ctrl+\""},
        {{"key:=Super+R"}, "\"key:=Super+R\""},
        {{"key:=RR"}, "\"key:=RR\""},
    };
    for (const auto& [words, named] : cases) {
        try {
            ParseSteps(words);
            ADD_FAILURE() << "accepted: " << named;
        } catch (const ScriptError& error) {
            EXPECT_NE(std::string(error.what()).find(named), std::string::npos) << error.what();
        }
    }
}

TEST(ConsoleScript, StepsAreToldAsTheyWereWritten) {
    const std::vector<std::string> words{
        "txtNome=a=b!", "in:frmA", "in:frmB", "end:", "cmdOk!", "end:", "help:", "g!3"};
    EXPECT_EQ(Wording(ParseSteps(words)), "txtNome=a=b! in:frmA in:frmB end: cmdOk! end: help: g!3");
}

TEST(JsonWriter, EscapesWhatJsonWantsEscapedAndNothingElse) {
    JsonWriter json;
    json.BeginObject().String("a\"", std::string("\x00\x1f\b\t\\/è\xff\x7f", 9) + "€").Number("n", 1e15);
    json.Key("list").BeginArray().Number(-0.5).Boolean(false).BeginObject().EndObject().EndArray().EndObject();
    EXPECT_EQ(json.Json(),
              "{\"a\\\"\":\"\\u0000\\u001f\\u0008\\t\\\\/è\uFFFD€\",\"n\":1000000000000000,"
              "\"list\":[-0.5,false,{}]}");
}

}  // namespace
}  // namespace vlm::ui::test
