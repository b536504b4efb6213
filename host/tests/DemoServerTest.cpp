#include <fstream>
#include <gtest/gtest.h>
#include <set>

#include "DemoClinicComuni.h"
#include "DemoClinicProfile.h"
#include "DemoDatabase.h"
#include "databases/SqliteWriter.h"
#include "support/FakeServer.h"

namespace vlm::host {
namespace {

using Names = std::vector<std::string>;

const Names kDatabases = {"Aldra", "Studio0012", "Studio0016"};
const Names kOthers = {"master", "Altro"};

class DemoServer : public testing::Test {
protected:
    /// What making the demo on the server says when it fails.
    std::string ErrorOf(const std::filesystem::path& folder, const DatabaseMade& made = {}) {
        try {
            CreateDemoOnServer([this](const std::string& name) { return server_.Open(leadsTo_(name)); }, folder,
                               kDemoDay, made ? made : [](const std::string&, std::int64_t) {}, options_);
        } catch (const std::exception& error) {
            return error.what();
        }
        return "";
    }
    /// The comuni that the clinics need and few services, so that it can be made many times.
    void MakeSmall() {
        const DemoClinicComuni all{""};
        std::ofstream csv(temp_ / "comuni.csv");
        csv << "Comune;CodiceISTAT;CodiceCatastale;Sigla\n";
        for (const DemoClinicProfile& clinic : DemoProfiles()) {
            for (const DemoTown& town : clinic.towns) {
                const DemoComune& one = all.ByIstat(town.istat);
                csv << one.name << ';' << one.istat << ';' << one.landRegistry << ';' << one.sigla << '\n';
            }
        }
        options_.comuniCsv = temp_ / "comuni.csv";
        options_.serviceRows = 72;
    }
    test::TempFolder temp_;
    test::FakeServer server_;
    std::function<std::string(const std::string&)> leadsTo_ = [](const std::string& name) { return name; };
    DemoOptions options_;
};

/// Whatever is being done when it comes, the first time or the last.
TEST_F(DemoServer, EveryFailureLeavesServerAndFolderAsTheyWere) {
    MakeSmall();
    EXPECT_EQ(ErrorOf(temp_ / "whole"), "");
    EXPECT_EQ(server_.databases, (Names{"master", "Altro", "Aldra", "Studio0012", "Studio0016"}));
    EXPECT_EQ(test::NamesIn(temp_ / "whole"), (Names{"Installazione", "Sorgenti"}));
    const Names calls = server_.calls;
    std::set<std::string> kinds;
    for (std::size_t at = 1; at <= calls.size(); ++at) {
        if (!kinds.insert(calls[at - 1]).second && at < calls.size()) continue;
        server_ = {};
        server_.failAt = at;
        EXPECT_NE(ErrorOf(temp_ / "deep/demo").find(test::FakeServer::kFailure), std::string::npos) << calls[at - 1];
        EXPECT_EQ(server_.databases, kOthers) << calls[at - 1];
        EXPECT_EQ(test::NamesIn(temp_.Path()), (Names{"comuni.csv", "whole"})) << calls[at - 1];
    }
    EXPECT_GT(kinds.size(), 24u);
}

TEST_F(DemoServer, AFolderThatCannotBeFilledTakesTheDatabasesBack) {
    MakeSmall();
    const std::string folder = temp_.Folder("demo");
    const auto intrude = [&](const std::string& database, std::int64_t) {
        if (database == "Studio0016") test::WriteBytes(folder + "/Sorgenti", "mine");
    };
    EXPECT_NE(ErrorOf(folder, intrude).find("Sorgenti"), std::string::npos);
    EXPECT_EQ(server_.databases, kOthers);
    EXPECT_EQ(test::NamesIn(folder), Names{"Sorgenti"});
    EXPECT_EQ(test::ReadBytes(folder + "/Sorgenti"), "mine");
}

TEST_F(DemoServer, NothingThatIsThereIsTouched) {
    MakeSmall();
    for (const std::string& there : kDatabases) {
        server_ = {};
        server_.databases.push_back(there);
        server_.refuses = [](const std::string&) { return true; };
        EXPECT_EQ(ErrorOf(temp_ / "demo"),
                  "\"" + there + "\" esiste già sul server: la clinica dimostrativa non viene creata.");
        EXPECT_EQ(server_.databases, (Names{"master", "Altro", there}));
    }
    // One that comes to be while they are made.
    server_ = {};
    server_.refuses = [this](const std::string& sql) {
        if (sql == "CREATE DATABASE Studio0012") server_.databases.push_back("Studio0012");
        return false;
    };
    const std::string error = ErrorOf("");
    EXPECT_TRUE(error.starts_with("Impossibile creare il database \"Studio0012\": ")) << error;
    EXPECT_EQ(server_.databases, (Names{"master", "Altro", "Studio0012"}));

    // A connection text that always leads to the same.
    server_ = {};
    leadsTo_ = [](const std::string& name) { return name == "Studio0016" ? "Altro" : name; };
    EXPECT_EQ(ErrorOf(""), "La connessione porta al database \"Altro\", non a \"Studio0016\".");
    EXPECT_EQ(server_.databases, kOthers);
    EXPECT_FALSE(server_.statements.contains("Altro"));

    server_ = {};
    test::WriteBytes(temp_.Folder("demo") + "/Sorgenti", "mine");
    EXPECT_NE(ErrorOf(temp_ / "demo").find("Sorgenti\" esiste già"), std::string::npos);
    EXPECT_EQ(server_.databases, kOthers);
    EXPECT_EQ(test::ReadBytes(temp_ / "demo/Sorgenti"), "mine");
}

TEST_F(DemoServer, ADropThatIsRefusedIsForcedOrTold) {
    MakeSmall();
    const std::string failure = "Impossibile scrivere il database \"Studio0012\": rifiutato";
    std::set<std::string> refused;
    bool always = false;
    server_.refuses = [&](const std::string& sql) {
        if (sql.starts_with("DROP DATABASE")) return always || refused.insert(sql).second;
        return sql.starts_with("CREATE PROCEDURE");
    };
    EXPECT_EQ(ErrorOf(""), failure);
    EXPECT_EQ(refused.size(), 3U);
    EXPECT_EQ(server_.databases, kOthers);

    always = true;
    EXPECT_EQ(ErrorOf(""), failure +
                               "\nDa eliminare a mano dal server, perché incompleti: "
                               "\"Aldra\", \"Studio0012\", \"Studio0016\".");
}

/// A statement of the server as the embedded engine reads it: texts without the mark of Unicode.
std::string Plain(std::string sql) {
    for (const char* before : {"(N'", ", N'"}) {
        const std::string mark = before;
        for (std::size_t at = sql.find(mark); at != std::string::npos; at = sql.find(mark, at))
            sql.erase(at + mark.size() - 2, 1);
    }
    return sql;
}

/// The rows of a table with their places. `embedded`: moments have "-", and rows lie in the order of the key.
std::string Numbered(const std::string& database, const Table& table, bool embedded) {
    std::string columns, keys;
    for (const Column& column : table.columns) {
        const std::string name(column.name);
        if (column.type != ColumnType::DateTime)
            columns += ", " + name;
        else
            columns += embedded ? ", replace(" + name + ",'-','')" : ", CAST(" + name + " AS TEXT)";
    }
    for (std::string_view key : table.KeyColumns()) keys.append(keys.empty() ? "" : ",").append(key);
    return "SELECT row_number() OVER (ORDER BY " + (embedded && !keys.empty() ? keys : "rowid") + ")" + columns +
           " FROM " + database + "." + std::string(table.name);
}

/// Nothing is cut off, nothing overflows.
void ExpectFits(DemoDatabase& database, const Table& table) {
    for (const Column& column : table.columns) {
        const std::string name(column.name);
        const std::string count = "SELECT COUNT(*) FROM " + std::string(table.name) + " WHERE ";
        if (column.type == ColumnType::VarChar) {
            EXPECT_EQ(database.Number(count + "LENGTH(" + name + ") > " + std::to_string(column.width)), 0) << name;
        } else if (column.type == ColumnType::SmallInt) {
            EXPECT_EQ(database.Number(count + name + " NOT BETWEEN -32768 AND 32767"), 0) << name;
        }
    }
}

TEST_F(DemoServer, TheServerGetsTheTablesAndRowsOfTheEmbeddedDatabases) {
    Names told;
    EXPECT_EQ(ErrorOf("", [&](const std::string& name,
                              std::int64_t rows) { told.push_back(name + " " + std::to_string(rows)); }),
              "");
    for (std::size_t i = 0; i < kDatabases.size(); ++i) {
        {
            SqliteWriter writer(temp_ / (kDatabases[i] + ".sqlite"));
            for (const std::string& sql : server_.statements[kDatabases[i]]) {
                if (sql.starts_with("CREATE TABLE") || sql.starts_with("INSERT")) writer.Execute(Plain(sql));
                EXPECT_LT(sql.size(), 64000U);
                EXPECT_LE(std::count(sql.begin(), sql.end(), '\n'), 200) << sql.substr(0, 50);
            }
            writer.Commit();
        }
        DemoDatabase file(SharedDemo().Path(), kDatabases[i]);
        file.Attach(temp_.Path(), kDatabases[i], "server");
        int rows = 0;
        for (const Table& table : (i == 0 ? MasterSchema() : ClinicSchema()).tables) {
            const std::string name(table.name);
            const auto described = [&](const std::string& database) {
                return "SELECT name, replace(type,'INTEGER','INT') FROM pragma_table_info('" + name + "', '" +
                       database + "')";
            };
            EXPECT_EQ(file.Differences(described("main"), described("server")), std::vector<Names>()) << name;
            EXPECT_EQ(file.Differences(Numbered("main", table, true), Numbered("server", table, false)),
                      std::vector<Names>())
                << name;
            ExpectFits(file, table);
            rows += file.Number("SELECT COUNT(*) FROM server." + name);
        }
        EXPECT_EQ(told.at(i), kDatabases[i] + " " + std::to_string(rows));
    }
}

}  // namespace
}  // namespace vlm::host
