#include <gtest/gtest.h>
#include <sstream>

#include "console/ConsoleToolkit.h"
#include "console/JsonEventLog.h"
#include "support/Caught.h"
#include "support/SampleDialog.h"
#include "support/Words.h"

namespace vlm::ui::test {
namespace {

using vlm::test::WordsOf;
using Words = std::vector<std::string>;

const std::string kOpened = R"({"event":"dialog","name":"frmProva","title":"Finestra di prova"})" + std::string("\n");
const std::string kClosed = R"({"event":"closed","name":"frmProva"})" + std::string("\n");

/// A dialog that is shown to a script, and what comes of it.
struct Desk {
    explicit Desk(const Words& words) : toolkit(ConsoleScript(words), log) {}
    explicit Desk(const char* words) : Desk(WordsOf(words)) {}

    /// The script's sentence; "" when it went through.
    std::string Show() { return Show(dialog); }
    std::string Show(Dialog& shown) {
        try {
            toolkit.ShowModal(shown);
            return {};
        } catch (const ScriptError& error) {
            return error.what();
        }
    }
    std::string Unused() const {
        std::ostringstream unused;
        toolkit.ReportUnused(unused);
        return unused.str();
    }
    /// The events between the opening and the closing of the dialog; all of them where it did not open and close.
    std::string Events() const {
        const std::string all = out.str();
        if (!all.starts_with(kOpened) || !all.ends_with(kClosed)) return all;
        return all.substr(kOpened.size(), all.size() - kOpened.size() - kClosed.size());
    }

    std::ostringstream out;
    JsonEventLog log{out};
    ConsoleToolkit toolkit;
    SampleDialog dialog;
};

constexpr const char* kOptions = R"(2,"items":[{"key":0,"text":"Mensile"},{"key":1,"text":"Trimestrale"}])";
constexpr const char* kMonths = R"(2,"items":[{"key":0,"text":"Gennaio"},{"key":1,"text":"Febbraio"}])";
constexpr const char* kBranches = R"(2,"items":[{"key":4,"text":"Cardiologia"},{"key":9,"text":"Radiologia \"A\""}])";
constexpr const char* kKinds = R"(3,"items":[{"key":0,"text":"Inserimento"},{"key":1,"text":"Variazione"},)"
                               R"({"key":2,"text":"Cancellazione"}])";
constexpr const char* kGrid = R"(2,"columns":[{"name":"Importa","title":"Importa","width":40,"visible":true},)"
                              R"({"name":"Cognome","title":"Cognome","width":100,"visible":true},)"
                              R"({"name":"IDPaziente","title":"","width":0,"visible":false}],)"
                              R"("cells":[["1","ROSSI","12"],["0","NICOLÒ","7"]],"current":2)";

