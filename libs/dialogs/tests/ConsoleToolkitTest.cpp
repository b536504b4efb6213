#include <gtest/gtest.h>
#include <sstream>

#include "console/ConsoleToolkit.h"
#include "console/JsonEventLog.h"
#include "console/LoggedProgramStarter.h"
#include "support/Caught.h"
#include "support/SampleDialog.h"

namespace vlm::ui::test {
namespace {

using Words = std::vector<std::string>;

/// A toolkit with a script, and what comes of it.
struct Desk {
    explicit Desk(const Words& words) : toolkit(ConsoleScript(words), log) {}

    std::string Unused() const {
        std::ostringstream unused;
        toolkit.ReportUnused(unused);
        return unused.str();
    }
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
    /// The names and texts of the events, one a line, without their other fields.
    std::string Events() const {
        std::istringstream lines(out.str());
        std::string short_, line;
        while (std::getline(lines, line)) short_ += line.substr(10, line.find(',', line.find(',') + 1) - 10) + "\n";
        return short_;
    }

    std::ostringstream out;
    JsonEventLog log{out};
    ConsoleToolkit toolkit;
    SampleDialog dialog;
};

constexpr const char* kOpened = R"({"event":"dialog","name":"frmProva","title":"Finestra di prova"})"
                                "\n";
constexpr const char* kClosed = R"({"event":"closed","name":"frmProva"})"
                                "\n";

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
    };
    const std::vector<Case> cases{
        {"txtNome=C:\\a \"b\"=è!?", R"("C:\\a \"b\"=è!?","text":"C:\\a \"b\"=è!?")"},
        {"TXTNOME=", R"("","text":"")"},
        {"numAnno=2012", R"(2012,"text":"2012")"},
        {"numAnno=", R"(0,"text":"")"},
        {"numPeso=-2,5", R"(-2.5,"text":"-2,50")"},
        {"dtData=1/2/2012", R"("01/02/2012","text":"01/02/2012")"},
        {"dtData=", R"("","text":"")"},
        {"chkSimula=1", R"(1,"text":"1")"},
        {"optTipo=1", R"(1,"text":"Trimestrale")", kOptions},
        {"optTipo=#0", R"(0,"text":"Mensile")", kOptions},
        {"lstMese=#0", R"(0,"text":"Gennaio")", kMonths},
        {"lstMese=febbraio", R"(1,"text":"Febbraio")", kMonths},
        {"lstMese=#-1", R"(-1,"text":"")", kMonths},
        {"cboBranca=9", R"(9,"text":"Radiologia \"A\"")", kBranches},
        {"cboBranca=#0", R"(4,"text":"Cardiologia")", kBranches},
        {"cboBranca=#-1", R"(0,"text":"")", kBranches},
        {"cboBranca=", R"(0,"text":"")", kBranches},
        {"lstTipi=2,0", R"([0,2],"text":"Inserimento, Cancellazione")", kKinds},
        {"lstTipi=", R"([],"text":"")", kKinds},
        {"grdElenco!2", R"("","text":"")", kGrid},
    };
    for (const Case& each : cases) {
        const std::string step = each.step;
        SampleDialog dialog;
        dialog.dtData.SetValue(Date::FromYmd(2000, 1, 1));
        dialog.numAnno.SetValue(1999);
        dialog.txtNome.SetText("prima");
        dialog.lstTipi.SetSelected({1});
        dialog.calls.clear();
        const Control& control = *dialog.Find(step.substr(0, step.find_first_of("=!")));
        Desk desk({step, control.Name() + "?"});
        EXPECT_EQ(desk.Show(dialog), "");
        const std::string state = R"({"event":"state","name":")" + control.Name() + R"(","value":)" + each.value +
                                  R"(,"enabled":true,"visible":true,"caption":")" + control.Caption() + R"(","rows":)" +
                                  each.rest + "}\n";
        EXPECT_EQ(desk.out.str(), kOpened + state + kClosed);
        EXPECT_EQ(dialog.calls, (Words{control.Name(), "FrameClose", "Closed"})) << step;
        EXPECT_EQ(desk.Unused(), "");
    }
}

