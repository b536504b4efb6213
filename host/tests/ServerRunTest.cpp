#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "DemoDatabase.h"
#include "databases/OdbcServer.h"
#include "host/AslHost.h"
#include "support/OdbcServerText.h"
#include "support/Words.h"

namespace vlm::host {
namespace {

using Words = std::vector<std::string>;
using test::operator+;
using test::TempFolder;

/// A host with databases, a working folder and a folder for what is sent, which the words of a run name as "@".
class Workplace {
public:
    explicit Workplace(Words databases) : databases_(std::move(databases)) {
        for (const char* name : {"lavoro", "invio"}) folder_.Folder(name);
    }

    /// What the host prints, with the folder's name taken out; "~" is a blank inside a word.
    std::string Play(const std::string& words) const {
        Words all = databases_ + test::WordsOf("--json --today 2011-04-15 --work @/lavoro --settings @/ini " + words);
        for (std::string& word : all) {
            Replace(word, "@", folder_.Path().string());
            Replace(word, "~", " ");
        }
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
        for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
            text.replace(at, what.size(), with);
    }

    TempFolder folder_;
    Words databases_;
};

/// The same work over a server and with the embedded databases.
class ServerRun : public ::testing::Test {
protected:
    ServerRun() {
        setenv(kPasswordVariable, test::kServerPassword, 1);
        for (const char* copy : {"file", "server"})
            std::filesystem::copy(SharedDemo().Path(), temp / copy, std::filesystem::copy_options::recursive);
    }
    ~ServerRun() override { unsetenv(kPasswordVariable); }

    Words Server(const tds::TdsServer& server, const std::string& database = "Studio0012") const {
        return {"--odbc", test::OdbcServerText(server, database), "--install", temp / "server/Installazione"};
    }
    /// What the server's clinics have in the tables that the components change, and the files' have not, or the other
    /// way round.
    std::vector<DemoDatabase::Row> Differences() const {
        std::vector<DemoDatabase::Row> all;
        for (const char* studio : {"Studio0012", "Studio0016"}) {
            DemoDatabase database(temp / "file", studio);
            database.Attach(temp / "server", studio, "server");
            for (const std::string table :
                 {"Parcella", "Paziente", "Residenza", "EsenzionePerPaziente", "BloccoRecord"}) {
                const auto rows = database.Differences("SELECT * FROM main." + table, "SELECT * FROM server." + table);
                all.insert(all.end(), rows.begin(), rows.end());
            }
        }
        return all;
    }

    TempFolder temp;
    const std::string sources = temp / "file/Sorgenti/";
    const std::string month = "ASLExport cboBranca=1 cboMese=3 numAnno=2011 txtPath=@/invio cmdConferma!";
    const std::string quarter =
        "ASLExport optTipoExport=1 cboBranca=1 cboTrimestre=#0 numAnnoTrimestre=2011 txtPath=@/invio cmdConferma!";
    const std::string projects =
        "ExportProgetti cboStatoProgetto=#1 cboDaTrimestre=#0 cboATrimestre=#0 numAnno=2011 txtPath=@/invio"
        " cmdConferma!";
    const std::string patients = "ASLImportPatient cboASL=Elenco~assistiti txtPath=" + sources + "assistiti.txt";
    const std::vector<DemoDatabase::Row> none;
};

/// What a clerk does in a month: both regions, prescriptions, projects, lists.
TEST_F(ServerRun, EverythingGoesAsWithTheEmbeddedDatabases) {
    const tds::TdsServer server(temp / "server", test::ServerOptions());
    const std::string faulty = "ASLExport cboBranca=2 cboMese=3 numAnno=2011 txtPath=@/invio answer:yes cmdConferma!";
    const std::string runs[] = {
        "ASLExport cboBranca=1 cboMese=3 numAnno=2011 chkIncludiPrecedenti=1 txtPath=@/invio cmdConferma! cmdConferma!",
        faulty,
        quarter,
        "ASLPanoramico cboBranca=3 dtFromDate=01/03/2011 dtToDate=31/03/2011 txtPath=@/invio/ricette.txt cmdConferma!",
        projects,
        "--clinic 16 " + month,
        "--clinic 16 " + faulty,
        patients + " cmdElabora! lblConteggio? grdList? cmdConferma!",
        "ASLImportPatient cboASL=Catania txtPath=" + sources +
            "catania.txt cmdElabora! cboFiltro=#2 in:frmRevoca"
            " chkRevocato=1 dtDataRevoca=31/03/2011 cboTipoRevocaPaziente=#1 cmdConferma! end: grdList2!1 cmdConferma!",
        "ASLImportPatient cboImportazione=#1 cboASL=#0 txtPath=" + sources +
            "esenti.txt cmdElabora!"
            " cmdSelezionaTutti! cmdConferma!",
        "ASLImportPatient cboTipoImportazione=#1 cboSpecialista=#0 in:frmInpsPIN txtConferma=1234567890 cmdConferma!"
        " end: cmdElabora! grdList?"};
    const Workplace embedded({"--data", temp / "file"}), served(Server(server));
    for (const std::string& run : runs) EXPECT_EQ(served.Play(run), embedded.Play(run)) << run;
    EXPECT_EQ(served.Files("lavoro"), embedded.Files("lavoro"));
    EXPECT_EQ(served.Files("invio"), embedded.Files("invio"));
    EXPECT_EQ(served.Files("invio").size(), 6U);
    EXPECT_EQ(Differences(), none);
}

TEST_F(ServerRun, AServerThatGoesAwayEndsTheRunAsAnErrorAndChangesNothing) {
    const struct {
        std::string run;
        tds::Faults faults;
        std::size_t kept = 0;  // files of what was written before, where the user expects that
    } cases[] = {
        {month, {.endAfterRows = 100}},
        {month, {.failAfterRows = 100}},
        {month, {.endAtStatement = "UPDATE Parcella"}},
        {month, {.endAtCommit = true}},
        {quarter, {.endAfterRows = 20}},
        {"--clinic 16 " + month, {.endAfterRows = 100}},
        {projects, {.endAfterRows = 5}, 1},
        {patients + " cmdElabora! cmdConferma!", {.endAfterRows = 100}},
    };
    for (const auto& each : cases) {
        const tds::TdsServer server(temp / "server", test::ServerOptions(each.faults));
        const Workplace served(Server(server));
        const std::string said = served.Play(each.run);
        const char* const why = each.faults.failAfterRows > 0 ? "altro utente" : "server di database è caduta";
        EXPECT_NE(said.find(why), std::string::npos) << said;
        EXPECT_NE(said.find(R"("icon":"critical")"), std::string::npos) << said;
        EXPECT_EQ(said.find("successo"), std::string::npos) << said;
        EXPECT_EQ(served.Files("invio").size(), each.kept) << said;
        EXPECT_EQ(Differences(), none) << said;
    }
}

TEST_F(ServerRun, ARunThatIsCommittedIsDoneThoughTheServerGoesAwayThen) {
    const tds::TdsServer server(temp / "server", test::ServerOptions({.endAfterCommit = true}));
    const Workplace served(Server(server));
    const std::string said = served.Play(month);
    EXPECT_NE(said.find("Elaborazione terminata con successo"), std::string::npos) << said;
    EXPECT_EQ(served.Files("invio").size(), 1U);
    EXPECT_NE(Differences(), none);
}

}  // namespace
}  // namespace vlm::host