TEST(ConsoleToolkit, EveryKindOfControlIsSetAndTold) {
    struct Case {
        const char* step;
        const char* value;       // the state's value and text
        const char* rest = "0";  // from its number of rows on
        const char* reach = R"("enabled":true,"visible":true)";
    };
    for (const Case& each : {Case{"txtNome=C:\\a \"b\"=è?!", R"("C:\\a \"b\"=è?!","text":"C:\\a \"b\"=è?!")"},
                             Case{"TXTNOME=", R"("","text":"")"},
                             Case{"numAnno=2012", R"(2012,"text":"2012")"},
                             Case{"numAnno=", R"(0,"text":"")"},
                             Case{"numPeso=-2,5", R"(-2.5,"text":"-2,50")"},
                             Case{"dtData=1/2/2012", R"("01/02/2012","text":"01/02/2012")"},
                             Case{"dtData=", R"("","text":"")"},
                             Case{"chkSimula=1", R"(1,"text":"1")"},
                             Case{"optTipo=1", R"(1,"text":"Trimestrale")", kOptions},
                             Case{"optTipo=#0", R"(0,"text":"Mensile")", kOptions},
                             Case{"lstMese=#0", R"(0,"text":"Gennaio")", kMonths},
                             Case{"lstMese=febbraio", R"(1,"text":"Febbraio")", kMonths},
                             Case{"lstMese=#-1", R"(-1,"text":"")", kMonths},
                             Case{"cboBranca=9", R"(9,"text":"Radiologia \"A\"")", kBranches},
                             Case{"cboBranca=#0", R"(4,"text":"Cardiologia")", kBranches},
                             Case{"cboBranca=#-1", R"(0,"text":"")", kBranches},
                             Case{"cboBranca=", R"(0,"text":"")", kBranches},
                             Case{"lstTipi=2,0", R"([0,2],"text":"Inserimento, Cancellazione")", kKinds},
                             Case{"lstTipi=", R"([],"text":"")", kKinds},
                             Case{"grdElenco!2", R"("","text":"")", kGrid},
                             Case{"grdVuota?", R"("","text":"")", R"(0,"columns":[],"cells":[],"current":0)"},
                             Case{"lblInfo?", R"("","text":"Totale: 2")"},
                             Case{"fraDati?", R"("","text":"")"},
                             Case{"cmdApri?", R"("","text":"")"},
                             Case{"prgLettura?", R"(40,"text":"40")"},
                             Case{"txtNascosto?", R"("","text":"")", "0", R"("enabled":true,"visible":false)"},
                             Case{"txtFermo?", R"("","text":"")", "0", R"("enabled":false,"visible":true)"}}) {
        const std::string step = each.step;
        SCOPED_TRACE(step);
        SampleDialog dialog;
        Grid empty(dialog, "grdVuota");
        dialog.Fill();
        const Control& control = *dialog.Find(step.substr(0, step.find_first_of("=!?")));
        const bool asks = step.back() == '?';
        Desk desk(asks ? Words{step} : Words{step, control.Name() + "?"});
        EXPECT_EQ(desk.Show(dialog), "");
        EXPECT_EQ(desk.Events(), R"({"event":"state","name":")" + control.Name() + R"(","value":)" + each.value + "," +
                                     each.reach + R"(,"caption":")" + control.Caption() + R"(","rows":)" + each.rest +
                                     "}\n");
        EXPECT_EQ(dialog.calls, WordsOf((asks ? "" : control.Name()) + " FrameClose Closed"));
        EXPECT_EQ(desk.Unused(), "");
    }
}

TEST(ConsoleToolkit, StepsThatCannotBeDoneCloseTheDialogAndSaySo) {
    constexpr std::string_view kChooser = "vuole un percorso oppure cancel";
    const std::pair<const char*, std::string_view> cases[] = {
        {"txtAltro=1 txtAltro! txtAltro? key:txtAltro=F3", "non ha un controllo"},
        {"txtNascosto=1 key:txtNascosto=F3", "nascosto"},
        {"txtFermo=1 chkFermo=1 key:txtFermo=F3", "disattivato"},
        {"cmdOk=1 lblInfo=1 fraDati=1 grdElenco=1 prgLettura=1", "non prende un valore"},
        {"txtNome!", "non è un pulsante"},
        {"txtNome!1", "non è una griglia"},
        {"grdElenco!3", "ha 2 righe"},
        {"numAnno=1899", "tra 1900 e 2100"},
        {"numAnno=2012,5", "al più 0 decimali"},
        {"numAnno=venti", "non è un numero"},
        {"dtData=30/02/2012 dtData=domani", "non è una data"},
        {"chkSimula=2 chkSimula=", "0 oppure 1"},
        {"optTipo=2 lstMese=#2 cboBranca=#2", "la posizione 2 non c'è"},
        {"lstMese=#-2", "la posizione -2 non c'è"},
        {"lstTipi=0,3", "la posizione 3 non c'è: le posizioni vanno da 0 a 2"},
        {"optTipo=Mensile lstMese=# lstTipi=0,-1 lstTipi=0,,1", "non è una posizione"},
        {"lstMese=1 cboBranca=Urologia", "non ha la voce"},
        {"cboBranca=5", "non ha la chiave 5"},
        {"lstTipi=0,", "manca una posizione"},
        {"answer:C:\\dati answer:cancel answer:ok", "vuole yes oppure no"},
        {"answer:yes answer:no answer:ok", kChooser},
    };
    for (const auto& [steps, reason] : cases) {
        for (const std::string& step : WordsOf(steps)) {
            Desk desk({step, "cmdOk!"});
            desk.dialog.cmdOk.OnChange = [&desk, chooses = reason == kChooser] {
                chooses ? (void)desk.toolkit.ChooseFolder("")
                        : (void)desk.toolkit.Show({"Procedere?", "", Icon::None, Buttons::YesNo});
            };
            const std::string sentence = desk.Show();
            EXPECT_NE(sentence.find(reason), std::string::npos) << step << ": " << sentence;
            EXPECT_NE(sentence.find("\"" + step + "\""), std::string::npos) << sentence;
            EXPECT_EQ(desk.Events(), "") << step;
            EXPECT_EQ(desk.dialog.calls, Words{"Closed"}) << step << " must change nothing and close once";
            EXPECT_EQ(desk.Unused(), "") << "after a failure its sentence stands alone";
            EXPECT_EQ(desk.toolkit.Failure()->what(), sentence);
        }
    }
}