TEST(ConsoleToolkit, ControlsWithoutValueAndThoseOutOfReachAnswerToo) {
    struct Case {
        const char *name, *value, *reach, *caption;
        const char* rest = "0";
    };
    constexpr const char* kReached = R"("enabled":true,"visible":true)";
    for (const Case& each :
         {Case{"lblInfo", R"("","text":"Totale: 2")", kReached, "Totale: 2"},
          Case{"fraDati", R"("","text":"")", kReached, "Dati"},
          Case{"cmdApri", R"("","text":"")", kReached, "S&foglia ..."},
          Case{"prgLettura", R"(40,"text":"40")", kReached, ""},
          Case{"txtNascosto", R"("","text":"")", R"("enabled":true,"visible":false)", ""},
          Case{"txtFermo", R"("","text":"")", R"("enabled":false,"visible":true)", ""},
          Case{"grdElenco", R"("","text":"")", kReached, "", R"(0,"columns":[],"cells":[],"current":0)"}}) {
        SampleDialog dialog;
        dialog.prgLettura.SetValue(40);
        dialog.grdElenco.SetModel(nullptr);
        Desk desk({each.name + std::string("?")});
        EXPECT_EQ(desk.Show(dialog), "");
        const std::string state = R"({"event":"state","name":")" + std::string(each.name) + R"(","value":)" +
                                  each.value + "," + each.reach + R"(,"caption":")" + each.caption + R"(","rows":)" +
                                  each.rest + "}\n";
        EXPECT_EQ(desk.out.str(), kOpened + state + kClosed);
    }
}

TEST(ConsoleToolkit, StepsThatCannotBeDoneCloseTheDialogAndSaySo) {
    const std::vector<std::pair<const char*, const char*>> cases{
        {"txtAltro=1", "non ha un controllo"},
        {"txtAltro!", "non ha un controllo"},
        {"txtAltro?", "non ha un controllo"},
        {"key:txtAltro=F3", "non ha un controllo"},
        {"txtNascosto=1", "nascosto"},
        {"key:txtNascosto=F3", "nascosto"},
        {"txtFermo=1", "disattivato"},
        {"chkFermo=1", "disattivato"},
        {"key:txtFermo=F3", "disattivato"},
        {"cmdOk=1", "non prende un valore"},
        {"lblInfo=1", "non prende un valore"},
        {"grdElenco=1", "non prende un valore"},
        {"prgLettura=1", "non prende un valore"},
        {"txtNome!", "non è un pulsante"},
        {"txtNome!1", "non è una griglia"},
        {"grdElenco!3", "ha 2 righe"},
        {"numAnno=1899", "tra 1900 e 2100"},
        {"numAnno=2012,5", "al più 0 decimali"},
        {"numAnno=venti", "non è un numero"},
        {"dtData=30/02/2012", "non è una data"},
        {"dtData=domani", "non è una data"},
        {"chkSimula=2", "0 oppure 1"},
        {"chkSimula=", "0 oppure 1"},
        {"optTipo=2", "la posizione 2 non c'è"},
        {"optTipo=Mensile", "non è una posizione"},
        {"lstMese=#2", "la posizione 2 non c'è"},
        {"lstMese=#-2", "la posizione -2 non c'è"},
        {"lstMese=#", "non è una posizione"},
        {"lstMese=1", "non ha la voce"},
        {"cboBranca=5", "non ha la chiave 5"},
        {"cboBranca=#2", "la posizione 2 non c'è"},
        {"cboBranca=Urologia", "non ha la voce"},
        {"lstTipi=0,3", "la posizione 3 non c'è"},
        {"lstTipi=0,-1", "non è una posizione"},
        {"lstTipi=0,,1", "non è una posizione"},
        {"lstTipi=0,", "manca una posizione"},
    };
    for (const auto& [step, reason] : cases) {
        Desk desk({step, "cmdOk!"});
        const std::string sentence = desk.Show();
        EXPECT_NE(sentence.find(reason), std::string::npos) << step << ": " << sentence;
        EXPECT_NE(sentence.find("\"" + std::string(step) + "\""), std::string::npos) << sentence;
        EXPECT_EQ(desk.out.str(), kOpened + std::string(kClosed)) << step;
        EXPECT_EQ(desk.dialog.calls, Words{"Closed"}) << step << " must change nothing and close once";
        EXPECT_EQ(desk.Unused(), "") << "after a failure its sentence stands alone";
        ASSERT_NE(desk.toolkit.Failure(), nullptr);
        EXPECT_EQ(desk.toolkit.Failure()->what(), sentence);
    }
}

