#include "support/ToolkitContract.h"

#include <sstream>

#include "console/ConsoleToolkit.h"
#include "console/JsonEventLog.h"
#include "support/SampleDialog.h"
#include "support/TempFolder.h"
#include "support/WindowUser.h"
#include "support/Words.h"

/// The same dialog, the same steps: through the console, and through windows by mouse and keys.
namespace vlm::ui::test {

namespace {

using vlm::test::WordsOf;
using vlm::test::operator+;
using Words = std::vector<std::string>;
using Arrange = std::function<void(SampleDialog&, Toolkit&)>;

/// The events of a script, and which handlers ran, in order. Typing changes a text letter by letter, and every key
/// comes up again.
Words Outcome(Toolkit& toolkit, const std::ostringstream& out, const Arrange& arrange) {
    SampleDialog dialog;
    arrange(dialog, toolkit);
    dialog.calls.clear();
    toolkit.ShowModal(dialog);
    Words outcome = WithoutFocus(vlm::test::LinesOf(out.str())) + Words{"and of the handlers"};
    for (const std::string& call : dialog.calls) {
        if (!call.starts_with("up:") && outcome.back() != call) outcome.push_back(call);
    }
    return outcome;
}

void ExpectTheSame(
    const Words& words, const Arrange& arrange = [](SampleDialog&, Toolkit&) {}) {
    std::ostringstream told, seen;
    JsonEventLog consoleLog(told), windowLog(seen);
    ConsoleToolkit console(ConsoleScript(words), consoleLog);
    const std::unique_ptr<Toolkit> user = ToolkitContract::GetParam().makeUser(words, windowLog);
    EXPECT_EQ(Outcome(*user, seen, arrange), Outcome(console, told, arrange)) << testing::PrintToString(words);
}

const Arrange kFilled = [](SampleDialog& dialog, Toolkit&) { dialog.Fill(); };

TEST_P(ToolkitContract, EveryKindOfControlIsSetAndToldAsOnTheConsole) {
    const Words steps =
        Words{"txtNome=C:\\a \"b\"=è!?"} +
        WordsOf(
            "txtNome= txtParola=segreta numAnno=2012 numAnno= numPeso=-2,5 numPeso=9,25 dtData=1/2/2012 "
            "dtData=29/02/2012 dtData= chkSimula=1 chkSimula=0 optTipo=1 optTipo=#0 lstMese=#0 lstMese=Febbraio "
            "lstMese=#-1 cboBranca=9 cboBranca=#0 cboBranca=#-1 lstTipi=2,0 lstTipi= lstTipi=1 grdElenco!2 "
            "grdElenco!1");
    for (const std::string& step : steps) {
        const Words words{step, step.substr(0, step.find_first_of("=!")) + "?"};
        ExpectTheSame(words);
        ExpectTheSame(words, kFilled);
    }
    const SampleDialog names;
    Words states;
    for (const Control* control : names.Controls()) states.push_back(control->Name() + "?");
    ExpectTheSame(states, kFilled);
    ExpectTheSame(states, [](SampleDialog& dialog, Toolkit&) {
        dialog.fraDati.SetVisible(false);
        dialog.grdElenco.SetModel(nullptr);
        dialog.lstMese.SetItems({});
    });
}

TEST_P(ToolkitContract, HandlersThatChangeOtherControlsAreFollowed) {
    ExpectTheSame(WordsOf("chkSimula=1 fraDati? txtNascosto? txtNascosto=dentro txtFermo=x cmdApri? optTipo=1 "
                          "lstMese? lstMese=#2 numAnno? lblInfo? grdElenco!1 grdElenco?"),
                  [](SampleDialog& dialog, Toolkit&) {
                      dialog.chkSimula.OnChange = [&dialog] {
                          dialog.txtNome.SetVisible(false);
                          dialog.txtNascosto.SetVisible(true);
                          dialog.txtFermo.SetEnabled(true);
                          dialog.cmdApri.SetCaption("&Altro ...");
                          dialog.cmdApri.SetEnabled(false);
                      };
                      dialog.optTipo.OnChange = [&dialog] { dialog.lstMese.SetItems({"Uno", "Due", "Tre"}); };
                      dialog.lstMese.OnChange = [&dialog] {
                          dialog.numAnno.SetValue(2020);
                          dialog.lblInfo.SetCaption("Cambiato & fatto");
                          dialog.model->cells.erase(dialog.model->cells.begin());
                          dialog.grdElenco.Refresh();
                      };
                  });
}

TEST_P(ToolkitContract, KeysReachTheDialogAlike) {
    for (const std::string& key :
         WordsOf("key:txtNome=Escape key:=Escape key:=Alt+F4 key:txtNome=F3 key:cboBranca=Return key:cmdApri=Return "
                 "key:txtNome=F1 key:=Alt+A key:=Alt+S key:=Alt+F key:txtNome=Ctrl+R key:txtNome=Alt+O "
                 "key:grdElenco=Escape key:lstTipi=Return")) {
        ExpectTheSame({key, "chkSimula?"});
    }
    // A preview that swallows a key takes it for something else.
    for (const Key swallowed : {kKeyF3, kKeyEscape, kKeyReturn}) {
        ExpectTheSame(WordsOf("key:txtNome=F3 key:txtNome=Return key:txtNome=Escape"),
                      [swallowed](SampleDialog& dialog, Toolkit&) {
                          dialog.onPreview = [swallowed, &dialog](KeyEvent& event) {
                              dialog.calls.push_back("preview " + std::to_string(event.code));
                              if (event.code == swallowed) event.Swallow();
                          };
                      });
    }
}

TEST_P(ToolkitContract, EveryWayOfClosingRunsClosedOnce) {
    for (const char* steps : {"", "cmdOk!", "cmdChiudi!", "cmdChiudi! txtNome=a", "key:cmdChiudi=Return"}) {
        ExpectTheSame(WordsOf(steps));
    }
    ExpectTheSame({"cmdOk!"}, [](SampleDialog& dialog, Toolkit&) { dialog.onFrameClose = [] {}; });
    ExpectTheSame({"cmdOk!"}, [](SampleDialog& dialog, Toolkit&) { dialog.onOpening = [&dialog] { dialog.Close(); }; });
}

TEST_P(ToolkitContract, MessagesChoosersAndNestedDialogsAnswerAlike) {
    const vlm::test::TempFolder folder;
    vlm::test::WriteBytes(folder / "scelto.txt", "x");
    const Arrange arrange = [](SampleDialog& dialog, Toolkit& toolkit) {
        dialog.cmdOk.OnChange = [&dialog, &toolkit] {
            const HourglassScope hourglass(toolkit);
            const Answer answer = toolkit.Show({"Una riga\r\ndue < 3", "Attenzione!", Icon::Question, Buttons::YesNo});
            toolkit.Show({"Fatto", "Aldra", Icon::Information, Buttons::Ok});
            dialog.txtNome.SetText(answer == Answer::Yes ? "sì" : "no");
        };
        dialog.cmdApri.OnChange = [&dialog, &toolkit] {
            if (const auto file = toolkit.ChooseFile({"All files (*.*)|*.*|Testi|*.txt", 2, "txt", "", ""})) {
                dialog.txtNome.SetText(*file);
            }
            if (const auto chosen = toolkit.ChooseFolder("")) dialog.txtParola.SetText(*chosen);
            SampleDialog inner("frmInterna");
            toolkit.ShowModal(inner);
            dialog.calls.push_back("inner " + inner.txtNome.Text());
        };
    };
    ExpectTheSame({"answer:yes", "cmdOk!", "txtNome?", "cmdOk!", "txtNome?", "answer:no", "cmdOk!"}, arrange);
    ExpectTheSame({"answer:" + (folder / "scelto.txt"), "answer:" + folder.Path().string(), "in:frmInterna",
                   "txtNome=dentro", "cmdChiudi!", "end:", "cmdApri!", "txtNome?", "txtParola?"},
                  arrange);
    ExpectTheSame({"answer:cancel", "cmdApri!", "txtNome?"}, arrange);
    ExpectTheSame({"answer:" + (folder / "nuovo.txt"), "cmdApri!", "txtNome?"}, arrange);
}

}  // namespace
}  // namespace vlm::ui::test