TEST(ConsoleToolkit, ControlsInAHiddenOrDisabledFrameAreOutOfReach) {
    Desk hidden("numAnno=2012"), disabled("numAnno=2012");
    hidden.dialog.fraDati.SetVisible(false);
    disabled.dialog.fraDati.SetEnabled(false);
    EXPECT_NE(hidden.Show().find("nascosto"), std::string::npos);
    EXPECT_NE(disabled.Show().find("disattivato"), std::string::npos);
}

TEST(ConsoleToolkit, EveryStepRunsItsHandlersAndEveryWayOfClosingRunsClosedOnce) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [steps, calls] :
         {Case{"", "FrameClose Closed"}, Case{"cmdOk!", "cmdOk FrameClose Closed"}, Case{"cmdChiudi!", "Closed"},
          Case{"grdElenco!2 grdElenco!2 grdElenco!", "grdElenco grdElenco FrameClose Closed"},
          Case{"key:=Escape", "Closed"}, Case{"key:=Esc", "Closed"}, Case{"key:=Alt+F4", "FrameClose Closed"},
          Case{"key:txtNome=Ctrl+R", "up:txtNome:82:2 FrameClose Closed"},
          Case{"key:TXTNOME=r", "up:txtNome:82:0 FrameClose Closed"}, Case{"key:=F3", "up:-:114:0 FrameClose Closed"},
          Case{"key:=F12", "up:-:123:0 FrameClose Closed"}, Case{"key:=Shift+Tab", "up:-:9:1 FrameClose Closed"},
          Case{"key:=Ctrl+Alt+7", "up:-:55:6 FrameClose Closed"},
          Case{"key:=Enter", "cmdOk up:-:13:0 FrameClose Closed"}, Case{"key:=F1", "Help up:-:112:0 FrameClose Closed"},
          Case{"key:=Alt+A", "cmdOk up:-:65:4 FrameClose Closed"},
          Case{"key:=Alt+S", "chkSimula up:-:83:4 FrameClose Closed"},
          // The check box of that letter is disabled.
          Case{"key:=Alt+F", "cmdApri up:-:70:4 FrameClose Closed"}, Case{"key:=Alt+Z", "up:-:90:4 FrameClose Closed"},
          // With another modifier these are no keys of every dialog's.
          Case{"key:=F4", "up:-:115:0 FrameClose Closed"}, Case{"key:=Alt+Esc", "up:-:27:4 FrameClose Closed"},
          Case{"key:=Ctrl+Enter", "up:-:13:2 FrameClose Closed"}}) {
        Desk desk(steps);
        EXPECT_EQ(desk.Show(), "");
        EXPECT_EQ(desk.dialog.calls, WordsOf(calls)) << steps;
        EXPECT_EQ(desk.Events(), "");
        EXPECT_EQ(desk.Unused(), "");
    }
    for (const char* key : {"key:=Alt+A", "key:=Esc", "key:=Enter", "key:=F1", "key:=Alt+F4"}) {
        Desk desk(key);
        desk.dialog.onPreview = [](KeyEvent& event) { event.Swallow(); };
        desk.Show();
        desk.dialog.calls.front().resize(5);
        EXPECT_EQ(desk.dialog.calls, WordsOf("up:-: FrameClose Closed")) << key;
    }
}