TEST(ConsoleToolkit, ControlsInAHiddenOrDisabledFrameAreOutOfReach) {
    for (const bool hidden : {true, false}) {
        SampleDialog dialog;
        hidden ? dialog.fraDati.SetVisible(false) : dialog.fraDati.SetEnabled(false);
        Desk desk({"numAnno=2012"});
        EXPECT_NE(desk.Show(dialog).find(hidden ? "nascosto" : "disattivato"), std::string::npos);
    }
}

TEST(ConsoleToolkit, EveryWayOfClosingRunsClosedOnce) {
    struct Case {
        Words words, calls;
        std::string unused;
    };
    const std::vector<Case> cases{
        {{}, {"FrameClose", "Closed"}, ""},
        {{"cmdOk!"}, {"cmdOk", "FrameClose", "Closed"}, ""},
        {{"cmdChiudi!"}, {"Closed"}, ""},
        {{"key:=Escape"}, {"Closed"}, ""},
        {{"key:=Alt+F4"}, {"FrameClose", "Closed"}, ""},
        {{"cmdChiudi!", "txtNome=a", "answer:yes", "in:frmAltra", "cmdOk!", "end:"},
         {"Closed"},
         "Passi non eseguiti, perché la finestra frmProva era già chiusa: txtNome=... answer:yes in:frmAltra cmdOk! "
         "end:\n"},
    };
    for (const Case& each : cases) {
        Desk desk(each.words);
        EXPECT_EQ(desk.Show(), "");
        EXPECT_EQ(desk.dialog.calls, each.calls);
        EXPECT_EQ(desk.Unused(), each.unused);
        EXPECT_EQ(desk.out.str(), kOpened + std::string(kClosed));
    }
}

TEST(ConsoleToolkit, DialogsThatWillNotGoOrNeverCameAreEndedToo) {
    Desk desk({"cmdOk!"});
    SampleDialog stubborn;
    stubborn.onFrameClose = [] {};
    EXPECT_EQ(desk.Show(stubborn), "");
    EXPECT_TRUE(stubborn.IsClosing());
    EXPECT_EQ(stubborn.calls, (Words{"cmdOk", "FrameClose", "Closed"}));

    Desk other({"cmdOk!"});
    SampleDialog shy;
    shy.onOpening = [&] { shy.Close(); };
    EXPECT_EQ(other.Show(shy), "");
    EXPECT_EQ(shy.calls, Words{"Closed"});
    EXPECT_EQ(other.out.str(), "") << "it was never seen";
    EXPECT_NE(other.Unused().find("cmdOk!"), std::string::npos);
}

TEST(ConsoleToolkit, ErrorsOfHandlersCloseTheDialogsAndGoThrough) {
    Desk desk({"cmdApri!"});
    SampleDialog outer;
    SampleDialog inner("frmInterna");
    outer.cmdApri.OnChange = [&] { desk.toolkit.ShowModal(inner); };
    inner.onFrameClose = [] { throw Error("rotto"); };
    inner.onClosed = [] { throw std::runtime_error("secondo errore"); };
    EXPECT_EQ(vlm::test::CaughtText([&] { desk.toolkit.ShowModal(outer); }), "rotto");
    EXPECT_EQ(inner.calls, (Words{"FrameClose", "Closed"}));
    EXPECT_EQ(outer.calls, Words{"Closed"});
    EXPECT_EQ(desk.Events(),
              "dialog\",\"name\":\"frmProva\"\ndialog\",\"name\":\"frmInterna\"\n"
              "closed\",\"name\":\"frmInterna\"}\nclosed\",\"name\":\"frmProva\"}\n");
    EXPECT_EQ(desk.toolkit.Failure(), nullptr);
}

