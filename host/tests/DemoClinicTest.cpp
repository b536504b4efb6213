#include <gtest/gtest.h>
#include <set>

#include "DemoClinicComuni.h"
#include "demo/DemoClinic.h"
#include "support/FakeServer.h"
#include "support/RowText.h"
#include "support/TempFolder.h"

namespace vlm::host {
namespace {

using data::testing::ErrorText;
using Names = std::vector<std::string>;

const Date kDay = *Date::FromYmd(2011, 4, 15);
const Names kDatabases = {"Aldra", "Studio0012", "Studio0016"};
const Names kOthers = {"master", "Altro"};  // what a server has

/// Few services, and comuni of the two regions alone, are enough for what is asked here.
class DemoClinic : public testing::Test {
protected:
    DemoClinic() {
        options.serviceRows = 72;
        options.comuniCsv = near / "comuni.csv";
        std::ofstream list(options.comuniCsv);
        for (const std::string_view line : EmbeddedComuni())
            if (line.ends_with("Regione") || line.ends_with("Sicilia") || line.ends_with("Puglia"))
                list << line << '\n';
    }

    /// What making the demo in a folder says when it fails, and on the server.
    std::string InFolder(const std::string& folder) {
        return ErrorText([&] { CreateDemo(folder, kDay, options); });
    }
    std::string OnServer(const std::filesystem::path& folder, const DatabaseMade& made = {}) {
        return ErrorText([&] {
            CreateDemoOnServer([this](const std::string& name) { return server.Open(leadsTo(name)); }, folder, kDay,
                               made ? made : [](const std::string&, std::int64_t) {}, options);
        });
    }

    test::TempFolder temp, near;
    DemoOptions options;
    test::FakeServer server;
    std::function<std::string(const std::string&)> leadsTo = [](const std::string& name) { return name; };
};

TEST_F(DemoClinic, AFolderWithAnythingOfItsNamesIsLeftAlone) {
    for (const char* name : {"Aldra.sqlite", "Studio0016.sqlite", "Studio0012.sqlite-journal", "Sorgenti"}) {
        const std::string folder = temp.Folder(std::string("with-") + name);
        test::WriteBytes(folder + "/" + name, "mine");
        const std::string error = InFolder(folder);
        EXPECT_NE(error.find(name), std::string::npos) << error;
        EXPECT_EQ(test::NamesIn(folder), Names{name});
        EXPECT_EQ(test::ReadBytes(folder + "/" + name), "mine");
    }
    test::WriteBytes(temp / "file", "mine");
    EXPECT_NE(InFolder(temp / "file"), "");
    EXPECT_EQ(test::ReadBytes(temp / "file"), "mine");
}

TEST_F(DemoClinic, AFailureLeavesTheFolderAsItWas) {
    options.comuniCsv = temp / "comuni.csv";
    // Comuni that lack those of the region are told only when the first clinic is being made.
    for (const auto& [line, told] :
         {std::pair{"Roma;12;H501;RM", "Roma;12"}, {"Aci Castello;087002;A026;CT", "non è in elenco"}}) {
        test::WriteBytes(temp / "comuni.csv", std::string("Comune;CodiceISTAT;CodiceCatastale;Sigla\n") + line + "\n");
        const std::string error = InFolder(temp / "deep/demo");
        EXPECT_NE(error.find(told), std::string::npos) << error;
    }
    EXPECT_EQ(test::NamesIn(temp.Path()), Names{"comuni.csv"});
}

/// Whatever is being done when it comes, the first time or the last.
TEST_F(DemoClinic, EveryFailureLeavesServerAndFolderAsTheyWere) {
    EXPECT_EQ(OnServer(temp / "whole"), "");
    EXPECT_EQ(server.databases, (Names{"master", "Altro", "Aldra", "Studio0012", "Studio0016"}));
    EXPECT_EQ(test::NamesIn(temp / "whole"), (Names{"Installazione", "Sorgenti"}));
    const Names calls = server.calls;
    std::set<std::string> kinds;
    for (std::size_t at = 1; at <= calls.size(); ++at) {
        if (!kinds.insert(calls[at - 1]).second && at < calls.size()) continue;
        server = {};
        server.failAt = at;
        EXPECT_NE(OnServer(temp / "deep/demo").find(test::FakeServer::kFailure), std::string::npos) << calls[at - 1];
        EXPECT_EQ(server.databases, kOthers) << calls[at - 1];
        EXPECT_EQ(test::NamesIn(temp.Path()), Names{"whole"}) << calls[at - 1];
    }
    EXPECT_GT(kinds.size(), 24u);

    // A folder that cannot be filled takes the databases back.
    server = {};
    const std::string folder = temp.Folder("demo");
    const auto intrude = [&](const std::string& database, std::int64_t) {
        if (database == "Studio0016") test::WriteBytes(folder + "/Sorgenti", "mine");
    };
    for (const DatabaseMade& made : {DatabaseMade(intrude), DatabaseMade()}) {
        EXPECT_NE(OnServer(folder, made).find("Sorgenti"), std::string::npos);
        EXPECT_EQ(server.databases, kOthers);
        EXPECT_EQ(test::NamesIn(folder), Names{"Sorgenti"});
        EXPECT_EQ(test::ReadBytes(folder + "/Sorgenti"), "mine");
    }
}

TEST_F(DemoClinic, NothingThatIsOnTheServerIsTouched) {
    for (const std::string& there : kDatabases) {
        server = {};
        server.databases.push_back(there);
        server.refuses = [](const std::string&) { return true; };
        EXPECT_EQ(OnServer(temp / "demo"),
                  "\"" + there + "\" esiste già sul server: la clinica dimostrativa non viene creata.");
        EXPECT_EQ(server.databases, (Names{"master", "Altro", there}));
    }
    // One that comes to be while they are made.
    server = {};
    server.refuses = [this](const std::string& sql) {
        if (sql == "CREATE DATABASE Studio0012") server.databases.push_back("Studio0012");
        return false;
    };
    const std::string error = OnServer("");
    EXPECT_TRUE(error.starts_with("Impossibile creare il database \"Studio0012\": ")) << error;
    EXPECT_EQ(server.databases, (Names{"master", "Altro", "Studio0012"}));

    // A connection text that always leads to the same.
    server = {};
    leadsTo = [](const std::string& name) { return name == "Studio0016" ? "Altro" : name; };
    EXPECT_EQ(OnServer(""), "La connessione porta al database \"Altro\", non a \"Studio0016\".");
    EXPECT_EQ(server.databases, kOthers);
    EXPECT_EQ(std::count(server.calls.begin(), server.calls.end(), "Altro: begin"), 0);
}

TEST_F(DemoClinic, ADropThatIsRefusedIsForcedOrTold) {
    const std::string failure = "Impossibile scrivere il database \"Studio0012\": rifiutato";
    std::set<std::string> refused;
    bool always = false;
    server.refuses = [&](const std::string& sql) {
        if (sql.starts_with("DROP DATABASE")) return always || refused.insert(sql).second;
        return sql.starts_with("CREATE PROCEDURE");
    };
    EXPECT_EQ(OnServer(""), failure);
    EXPECT_EQ(refused.size(), 3U);
    EXPECT_EQ(server.databases, kOthers);
    always = true;
    EXPECT_EQ(OnServer(""), failure +
                                "\nDa eliminare a mano dal server, perché incompleti: "
                                "\"Aldra\", \"Studio0012\", \"Studio0016\".");
}

}  // namespace
}  // namespace vlm::host
