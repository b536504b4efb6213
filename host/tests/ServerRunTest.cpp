#include <cstdlib>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sstream>

#include "databases/DatabaseSchema.h"
#include "databases/OdbcServer.h"
#include "host/AslHost.h"
#include "support/OdbcServerText.h"
#include "support/TempFolder.h"
#include "support/Words.h"

namespace vlm::host {
namespace {

using Words = std::vector<std::string>;
using test::operator+;
using test::TempFolder;

void Replace(std::string& text, const std::string& what, const std::string& with) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
}

std::string Told(const Words& arguments) {
    std::ostringstream out, err;
    const int status = RunHost(arguments, out, err, false);
    return out.str() + err.str() + std::to_string(status);
}

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
        std::string said = Told(all);
        Replace(said, folder_.Path().string(), "@");
        return said;
    }

    std::map<std::string, std::string> Files(const std::string& place) const { return test::FilesIn(folder_ / place); }

private:
    TempFolder folder_;
    Words databases_;
};

/// The first column of what a database says to a query, a line for each row.
std::string Rows(const std::string& file, const std::string& sql) {
    sqlite3* database = nullptr;
    std::string rows;
    const auto add = [](void* all, int, char** cells, char**) {
        static_cast<std::string*>(all)->append(cells[0] == nullptr ? "NULL" : cells[0]).append("\n");
        return 0;
    };
    if (sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK ||
        sqlite3_exec(database, sql.c_str(), add, &rows, nullptr) != SQLITE_OK)
        rows = sqlite3_errmsg(database);
    sqlite3_close_v2(database);
    return rows;
}

/// The same work over a server and with the embedded databases, both made by the host.
class ServerRun : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        setenv(kPasswordVariable, test::kServerPassword, 1);
        demo = std::make_unique<TempFolder>();
        const Words init{"--today", "2011-04-15", "init"};
        const std::string rest = "Installazione (modelli di importazione), Sorgenti (elenchi da importare).\n0";
        EXPECT_EQ(Told(init + Words{*demo / "file"}),
                  "Creati in " + (*demo / "file") + ": Aldra, Studio0012 (Sicilia), Studio0016 (Puglia); " + rest);
        const tds::TdsServer server(demo->Folder("server"), test::ServerOptions());
        EXPECT_EQ(Told(init + Words{"--odbc", test::OdbcServerText(server, "master"), *demo / "server"}),
                  "Aldra: 7.952 righe.\nStudio0012: 17.105 righe.\nStudio0016: 17.137 righe.\n"
                  "Creati sul server: Aldra, Studio0012 (Sicilia), Studio0016 (Puglia); in " +
                      (*demo / "server") + ": " + rest);
    }
    static void TearDownTestSuite() {
        demo.reset();
        unsetenv(kPasswordVariable);
    }
    ServerRun() {
        for (const char* copy : {"file", "server"})
            std::filesystem::copy(demo->Path() / copy, temp / copy, std::filesystem::copy_options::recursive);
    }

    Words Server(const tds::TdsServer& server) const {
        return {"--odbc", test::OdbcServerText(server), "--install", temp / "server/Installazione"};
    }
    /// The tables that are not the same in the server's databases and in the files.
    std::string Differences() const {
        std::string all;
        for (const char* database : {"Aldra", "Studio0012", "Studio0016"}) {
            const std::string file = std::string(database) + ".sqlite";
            std::string sql = "ATTACH '" + (temp / ("server/" + file)) + "' AS server;";
            for (const Table& table : (file == "Aldra.sqlite" ? MasterSchema() : ClinicSchema()).tables) {
                const std::string name(table.name), ours = "SELECT * FROM main." + name,
                                                    theirs = "SELECT * FROM server." + name;
                sql += "SELECT '" + name + "' WHERE EXISTS (" + ours + " EXCEPT " + theirs + ") OR EXISTS (" + theirs +
                       " EXCEPT " + ours + ") OR (SELECT COUNT(*) FROM main." + name +
                       ") <> (SELECT COUNT(*) FROM server." + name + ");";
            }
            all += Rows(temp / ("file/" + file), sql);
        }
        return all;
    }

    inline static std::unique_ptr<TempFolder> demo;
    TempFolder temp;
    const std::string sources = temp / "file/Sorgenti/";
    const std::string month = "ASLExport cboBranca=1 cboMese=3 numAnno=2011 txtPath=@/invio cmdConferma!";
    const std::string quarter =
        "ASLExport optTipoExport=1 cboBranca=1 cboTrimestre=#0 numAnnoTrimestre=2011 txtPath=@/invio cmdConferma!";
    const std::string projects =
        "ExportProgetti cboStatoProgetto=#1 cboDaTrimestre=#0 cboATrimestre=#0 numAnno=2011 txtPath=@/invio"
        " cmdConferma!";
    const std::string patients = "ASLImportPatient cboASL=Elenco~assistiti txtPath=" + sources + "assistiti.txt";
};