TEST(ConsoleToolkit, NestedDialogsTakeTheirBlocksInOrderAndCloseWithoutOne) {
    Desk desk({"in:frmFile", "txtNome=uno", "txtNome?", "cmdChiudi!", "end:", "in:FRMFILE", "txtNome=due",
               "end:", "cmdApri!", "cmdApri!", "cmdApri!", "in:frmFile", "txtNome=tre", "end:", "in:frmMai", "end:"});
    Words taken;
    desk.dialog.cmdApri.OnChange = [&] {
        SampleDialog inner("frmFile");
        desk.toolkit.ShowModal(inner);
        taken.push_back(inner.txtNome.Text());
    };
    EXPECT_EQ(desk.Show(), "");
    EXPECT_EQ(taken, (Words{"uno", "due", ""})) << "a block is there from its own step on, not before";
    EXPECT_EQ(desk.Unused(),
              "Passi non usati, perché la finestra frmFile non si è aperta: in:frmFile txtNome=... end:\n"
              "Passi non usati, perché la finestra frmMai non si è aperta: in:frmMai end:\n");
}

TEST(ConsoleToolkit, BlocksInBlocksAreForDialogsFurtherIn) {
    Desk desk({"in:frmB", "in:frmC", "txtNome=dentro", "end:", "cmdApri!", "txtNome=fuori", "end:", "cmdApri!"});
    SampleDialog a("frmA"), b("frmB"), c("frmC");
    a.cmdApri.OnChange = [&] { desk.toolkit.ShowModal(b); };
    b.cmdApri.OnChange = [&] { desk.toolkit.ShowModal(c); };
    EXPECT_EQ(desk.Show(a), "");
    EXPECT_EQ(c.txtNome.Text(), "dentro");
    EXPECT_EQ(b.txtNome.Text(), "fuori");
    EXPECT_EQ(desk.Unused(), "");
}

TEST(ConsoleToolkit, OnlyOneTopLevelDialogTakesTheMainSteps) {
    Desk desk({"txtNome=primo", "cmdChiudi!", "txtNome=resto"});
    SampleDialog first, second;
    desk.Show(first);
    desk.Show(second);
    EXPECT_EQ(first.txtNome.Text(), "primo");
    EXPECT_EQ(second.txtNome.Text(), "");
    EXPECT_NE(desk.Unused().find("txtNome=..."), std::string::npos);

    Desk none({"in:frmProva", "end:", "cmdOk!"});
    EXPECT_EQ(none.Unused(),
              "Passi non eseguiti, perché non si è aperta nessuna finestra: cmdOk!\n"
              "Passi non usati, perché la finestra frmProva non si è aperta: in:frmProva end:\n");
}

TEST(ConsoleToolkit, FailuresInsideANestedDialogCloseAllAndCannotBeSwallowed) {
    Desk desk({"in:frmInterna", "txtNome=a", "txtAltro=1", "end:", "cmdApri!", "txtNome=dopo"});
    SampleDialog outer;
    SampleDialog inner("frmInterna");
    outer.cmdApri.OnChange = [&] {
        try {
            desk.toolkit.ShowModal(inner);
        } catch (const std::exception& error) {  // as the operations of a component do
            try {
                desk.toolkit.Show({error.what(), "Errore", Icon::Critical, Buttons::Ok});
            } catch (const std::exception&) {
            }
        }
    };
    EXPECT_NE(desk.Show(outer).find("txtAltro=1"), std::string::npos);
    EXPECT_EQ(inner.calls, (Words{"txtNome", "Closed"}));
    EXPECT_EQ(outer.calls, Words{"Closed"});
    EXPECT_EQ(outer.txtNome.Text(), "") << "a failed script goes no further";
    EXPECT_EQ(desk.out.str().find("message"), std::string::npos) << desk.out.str();
}