TEST(ConsoleToolkit, DialogsThatWillNotGoOrNeverCameAreEndedToo) {
    Desk stubborn("cmdOk!");
    stubborn.dialog.onFrameClose = [] {};
    EXPECT_EQ(stubborn.Show(), "");
    EXPECT_TRUE(stubborn.dialog.IsClosing());
    EXPECT_EQ(stubborn.dialog.calls, WordsOf("cmdOk FrameClose Closed"));

    Desk shy("cmdOk!");
    shy.dialog.onOpening = [&] { shy.dialog.Close(); };
    EXPECT_EQ(shy.Show(), "");
    EXPECT_EQ(shy.dialog.calls, Words{"Closed"});
    EXPECT_EQ(shy.out.str(), "") << "it was never seen";
    EXPECT_NE(shy.Unused().find("cmdOk!"), std::string::npos);
}

TEST(ConsoleToolkit, ErrorsOfHandlersCloseTheDialogsAndGoThrough) {
    Desk desk("cmdApri!");
    SampleDialog inner("frmInterna");
    desk.dialog.cmdApri.OnChange = [&] { desk.toolkit.ShowModal(inner); };
    inner.onFrameClose = [] { throw Error("rotto"); };
    inner.onClosed = [] { throw std::runtime_error("secondo errore"); };
    EXPECT_EQ(vlm::test::CaughtText([&] { desk.Show(); }), "rotto");
    EXPECT_EQ(inner.calls, WordsOf("FrameClose Closed"));
    EXPECT_EQ(desk.dialog.calls, Words{"Closed"});
    EXPECT_EQ(desk.Events(), R"({"event":"dialog","name":"frmInterna","title":"Finestra di prova"}
{"event":"closed","name":"frmInterna"}
)");
    EXPECT_EQ(desk.toolkit.Failure(), nullptr);
}

TEST(ConsoleToolkit, FailuresInsideANestedDialogCloseAllAndCannotBeSwallowed) {
    Desk desk("in:frmInterna txtNome=a txtAltro=1 end: cmdApri! txtNome=dopo");
    SampleDialog inner("frmInterna");
    desk.dialog.cmdApri.OnChange = [&] {
        try {
            desk.toolkit.ShowModal(inner);
        } catch (const std::exception& error) {  // as the operations of a component do
            EXPECT_THROW(desk.toolkit.Show({error.what(), "Errore", Icon::Critical, Buttons::Ok}), ScriptError);
        }
    };
    EXPECT_NE(desk.Show().find("txtAltro=1"), std::string::npos);
    EXPECT_EQ(inner.calls, WordsOf("txtNome Closed"));
    EXPECT_EQ(desk.dialog.calls, Words{"Closed"}) << "a failed script goes no further";
    EXPECT_EQ(desk.out.str().find("message"), std::string::npos) << desk.out.str();
}