/// What a clerk does in a month: both regions, prescriptions, projects, lists.
TEST_F(ServerRun, EverythingGoesAsWithTheEmbeddedDatabases) {
    EXPECT_EQ(Differences(), "");
    const tds::TdsServer server(temp / "server", test::ServerOptions());
    const std::string faulty = "ASLExport cboBranca=2 cboMese=3 numAnno=2011 txtPath=@/invio answer:yes cmdConferma!";
    const std::pair<std::string, const char*> runs[] = {
        {"ASLExport cboBranca=1 cboMese=3 numAnno=2011 chkIncludiPrecedenti=1 txtPath=@/invio cmdConferma!",
         "successo\\r\\nElaborate 259 linee."},
        {month, "Nessun dato da elaborare."},
        {faulty, "anomalie"},
        {quarter, "successo"},
        {"ASLPanoramico cboBranca=3 dtFromDate=01/03/2011 dtToDate=31/03/2011 txtPath=@/invio/ricette.txt cmdConferma!",
         "Elaborazione conclusa."},
        {projects, "Elaborazione conclusa."},
        {"--clinic 16 " + month, "Elaborate 43 linee."},
        {"--clinic 16 " + faulty, "Elaborate 57 linee."},
        {"ASLImportPatient cboASL=Assistiti~a~colonne txtPath=" + sources +
             "assistiti-colonne.txt cmdElabora! grdList? cboFiltro=#1 lblConteggio?",
         "( 13 pazienti )"},
        {patients + " cmdElabora! lblConteggio? grdList? cmdConferma!",
         "Pazienti scritti: 13\\r\\nPazienti non scritti: 0"},
        {"ASLImportPatient cboASL=Catania txtPath=" + sources +
             "catania.txt cmdElabora! cboFiltro=#1 lblConteggio? cboFiltro=#2 in:frmRevoca"
             " chkRevocato=1 dtDataRevoca=31/03/2011 cboTipoRevocaPaziente=#1 cmdConferma! end: grdList2!1"
             " cmdConferma!",
         "( 0 pazienti )"},
        {"ASLImportPatient cboImportazione=#1 cboASL=#0 txtPath=" + sources +
             "esenti.txt cmdElabora! cmdSelezionaTutti! cmdConferma!",
         "Esenzioni scritte: 36\\r\\nEsenzioni non scritte: 4"},
        {"ASLImportPatient cboTipoImportazione=#1 cboSpecialista=#0 in:frmInpsPIN txtConferma=1234567890 cmdConferma!"
         " end: cmdElabora! grdList? lblConteggio?",
         "( 8 pazienti )"}};
    const Workplace embedded({"--data", temp / "file"}), served(Server(server));
    for (const auto& [run, told] : runs) {
        const std::string said = embedded.Play(run);
        EXPECT_EQ(served.Play(run), said) << run;
        EXPECT_NE(said.find(told), std::string::npos) << run << said;
    }
    auto files = embedded.Files("lavoro");
    EXPECT_EQ(served.Files("lavoro"), files);
    for (const auto& [name, lines] : {std::pair{"2010311MErr.txt", 64}, {"C160203Err.txt", 52}})
        EXPECT_EQ(std::count(files[name].begin(), files[name].end(), '\n'), lines) << name;
    EXPECT_EQ(served.Files("invio"), embedded.Files("invio"));
    EXPECT_EQ(served.Files("invio").size(), 6U);
    EXPECT_EQ(Differences(), "");
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
        EXPECT_EQ(Differences(), "") << said;
    }
}

TEST_F(ServerRun, ARunThatIsCommittedIsDoneThoughTheServerGoesAwayThen) {
    const tds::TdsServer server(temp / "server", test::ServerOptions({.endAfterCommit = true}));
    const Workplace served(Server(server));
    const std::string said = served.Play(month);
    EXPECT_NE(said.find("Elaborazione terminata con successo"), std::string::npos) << said;
    EXPECT_EQ(served.Files("invio").size(), 1U);
    EXPECT_EQ(Differences(), "Parcella\n");
}

}  // namespace
}  // namespace vlm::host