TEST(ConsoleToolkit, MessagesTakeTheirAnswersInOrder) {
    const Message plain{"Fatto.\r\nVedi \"file\"", "Aldra", Icon::Information, Buttons::Ok};
    const Message question{"Procedere?", "Attenzione!", Icon::Question, Buttons::YesNo};
    Desk desk({"answer:yes", "cmdOk!", "cmdOk!", "answer:OK", "answer:No", "cmdOk!", "answer:yes"});
    desk.dialog.cmdOk.OnChange = [&] {
        desk.toolkit.Show(plain);
        desk.toolkit.Show(question);
    };
    EXPECT_EQ(desk.Show(), "");
    const std::string told =
        R"({"event":"message","text":"Fatto.\r\nVedi \"file\"","caption":"Aldra","icon":"information",)"
        R"("buttons":"ok","answer":"ok"})"
        "\n"
        R"({"event":"message","text":"Procedere?","caption":"Attenzione!","icon":"question",)"
        R"("buttons":"yesno","answer":")";
    EXPECT_EQ(desk.out.str(), kOpened + told + "yes\"}\n" + told + "no\"}\n" + told + "no\"}\n" + kClosed);
    EXPECT_EQ(desk.Unused(), "Risposta non usata: answer:yes\n");
}

TEST(ConsoleToolkit, EveryIconHasItsWord) {
    Desk desk({});
    for (const Icon icon : {Icon::None, Icon::Critical, Icon::Question, Icon::Exclamation, Icon::Information}) {
        desk.toolkit.Show({"", "", icon, Buttons::Ok});
    }
    std::string expected;
    for (const char* icon : {"none", "critical", "question", "exclamation", "information"}) {
        expected += R"({"event":"message","text":"","caption":"","icon":")" + std::string(icon) +
                    R"(","buttons":"ok","answer":"ok"})" + "\n";
    }
    EXPECT_EQ(desk.out.str(), expected);
}

TEST(ConsoleToolkit, ChoosersTakeAPathOrCancel) {
    Desk desk({"answer:C:\\dati\\a.csv", "cmdOk!", "answer:cancel", "answer:C:\\dati", "cmdOk!", "cmdOk!"});
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
    EXPECT_EQ(desk.out.str(), kOpened + file + "C:\\\\dati\\\\a.csv\"}\n" + folder + "cancel\"}\n" + file +
                                  "cancel\"}\n" + folder + "C:\\\\dati\"}\n" + file + "cancel\"}\n" + folder +
                                  "cancel\"}\n" + kClosed);
}

TEST(ConsoleToolkit, AnswersOfTheWrongKindFailTheScript) {
    for (const char* answer : {"answer:yes", "answer:no", "answer:ok"}) {
        Desk desk({answer, "cmdOk!"});
        SampleDialog dialog;
        dialog.cmdOk.OnChange = [&] { desk.toolkit.ChooseFolder(""); };
        EXPECT_NE(desk.Show(dialog).find(answer), std::string::npos) << answer;
    }
    for (const char* answer : {"answer:C:\\dati", "answer:cancel", "answer:ok"}) {
        Desk desk({answer, "cmdOk!"});
        SampleDialog dialog;
        dialog.cmdOk.OnChange = [&] { desk.toolkit.Show({"Procedere?", "", Icon::None, Buttons::YesNo}); };
        EXPECT_NE(desk.Show(dialog).find(answer), std::string::npos) << answer;
        EXPECT_EQ(dialog.calls, Words{"Closed"});
    }
}

TEST(ConsoleToolkit, AnswersAreThereBeforeTheDialogOpens) {
    Desk desk({"answer:yes", "txtNome=a"});
    desk.dialog.onOpening = [&] {
        EXPECT_EQ(desk.toolkit.Show({"Continuare?", "", Icon::None, Buttons::YesNo}), Answer::Yes);
    };
    EXPECT_EQ(desk.Show(), "");
    EXPECT_EQ(desk.dialog.txtNome.Text(), "a");
}

