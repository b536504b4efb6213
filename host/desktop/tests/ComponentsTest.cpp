#include <QDialog>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>

#include "console/JsonEventLog.h"
#include "demo/DemoClinic.h"
#include "host/AslHost.h"
#include "support/GivenToolkit.h"
#include "support/QtUser.h"
#include "support/ServiceClinic.h"
#include "support/Words.h"

/// The library's own dialogs on a clinic's database, through the host: once on the console, once in windows.
namespace vlm::test {
namespace {

using Words = std::vector<std::string>;

class UserDesktop : public host::Desktop {
public:
    /// With steps it is the user who shows the library's dialogs, else the library's own windows.
    explicit UserDesktop(const Words& words) : words_(words) {}

    std::string Hindrance() const override { return {}; }
    std::string ToolkitName() const override { return words_.empty() ? "qt" : kGivenToolkit; }
    void Open(sys::SettingsStore& settings) override {
        toolkit_ = std::make_unique<ui::QtToolkit>(settings);
        user_ = std::make_unique<ui::test::QtUser>(*toolkit_, words_, log_);
        VlmGiveToolkit(user_.get());
    }
    ui::Toolkit& Toolkit() override { return *user_; }
    sys::ProgramStarter& Programs() override { return programs_; }

    Words Events() const { return LinesOf(out_.str()); }
    const std::string& Focus() const { return user_->Focus(); }

private:
    Words words_;
    std::ostringstream out_;
    ui::JsonEventLog log_{out_};
    ui::LoggedProgramStarter programs_{log_};
    std::unique_ptr<ui::QtToolkit> toolkit_;
    std::unique_ptr<ui::test::QtUser> user_;
};

/// The same steps on the console and in windows, from the same state: same events, same files. In the steps, OUT is
/// the clinic's folder for files.
void ExpectTheSameIn(const ServiceClinic& clinic, const Words& steps, const std::string& component) {
    Words words = steps;
    for (std::string& word : words) {
        if (const std::size_t at = word.find("OUT"); at != std::string::npos) word.replace(at, 3, clinic.out);
    }
    const std::string folder = clinic.folder.Path().string();
    const std::string kept = folder + "-kept";
    std::filesystem::copy(folder, kept, std::filesystem::copy_options::recursive);
    const HostRun console = clinic.Run(words, component);
    const Words files = NamesIn(clinic.out);
    std::filesystem::remove_all(folder);
    std::filesystem::rename(kept, folder);

    UserDesktop desktop(words);
    std::ostringstream out, errors;
    const int status = host::RunHost(Words{"--ui", "qt"} + clinic.Arguments(component), out, errors, true, &desktop);
    EXPECT_EQ(status, console.status) << errors.str();
    EXPECT_EQ(ui::test::WithoutFocus(desktop.Events()), ui::test::WithoutFocus(console.events))
        << testing::PrintToString(words);
    EXPECT_EQ(NamesIn(clinic.out), files);
    // Where the last step left the focus by a word of the dialog's.
    const std::string last = console.events.size() < 2 ? "" : console.events[console.events.size() - 2];
    if (last.find(R"("event":"focus")") == std::string::npos) return;
    EXPECT_NE(last.find('"' + desktop.Focus() + '"'), std::string::npos) << last << desktop.Focus();
}

constexpr int kSicily = 19;
constexpr int kPuglia = 13;

void ExpectTheSame(const Words& steps, const std::vector<int>& regions = {kSicily}, const char* masterSql = "") {
    for (const int region : regions) {
        ServiceClinic clinic;
        clinic.idRegioneTariffario = region;
        clinic.masterSql = masterSql;
        clinic.Create({Service(), Service("IDParcella=2; NumeroDocumento=126")});
        WriteBytes(clinic.out + "/altro.txt", "x");
        ExpectTheSameIn(clinic, steps, "ASLExport");
    }
}

TEST(Components, TheServiceExportFromOpeningToExport) {
    const std::string month = "cboBranca=1 cboMese=3 numAnno=2011 ";
    for (const std::string& steps :
         {std::string("optTipoExport? cboMese? numAnno? cboTrimestre? numAnnoTrimestre? cboBranca? txtPath? "
                      "lstTipoOperazione? chkIncludiElaborate? cboSpecialista? cmdConferma? chkSimulazione?"),
          month + "cboSpecialista=7 txtPath=OUT chkVisualizza=0 cmdConferma!",
          month + "lstTipoOperazione=0,2 answer:yes txtPath=OUT chkSimulazione=1 cmdConferma!"}) {
        ExpectTheSame(WordsOf(steps), {kSicily, kPuglia});
    }
    for (const char* steps :
         {"optTipoExport=1 cboMese? numAnnoTrimestre=2011 cboTrimestre=#0 cboBranca=1 txtPath=OUT cmdConferma! "
          "optTipoExport=0 cboTrimestre?",
          "answer:OUT key:txtPath=F5 txtPath? key:txtPath=Ctrl+R txtPath?", "cboBranca=#-1 txtPath= cmdConferma!",
          "cboBranca=#-1 txtPath=/ cmdConferma!",
          "txtPath=OUT in:frmSelectFile answer:OUT/altro.txt key:txtPath=Ctrl+R txtPath? lblDimensioneValore? end: "
          "cmdVisualizza!"}) {
        ExpectTheSame(WordsOf(steps));
    }
    ExpectTheSame({"txtPath=   ", "cmdConferma!"});
    ExpectTheSame({"cboMese?"}, {kSicily}, "DROP TABLE Mese;");
    for (const char* inside : {"lblNonTrovato? lblData? txtPath? cmdConferma!", "cmdAnnulla!",
                               "key:txtPath=F3 key:=Escape", "txtPath= lblNonTrovato?"}) {
        ExpectTheSame(WordsOf(month + "cboSpecialista=7 txtPath=OUT cmdConferma! in:frmSelectFile " + inside +
                              " end: in:frmViewData grdList? cmdAnnulla! end: cmdVisualizza!"),
                      {kSicily, kPuglia});
    }
}

TEST(Components, PrescriptionsProjectsAndTheImportOnTheDemoClinic) {
    ServiceClinic clinic;
    host::CreateDemo(clinic.data, *Date::FromYmd(2011, 4, 10));
    const std::pair<const char*, Words> runs[] = {
        {"ASLPanoramico",
         WordsOf("cmdConferma! cboBranca=3 cboSpecialista? cmdConferma! dtFromDate=01/03/2011 dtToDate=31/3/2011 "
                 "cmdConferma! txtPath=OUT/ricette.txt cmdConferma!")},
        {"ExportProgetti",
         WordsOf("cboStudio? cboStatoProgetto=#1 txtPath=OUT cmdConferma! numAnno=2011 cmdConferma! cboDaTrimestre=#0 "
                 "cboATrimestre=#0 cmdConferma!")},
        {"ASLImportPatient",
         WordsOf("cboASL? fraFile? cboImportazione=#1 cboASL? cboFiltro? cboImportazione=#0 cmdElabora!") +
             Words{"cboASL=Elenco assistiti", "txtPath=" + clinic.data + "/Sorgenti/assistiti.txt"} +
             WordsOf("cmdElabora! lblConteggio? grdList? cboFiltro=#1 grdList? grdList!2 cmdSeleziona! "
                     "lblSelezionati? cmdSelezionaTutti! grdList? cboFiltro=#2 grdList2? cmdConferma? cmdConferma! "
                     "grdList2!1 in:frmRevoca dtDataRevoca? chkRevocato=1 dtDataRevoca=10/04/2011 "
                     "cboTipoRevocaPaziente=#0 txtNoteRevoca=altrove cmdConferma! end: cmdConferma! grdList2?")},
        {"ASLImportPatient",
         WordsOf("cboTipoImportazione=#1 cboSpecialista=#0 fraFile? txtPath? in:frmInpsPIN txtConferma=1234567890 "
                 "cmdConferma! end: cmdElabora! grdList?")}};
    for (const auto& [component, steps] : runs) ExpectTheSameIn(clinic, steps, component);
}

TEST(Components, TheLibraryBringsItsWindowsAlong) {
    ServiceClinic clinic;
    clinic.Create({});
    UserDesktop desktop({});
    std::string title;
    ui::test::WhenUp<QDialog>([&](QDialog& window) {
        title = window.windowTitle().toStdString();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() != nullptr; }));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);  // the host answers in a window of its own
        window.close();
    });
    std::ostringstream out, errors;
    EXPECT_EQ(host::RunHost(Words{"--ui", "qt"} + clinic.Arguments("ASLExport"), out, errors, true, &desktop), 0);
    EXPECT_EQ(title, "Esportazione ASL") << errors.str();
    ASSERT_EQ(desktop.Events().size(), 1u);
    EXPECT_NE(desktop.Events()[0].find("argomento 5920."), std::string::npos) << desktop.Events()[0];
}

}  // namespace
}  // namespace vlm::test
