#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "DemoDatabase.h"
#include "databases/OdbcServer.h"
#include "demo/DemoClinic.h"
#include "demo/DemoClinicImport.h"
#include "host/AslHost.h"
#include "support/OdbcServerText.h"
#include "support/TempFolder.h"

namespace vlm::host {
namespace {

using Words = std::vector<std::string>;
using test::TempFolder;

/// A host with databases, a working folder and a folder for what is sent, which the words of a run name as "@".
class Workplace {
public:
    explicit Workplace(Words databases) : databases_(std::move(databases)) {
        for (const char* name : {"lavoro", "invio"}) folder_.Folder(name);
    }

    /// What the host prints, with the folder's name taken out.
    std::string Play(const Words& words) const {
        Words all = databases_;
        for (const char* word : {"--json", "--today", "2011-04-10", "--work", "@/lavoro", "--settings", "@/ini"}) {
            all.emplace_back(word);
        }
        all.insert(all.end(), words.begin(), words.end());
        for (std::string& word : all) Replace(word, "@", folder_.Path().string());
        std::ostringstream out, err;
        const int status = RunHost(all, out, err, false);
        std::string said = out.str() + err.str() + std::to_string(status);
        Replace(said, folder_.Path().string(), "@");
        return said;
    }

    /// What stands in a folder after the runs, but for the files whose names are made up anew each time.
    std::map<std::string, std::string> Files(const std::string& place) const {
        std::map<std::string, std::string> files;
        for (const std::string& name : test::NamesIn(folder_.Path() / place)) {
            const std::string path = folder_ / (place + "/" + name);
            if (std::filesystem::is_regular_file(path)) files[name] = test::ReadBytes(path);
        }
        return files;
    }

private:
    static void Replace(std::string& text, const std::string& what, const std::string& with) {
        for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
            text.replace(at, what.size(), with);
        }
    }

    TempFolder folder_;
    Words databases_;
};

/// What the components change, of both clinics.
std::string ChangedTables(const std::string& folder) {
    std::string all;
    for (const char* studio : {"Studio0012", "Studio0016"}) {
        DemoDatabase database(folder, studio);
        for (const char* table : {"Parcella", "Paziente", "Residenza", "EsenzionePerPaziente", "BloccoRecord"}) {
            for (const auto& row : database.Rows("SELECT * FROM " + std::string(table) + " ORDER BY 1")) {
                for (const std::string& cell : row) all += cell + "|";
                all += '\n';
            }
        }
    }
    return all;
}

class ServerRun : public ::testing::Test {
protected:
    static void SetUpTestSuite() { setenv(kPasswordVariable, test::kServerPassword, 1); }
    static void TearDownTestSuite() { unsetenv(kPasswordVariable); }

    ServerRun() {
        CreateDemo(temp / "file", *Date::FromYmd(2011, 4, 10));
        std::filesystem::copy(temp / "file", temp / "server", std::filesystem::copy_options::recursive);
    }
    Words Server(const tds::TdsServer& server, const std::string& database = "Studio0012") const {
        return {"--odbc", test::OdbcServerText(server, database), "--install", temp / "server/Installazione"};
    }