TEST(ConsoleToolkit, EventsStandInTheOrderTheyHappen) {
    Desk desk({"cmdOk!", "help:"});
    LoggedProgramStarter starter(desk.log);
    desk.dialog.cmdOk.OnChange = [&] {
        const HourglassScope hourglass(desk.toolkit);
        desk.dialog.prgLettura.SetVisible(false);
        for (const int percent : {10, 10, 100, 0}) desk.dialog.prgLettura.SetValue(percent);
        desk.dialog.txtNome.SetFocus();
        starter.Start("Notepad.exe C:\\a.txt");
        desk.log.Help(5920);
    };
    EXPECT_EQ(desk.Show(), "");
    EXPECT_EQ(desk.out.str(), kOpened + std::string(R"({"event":"pointer","shape":"hourglass"}
{"event":"progress","value":10}
{"event":"progress","value":100}
{"event":"progress","value":0}
{"event":"focus","name":"txtNome"}
{"event":"run","command":"Notepad.exe C:\\a.txt"}
{"event":"help","context":5920}
{"event":"pointer","shape":"normal"}
)") + kClosed);
    EXPECT_EQ(desk.dialog.calls, (Words{"prgLettura", "prgLettura", "prgLettura", "Help", "FrameClose", "Closed"}));
}

TEST(ConsoleToolkit, KeysArePressedAndReleased) {
    struct Case {
        const char* step;
        Words calls;
    };
    const std::vector<Case> cases{
        {"key:txtNome=Ctrl+R", {"up txtNome 82 2", "FrameClose", "Closed"}},
        {"key:TXTNOME=r", {"up txtNome 82 0", "FrameClose", "Closed"}},
        {"key:=F3", {"up - 114 0", "FrameClose", "Closed"}},
        {"key:=F12", {"up - 123 0", "FrameClose", "Closed"}},
        {"key:=Shift+Tab", {"up - 9 1", "FrameClose", "Closed"}},
        {"key:=Ctrl+Alt+7", {"up - 55 6", "FrameClose", "Closed"}},
        {"key:=Enter", {"cmdOk", "up - 13 0", "FrameClose", "Closed"}},
        {"key:=F1", {"Help", "up - 112 0", "FrameClose", "Closed"}},
        {"key:=Alt+A", {"cmdOk", "up - 65 4", "FrameClose", "Closed"}},
        {"key:=Alt+S", {"chkSimula", "up - 83 4", "FrameClose", "Closed"}},
        {"key:=Alt+F", {"cmdApri", "up - 70 4", "FrameClose", "Closed"}},  // the check box of that letter is disabled
        {"key:=Alt+Z", {"up - 90 4", "FrameClose", "Closed"}},
        {"key:=Esc", {"Closed"}},
        // With another modifier these are no keys of every dialog's.
        {"key:=F4", {"up - 115 0", "FrameClose", "Closed"}},
        {"key:=Alt+Esc", {"up - 27 4", "FrameClose", "Closed"}},
        {"key:=Ctrl+Enter", {"up - 13 2", "FrameClose", "Closed"}},
    };
    for (const Case& each : cases) {
        Desk desk({each.step});
        EXPECT_EQ(desk.Show(), "");
        EXPECT_EQ(desk.dialog.calls, each.calls) << each.step;
    }
    for (const char* key : {"key:=Alt+A", "key:=Esc", "key:=Enter", "key:=F1", "key:=Alt+F4"}) {
        Desk desk({key});
        SampleDialog swallowing;
        swallowing.onPreview = [](KeyEvent& event) { event.Swallow(); };
        desk.Show(swallowing);
        ASSERT_EQ(swallowing.calls.size(), 3U) << key;
        EXPECT_EQ(swallowing.calls[0].substr(0, 5), "up - ") << key;
        EXPECT_EQ(swallowing.calls[1], "FrameClose") << key;
    }
}

TEST(ConsoleToolkit, AGridsButtonRunsItsHandler) {
    Desk desk({"grdElenco!2", "grdElenco!2", "grdElenco!"});
    desk.dialog.grdElenco.OnChange = [&] {
        desk.dialog.calls.push_back(std::to_string(desk.dialog.grdElenco.CurrentRow()));
    };
    EXPECT_EQ(desk.Show(), "");
    EXPECT_EQ(desk.dialog.calls, (Words{"1", "1", "FrameClose", "Closed"})) << "moved once, pressed once";
}

}  // namespace
}  // namespace vlm::ui::test
