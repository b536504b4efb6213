#include <gtest/gtest.h>

#include "host/AslHost.h"
#include "host/DemoClinic.h"
#include "platform/ui/console/JsonEventLog.h"
#include "platform/ui/console/LoggedProgramStarter.h"
#include "qt/support/QtUser.h"
#include "support/ServiceClinic.h"

/// The library's own dialogs on a clinic's database, through the host: once on the console, once in windows.
namespace vlm::test {
namespace {

using Words = std::vector<std::string>;

/// A desktop with a user who does the steps.
class UserDesktop : public host::Desktop {
public:
    explicit UserDesktop(Words words) : words_(std::move(words)) {}

    std::string Hindrance() const override { return {}; }
    void Open(sys::SettingsStore& settings) override {
        toolkit_ = std::make_unique<ui::QtToolkit>(settings);
        user_ = std::make_unique<ui::test::QtUser>(*toolkit_, words_, log_);
    }
    ui::Toolkit& Toolkit() override { return *user_; }
    sys::ProgramStarter& Programs() override { return programs_; }

    std::vector<std::string> Events() const {
        std::vector<std::string> events;
        std::istringstream lines(out_.str());
        for (std::string line; std::getline(lines, line);) events.push_back(line);
        return events;
    }
    const ui::test::QtUser& User() const { return *user_; }

private:
    Words words_;
    std::ostringstream out_;
    ui::JsonEventLog log_{out_};
    ui::LoggedProgramStarter programs_{log_};
    std::unique_ptr<ui::QtToolkit> toolkit_;
    std::unique_ptr<ui::test::QtUser> user_;
};

struct WindowRun {
    int status = 0;
    std::vector<std::string> events;
    std::vector<std::string> focuses;
    std::string errors;
};

WindowRun RunInWindows(const ServiceClinic& clinic, const Words& words, const std::string& component) {
    UserDesktop desktop(words);
    std::ostringstream out, errors;
    WindowRun run;
    Words arguments{"--ui",   "qt",        "--data",  clinic.data,  "--clinic",   std::to_string(clinic.clinic),
                    "--work", clinic.work, "--today", clinic.today, "--settings", clinic.settings};
    if (!component.empty()) arguments.push_back(component);
    run.status = host::RunHost(arguments, out, errors, true, &desktop);
    run.events = desktop.Events();
    run.errors = errors.str();
    run.focuses = desktop.User().Focuses();
    return run;
}

/// The focus, which a mouse moves too, is looked at by itself; progress is painted.
Words WithoutFocus(const Words& events) {
    Words others;
    for (const std::string& event : events) {
        const bool own = event.starts_with(R"({"event":"focus")") || event.starts_with(R"({"event":"progress")");
        if (!own) others.push_back(event);
    }
    return others;
}

/// The same steps on the console and in windows, from the same state: same events, same files.
void ExpectTheSameIn(const ServiceClinic& clinic, const Words& words, const std::string& component) {
    const std::string folder = clinic.folder.Path().string();
    const std::string kept = folder + "-kept";
    std::filesystem::copy(folder, kept, std::filesystem::copy_options::recursive);
    const HostRun console = clinic.Run(words, component);
    const Words files = NamesIn(clinic.out);
    std::filesystem::remove_all(folder);
    std::filesystem::rename(kept, folder);
    const WindowRun windows = RunInWindows(clinic, words, component);
    EXPECT_EQ(windows.status, console.status) << windows.errors;
    EXPECT_EQ(WithoutFocus(windows.events), WithoutFocus(console.events)) << testing::PrintToString(words);
    EXPECT_EQ(NamesIn(clinic.out), files);
    // Where the last step left the focus by a word of the dialog's.
    const std::string last = console.events.size() < 2 ? "" : console.events[console.events.size() - 2];
    if (last.find(R"("event":"focus")") == std::string::npos) return;
    ASSERT_FALSE(windows.focuses.empty());
    EXPECT_NE(last.find('"' + windows.focuses.back() + '"'), std::string::npos) << last << windows.focuses.back();
}

void ExpectTheSame(const std::function<void(ServiceClinic&)>& arrange,
                   const std::function<Words(ServiceClinic&)>& steps) {
    ServiceClinic clinic;
    arrange(clinic);
    clinic.Create(
        {ServiceClinic::Service(), ServiceClinic::Service({{"IDParcella", "2"}, {"NumeroDocumento", "126"}})});
    ExpectTheSameIn(clinic, steps(clinic), "ASLExport");
}

void Sicily(ServiceClinic&) {}

void Puglia(ServiceClinic& clinic) { clinic.idRegioneTariffario = 13; }

TEST(Components, TheServiceExportFromOpeningToExport) {
    const Words all{"optTipoExport?",       "cboMese?",        "numAnno?",     "cboTrimestre?",
                    "numAnnoTrimestre?",    "cboBranca?",      "txtPath?",     "lstTipoOperazione?",
                    "chkIncludiElaborate?", "cboSpecialista?", "cmdConferma?", "chkSimulazione?"};
    for (const auto& region : {Sicily, Puglia}) {
        ExpectTheSame(region, [&](ServiceClinic&) { return all; });
        ExpectTheSame(region, [&](ServiceClinic& clinic) {
            return Words{"cboBranca=1",           "cboMese=3",       "numAnno=2011", "cboSpecialista=7",
                         "txtPath=" + clinic.out, "chkVisualizza=0", "cmdConferma!"};
        });
        ExpectTheSame(region, [&](ServiceClinic& clinic) {
            return Words{"cboBranca=1",           "cboMese=3",   "numAnno=2011",
                         "lstTipoOperazione=0,2", "answer:yes",  "txtPath=" + clinic.out,
                         "chkSimulazione=1",      "cmdConferma!"};
        });
    }
    ExpectTheSame(Sicily, [](ServiceClinic& clinic) {
        return Words{"optTipoExport=1",       "cboMese?",     "numAnnoTrimestre=2011", "cboTrimestre=#0", "cboBranca=1",
                     "txtPath=" + clinic.out, "cmdConferma!", "optTipoExport=0",       "cboTrimestre?"};
    });
}

TEST(Components, ChecksThatFailMoveTheFocus) {
    for (const Words& steps : {Words{"cboBranca=#-1", "txtPath=", "cmdConferma!"}, Words{"txtPath=   ", "cmdConferma!"},
                               Words{"cboBranca=#-1", "txtPath=/", "cmdConferma!"}}) {
        ExpectTheSame(Sicily, [&](ServiceClinic&) { return steps; });
    }
}

TEST(Components, FileSelectionAndViewer) {
    for (const Words& inside : {Words{"lblNonTrovato?", "lblData?", "txtPath?", "cmdConferma!"}, Words{"cmdAnnulla!"},
                                Words{"key:txtPath=F3", "key:=Escape"}, Words{"txtPath=", "lblNonTrovato?"}}) {
        for (const auto& region : {Sicily, Puglia}) {
            ExpectTheSame(region, [&](ServiceClinic& clinic) {
                Words words{"cboBranca=1",           "cboMese=3",    "numAnno=2011",    "cboSpecialista=7",
                            "txtPath=" + clinic.out, "cmdConferma!", "in:frmSelectFile"};
                words.insert(words.end(), inside.begin(), inside.end());
                words.insert(words.end(),
                             {"end:", "in:frmViewData", "grdList?", "cmdAnnulla!", "end:", "cmdVisualizza!"});
                return words;
            });
        }
    }
    ExpectTheSame(Sicily, [](ServiceClinic& clinic) {
        WriteBytes(clinic.out + "/altro.txt", "x");
        return Words{"txtPath=" + clinic.out,
                     "in:frmSelectFile",
                     "answer:" + clinic.out + "/altro.txt",
                     "key:txtPath=Ctrl+R",
                     "txtPath?",
                     "lblDimensioneValore?",
                     "end:",
                     "cmdVisualizza!"};
    });
}

TEST(Components, PrescriptionsProjectsAndTheImportOnTheDemoClinic) {
    ServiceClinic clinic;
    host::CreateDemo(clinic.data, *Date::FromYmd(2011, 4, 10));
    ExpectTheSameIn(clinic,
                    {"cmdConferma!", "cboBranca=3", "cboSpecialista?", "cmdConferma!", "dtFromDate=01/03/2011",
                     "dtToDate=31/3/2011", "cmdConferma!", "txtPath=" + clinic.out + "/ricette.txt", "cmdConferma!"},
                    "ASLPanoramico");
    ExpectTheSameIn(clinic,
                    {"cboStudio?", "cboStatoProgetto=#1", "txtPath=" + clinic.out, "cmdConferma!", "numAnno=2011",
                     "cmdConferma!", "cboDaTrimestre=#0", "cboATrimestre=#0", "cmdConferma!"},
                    "ExportProgetti");
    const std::string source = "txtPath=" + clinic.data + "/Sorgenti/";
    ExpectTheSameIn(clinic,
                    {"cboASL?",
                     "fraFile?",
                     "cboImportazione=#1",
                     "cboASL?",
                     "cboFiltro?",
                     "cboImportazione=#0",
                     "cmdElabora!",
                     "cboASL=Elenco assistiti",
                     source + "assistiti.txt",
                     "cmdElabora!",
                     "lblConteggio?",
                     "grdList?",
                     "cboFiltro=#1",
                     "grdList?",
                     "grdList!2",
                     "cmdSeleziona!",
                     "lblSelezionati?",
                     "cmdSelezionaTutti!",
                     "grdList?",
                     "cboFiltro=#2",
                     "grdList2?",
                     "cmdConferma?",
                     "cmdConferma!",
                     "grdList2!1",
                     "in:frmRevoca",
                     "dtDataRevoca?",
                     "chkRevocato=1",
                     "dtDataRevoca=10/04/2011",
                     "cboTipoRevocaPaziente=#0",
                     "txtNoteRevoca=altro medico",
                     "cmdConferma!",
                     "end:",
                     "cmdConferma!",
                     "grdList2?"},
                    "ASLImportPatient");
    ExpectTheSameIn(clinic,
                    {"cboTipoImportazione=#1", "cboSpecialista=#0", "fraFile?", "txtPath?", "in:frmInpsPIN",
                     "txtConferma=1234567890", "cmdConferma!", "end:", "cmdElabora!", "grdList?"},
                    "ASLImportPatient");
}

TEST(Components, TheBrowseKeyAndADatabaseWithoutTables) {
    ExpectTheSame(Sicily, [](ServiceClinic& clinic) {
        return Words{"answer:" + clinic.out, "key:txtPath=F5", "txtPath?", "key:txtPath=Ctrl+R", "txtPath?"};
    });
    ExpectTheSame([](ServiceClinic& clinic) { clinic.masterSql = "DROP TABLE Mese;"; },
                  [](ServiceClinic&) { return Words{"cboMese?"}; });
}

}  // namespace
}  // namespace vlm::test