    TempFolder temp;
};

/// What a clerk does in a month: both regions, prescriptions, projects, lists.
TEST_F(ServerRun, EverythingGoesAsWithTheEmbeddedDatabases) {
    const tds::TdsServer server(temp / "server", test::ServerOptions());
    const std::string sources = temp / "file/Sorgenti/";
    const Words runs[] = {
        {"ASLExport", "cboBranca=1", "cboMese=3", "numAnno=2011", "chkIncludiPrecedenti=1", "txtPath=@/invio",
         "cmdConferma!", "cmdConferma!"},
        {"ASLExport", "cboBranca=2", "cboMese=3", "numAnno=2011", "txtPath=@/invio", "answer:yes", "cmdConferma!"},
        {"ASLExport", "optTipoExport=1", "cboBranca=1", "cboTrimestre=#0", "numAnnoTrimestre=2011", "txtPath=@/invio",
         "cmdConferma!"},
        {"ASLPanoramico", "cboBranca=3", "dtFromDate=01/03/2011", "dtToDate=31/03/2011", "txtPath=@/invio/ricette.txt",
         "cmdConferma!"},
        {"ExportProgetti", "cboStatoProgetto=#1", "cboDaTrimestre=#0", "cboATrimestre=#0", "numAnno=2011",
         "txtPath=@/invio", "cmdConferma!"},
        {"--clinic", "16", "ASLExport", "cboBranca=1", "cboMese=3", "numAnno=2011", "txtPath=@/invio", "cmdConferma!"},
        {"--clinic", "16", "ASLExport", "cboBranca=2", "cboMese=3", "numAnno=2011", "txtPath=@/invio", "answer:yes",
         "cmdConferma!"},
        {"ASLImportPatient", "cboASL=Elenco assistiti", "txtPath=" + sources + "assistiti.txt", "cmdElabora!",
         "lblConteggio?", "grdList?", "cmdConferma!"},
        {"ASLImportPatient", "cboASL=Catania", "txtPath=" + sources + "catania.txt", "cmdElabora!", "cboFiltro=#2",
         "in:frmRevoca", "chkRevocato=1", "dtDataRevoca=31/03/2011", "cboTipoRevocaPaziente=#1", "cmdConferma!",
         "end:", "grdList2!1", "cmdConferma!"},
        {"ASLImportPatient", "cboImportazione=#1", "cboASL=#0", "txtPath=" + sources + "esenti.txt", "cmdElabora!",
         "cmdSelezionaTutti!", "cmdConferma!"},
        {"ASLImportPatient", "cboTipoImportazione=#1", "cboSpecialista=#0", "in:frmInpsPIN", "txtConferma=1234567890",
         "cmdConferma!", "end:", "cmdElabora!", "grdList?"},
    };
    const Workplace embedded({"--data", temp / "file"}), served(Server(server));
    for (const Words& run : runs) EXPECT_EQ(served.Play(run), embedded.Play(run)) << testing::PrintToString(run);
    EXPECT_EQ(served.Files("lavoro"), embedded.Files("lavoro"));
    EXPECT_EQ(served.Files("invio"), embedded.Files("invio"));
    EXPECT_EQ(served.Files("invio").size(), 6U);
    EXPECT_EQ(ChangedTables(temp / "server"), ChangedTables(temp / "file"));
}

TEST_F(ServerRun, AServerThatGoesAwayEndsTheRunAsAnErrorAndChangesNothing) {
    const Words month = {"ASLExport", "cboBranca=1", "cboMese=3", "numAnno=2011", "txtPath=@/invio", "cmdConferma!"};
    const struct {
        Words run;
        tds::Faults faults;
        std::size_t kept;  // files of what was written before, where the user expects that
    } cases[] = {
        {month, {.endAfterRows = 100}, 0},
        {month, {.failAfterRows = 100}, 0},
        {month, {.endAtStatement = "UPDATE Parcella"}, 0},
        {month, {.endAtCommit = true}, 0},
        {{"ASLExport", "optTipoExport=1", "cboBranca=1", "cboTrimestre=#0", "numAnnoTrimestre=2011", "txtPath=@/invio",
          "cmdConferma!"},
         {.endAfterRows = 20},
         0},
        {{"--clinic", "16", "ASLExport", "cboBranca=1", "cboMese=3", "numAnno=2011", "txtPath=@/invio", "cmdConferma!"},
         {.endAfterRows = 100},
         0},
        {{"ExportProgetti", "cboStatoProgetto=#1", "cboDaTrimestre=#0", "cboATrimestre=#0", "numAnno=2011",
          "txtPath=@/invio", "cmdConferma!"},
         {.endAfterRows = 5},
         1},
        {{"ASLImportPatient", "cboASL=Elenco assistiti", "txtPath=" + temp / "file/Sorgenti/assistiti.txt",
          "cmdElabora!", "cmdConferma!"},
         {.endAfterRows = 100},
         0},
    };
    const std::string before = ChangedTables(temp / "server");
    for (const auto& each : cases) {
        const tds::TdsServer server(temp / "server", test::ServerOptions(each.faults));
        const Workplace served(Server(server));
        const std::string said = served.Play(each.run);
        const char* const why = each.faults.failAfterRows > 0 ? "altro utente" : "server di database è caduta";
        EXPECT_NE(said.find(why), std::string::npos) << said;
        EXPECT_NE(said.find(R"("icon":"critical")"), std::string::npos) << said;
        EXPECT_EQ(said.find("successo"), std::string::npos) << said;
        EXPECT_EQ(served.Files("invio").size(), each.kept) << said;
        EXPECT_EQ(ChangedTables(temp / "server"), before) << said;
    }
}

TEST_F(ServerRun, ARunThatIsCommittedIsDoneThoughTheServerGoesAwayThen) {
    const tds::TdsServer server(temp / "server", test::ServerOptions({.endAfterCommit = true}));
    const Workplace served(Server(server));
    const std::string said =
        served.Play({"ASLExport", "cboBranca=1", "cboMese=3", "numAnno=2011", "txtPath=@/invio", "cmdConferma!"});
    EXPECT_NE(said.find("Elaborazione terminata con successo"), std::string::npos) << said;
    EXPECT_EQ(served.Files("invio").size(), 1U);
    EXPECT_NE(ChangedTables(temp / "server"), ChangedTables(temp / "file"));
}

}  // namespace
}  // namespace vlm::host