TEST(ConsoleToolkit, EachDialogTakesTheStepsThatAreItsOwn) {
    struct Case {
        const char *steps, *calls, *unused, *second = "";  // the name that a second main dialog has in the end
    };
    for (const Case& each :
         {// A block is there from its own step on, not before.
          Case{"in:frmInterna txtNome=uno txtNome? cmdChiudi! end: in:FRMINTERNA txtNome=due end: cmdApri! cmdApri! "
               "cmdApri! in:frmInterna txtNome=tre end: in:frmMai end:",
               "frmInterna=uno frmInterna=due frmInterna= FrameClose Closed",
               "Passi non usati, perché la finestra frmInterna non si è aperta: in:frmInterna txtNome=... end:\n"
               "Passi non usati, perché la finestra frmMai non si è aperta: in:frmMai end:\n"},
          Case{"in:frmInterna in:frmTerza txtNome=dentro end: cmdApri! txtNome=fuori end: cmdApri!",
               "frmTerza=dentro frmInterna=fuori FrameClose Closed", ""},
          Case{"cmdChiudi! txtNome=resto answer:yes in:frmAltra cmdOk! end:", "Closed",
               "Passi non eseguiti, perché la finestra frmProva era già chiusa: txtNome=... answer:yes in:frmAltra "
               "cmdOk! end:\n"},
          // A dialog in another one never takes the main steps.
          Case{"in:frmProva cmdApri! end: txtNome=x", "frmInterna= FrameClose Closed",
               "Passi non eseguiti, perché non si è aperta nessuna finestra: txtNome=x\n", "x"}}) {
        Desk desk(each.steps);
        const auto opens = [&desk](const char* name, const std::function<void()>& next) {
            return [&desk, name, next] {
                SampleDialog inner(name);
                inner.cmdApri.OnChange = next;
                desk.toolkit.ShowModal(inner);
                desk.dialog.calls.push_back(name + ("=" + inner.txtNome.Text()));
            };
        };
        desk.dialog.cmdApri.OnChange = opens("frmInterna", opens("frmTerza", nullptr));
        EXPECT_EQ(desk.Show(), "");
        EXPECT_EQ(desk.dialog.calls, WordsOf(each.calls));
        EXPECT_EQ(desk.Unused(), each.unused);
        SampleDialog second;
        desk.Show(second);
        EXPECT_EQ(second.txtNome.Text(), each.second);
    }
    EXPECT_EQ(Desk("in:frmProva end: cmdOk!").Unused(),
              "Passi non eseguiti, perché non si è aperta nessuna finestra: cmdOk!\n"
              "Passi non usati, perché la finestra frmProva non si è aperta: in:frmProva end:\n");
}

std::string Told(const std::string& text, const char* icon, const char* buttons, const char* answer) {
    return R"({"event":"message","text":")" + text + R"(","caption":"Aldra","icon":")" + icon + R"(","buttons":")" +
           buttons + R"(","answer":")" + answer + "\"}\n";
}

TEST(ConsoleToolkit, MessagesTakeTheirAnswersInOrder) {
    Desk desk("answer:yes cmdOk! cmdOk! answer:OK answer:No cmdOk! answer:yes");
    desk.dialog.cmdOk.OnChange = [&] {
        desk.toolkit.Show({"Fatto.\r\nVedi \"file\"", "Aldra", Icon::Information, Buttons::Ok});
        desk.toolkit.Show({"Procedere?", "Aldra", Icon::Question, Buttons::YesNo});
    };
    desk.dialog.onOpening = desk.dialog.cmdOk.OnChange;  // the answers at a script's head are there already
    EXPECT_EQ(desk.Show(), "");
    const std::string plain = Told(R"(Fatto.\r\nVedi \"file\")", "information", "ok", "ok");
    const std::string no = plain + Told("Procedere?", "question", "yesno", "no");
    EXPECT_EQ(desk.out.str(),
              plain + Told("Procedere?", "question", "yesno", "yes") + kOpened + no + no + no + kClosed);
    EXPECT_EQ(desk.Unused(), "Risposta non usata: answer:yes\n");

    Desk icons("");
    for (const Icon icon : {Icon::None, Icon::Critical, Icon::Exclamation}) {
        icons.toolkit.Show({"", "Aldra", icon, Buttons::Ok});
    }
    EXPECT_EQ(icons.out.str(),
              Told("", "none", "ok", "ok") + Told("", "critical", "ok", "ok") + Told("", "exclamation", "ok", "ok"));
}

TEST(ConsoleToolkit, ChoosersTakeAPathOrCancel) {
    Desk desk(R"(answer:C:\dati\a.csv cmdOk! answer:cancel answer:C:\dati cmdOk! cmdOk!)");
    desk.dialog.cmdOk.OnChange = [&] {
        const auto file = desk.toolkit.ChooseFile({"Tutti|*.*", 1, "csv", "C:\\x", "f.csv"});
        const auto folder = desk.toolkit.ChooseFolder("C:\\y");
        desk.dialog.calls.push_back(file.value_or("-") + " " + folder.value_or("-"));
    };
    EXPECT_EQ(desk.Show(), "");
    EXPECT_EQ(desk.dialog.calls, (Words{"C:\\dati\\a.csv -", "- C:\\dati", "- -", "FrameClose", "Closed"}));
    const std::string file = R"({"event":"choose","kind":"file","filter":"Tutti|*.*","filterIndex":1,)"
                             R"("folder":"C:\\x","fileName":"f.csv","answer":")";
    const std::string folder = R"({"event":"choose","kind":"folder","filter":"","filterIndex":0,"folder":"C:\\y",)"
                               R"("fileName":"","answer":")";
    const std::string cancel = "cancel\"}\n";
    EXPECT_EQ(desk.Events(), file + R"(C:\\dati\\a.csv"})" + "\n" + folder + cancel + file + cancel + folder +
                                 R"(C:\\dati"})" + "\n" + file + cancel + folder + cancel);
}

TEST(ConsoleToolkit, EventsStandInTheOrderTheyHappen) {
    Desk desk("cmdOk! help:");
    LoggedProgramStarter starter(desk.log);
    desk.dialog.cmdOk.OnChange = [&] {
        const HourglassScope hourglass(desk.toolkit);
        desk.dialog.prgLettura.SetVisible(false);
        for (const int percent : {10, 10, 100, 0}) desk.dialog.prgLettura.SetValue(percent);
        desk.dialog.txtNome.SetFocus();
        starter.Start(std::string("\x00\x1f\b\t\\/\"è\xff\x7f", 11) + "€");
        desk.log.Help(5920);
    };
    EXPECT_EQ(desk.Show(), "");
    EXPECT_EQ(desk.Events(), R"({"event":"pointer","shape":"hourglass"}
{"event":"progress","value":10}
{"event":"progress","value":100}
{"event":"progress","value":0}
{"event":"focus","name":"txtNome"}
{"event":"run","command":"\u0000\u001f\u0008\t\\/\"è)"
                             "\uFFFD\x7f€"
                             R"("}
{"event":"help","context":5920}
{"event":"pointer","shape":"normal"}
)");
    EXPECT_EQ(desk.dialog.calls, WordsOf("prgLettura prgLettura prgLettura Help FrameClose Closed"));
}

TEST(ConsoleScript, WordsThatAreNoStepsAreRefusedByName) {
    std::vector<Words> scripts{
        {"in:frmA", "cmdOk!"}, {"in:frmA", "in:frmB", "end:"}, {"end:", "cmdOk!"}, {"in:frm A", "end:"}, {""},
        {"txt Nome=3"}};
    for (const std::string& word : WordsOf("in: cmdOk =3 kay:txtNome=F3 cmdOk?! grdElenco!0 grdElenco!-1 grdElenco!1a "
                                           "grdElenco!99999999999 answer: help:5 key:F3 key:= key:=F13 key:=F0 "
                                           "key:=F01 key:=Ctrl+ key:=Super+R key:=RR")) {
        scripts.push_back({word});
    }
    for (const Words& words : scripts) {
        try {
            ParseSteps(words);
            ADD_FAILURE() << "accepted: " << words[0];
        } catch (const ScriptError& error) {
            EXPECT_NE(std::string(error.what()).find('"' + words[0] + '"'), std::string::npos) << error.what();
        }
    }
}

TEST(ConsoleScript, StepsAreToldAsTheyWereWritten) {
    const std::string words = "txtNome=a=b! in:frmA in:frmB end: cmdOk! end: help: g!3";
    EXPECT_EQ(Wording(ParseSteps(WordsOf(words))), words);
}

}  // namespace
}  // namespace vlm::ui::test
