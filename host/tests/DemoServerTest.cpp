#include <fstream>
#include <gtest/gtest.h>
#include <set>

#include "DemoDatabase.h"
#include "databases/ClinicSchema.h"
#include "databases/MasterSchema.h"
#include "databases/SqliteWriter.h"
#include "demo/DemoClinic.h"
#include "demo/DemoClinicComuni.h"
#include "demo/DemoClinicProfile.h"
#include "support/FakeServer.h"
#include "support/TempFolder.h"

namespace vlm::host {
namespace {

const Date kToday = *Date::FromYmd(2011, 4, 15);
const std::vector<std::string> kDatabases = {"Aldra", "Studio0012", "Studio0016"};
using Names = std::vector<std::string>;

class DemoServer : public testing::Test {
protected:
    /// What making the demo on the server says when it fails.
    std::string ErrorOf(const std::filesystem::path& folder, const DatabaseMade& made = {}) {
        try {
            CreateDemoOnServer([this](const std::string& name) { return server_.Open(leadsTo_(name)); }, folder, kToday,
                               made ? made : [](const std::string&, std::int64_t) {}, options_);
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
    void ExpectUntouched(const std::string& why) {
        EXPECT_EQ(server_.databases, (Names{"master", "Altro"})) << why;
        EXPECT_EQ(test::NamesIn(temp_.Path()), Names{"comuni.csv"}) << why;
    }

    test::TempFolder temp_;
    test::FakeServer server_;
    std::function<std::string(const std::string&)> leadsTo_ = [](const std::string& name) { return name; };
    DemoOptions options_;
};

TEST_F(DemoServer, EveryFailureLeavesServerAndFolderAsTheyWere) {
    MakeSmall();
    int at = 1;
    for (;; ++at) {
        server_ = {};
        server_.failAt = at;
        const std::string error = ErrorOf(temp_ / "deep/demo");
        if (!server_.HasFailed()) break;
        EXPECT_NE(error.find(test::FakeServer::kFailure), std::string::npos) << at << error;
        ExpectUntouched(std::to_string(at));
        if (HasFailure()) return;
    }
    EXPECT_GT(at, 80);
    EXPECT_EQ(server_.databases, (Names{"master", "Altro", "Aldra", "Studio0012", "Studio0016"}));
    EXPECT_EQ(test::NamesIn(temp_ / "deep/demo"), (Names{"Installazione", "Sorgenti"}));
}

TEST_F(DemoServer, AFolderThatCannotBeFilledTakesTheDatabasesBack) {
    MakeSmall();
    const std::string folder = temp_.Folder("demo");
    const auto intrude = [&](const std::string& database, std::int64_t) {
        if (database == "Studio0016") test::WriteBytes(folder + "/Sorgenti", "mine");
    };
    EXPECT_NE(ErrorOf(folder, intrude).find("Sorgenti"), std::string::npos);
    EXPECT_EQ(server_.databases, (Names{"master", "Altro"}));
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
    EXPECT_EQ(server_.databases, (Names{"master", "Altro"}));
    EXPECT_FALSE(server_.statements.contains("Altro"));

    server_ = {};
    test::WriteBytes(temp_.Folder("demo") + "/Sorgenti", "mine");
    EXPECT_NE(ErrorOf(temp_ / "demo").find("Sorgenti\" esiste già"), std::string::npos);
    EXPECT_EQ(server_.databases, (Names{"master", "Altro"}));
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
    EXPECT_EQ(server_.databases, (Names{"master", "Altro"}));

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

std::string Columns(const Table& table, bool moments) {
    std::string columns;
    for (const Column& column : table.columns) {
        const std::string name(column.name);
        const bool moment = moments && column.type == ColumnType::DateTime;
        columns += (columns.empty() ? "" : ",") + (moment ? "replace(" + name + ",'-','')" : name);
    }
    return columns;
}

std::string KeyOf(const Table& table) {
    std::string keys;
    for (std::string_view key : table.KeyColumns()) keys.append(keys.empty() ? "" : ",").append(key);
    return keys.empty() ? "rowid" : keys;
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
    CreateDemo(temp_ / "files", kToday);
    temp_.Folder("server");
    for (const std::string& name : kDatabases) {
        SqliteWriter writer(temp_ / ("server/" + name + ".sqlite"));
        for (const std::string& sql : server_.statements[name]) {
            if (sql.starts_with("CREATE TABLE") || sql.starts_with("INSERT")) writer.Execute(Plain(sql));
            EXPECT_LT(sql.size(), 64000U);
            EXPECT_LE(std::count(sql.begin(), sql.end(), '\n'), 200) << sql.substr(0, 50);
        }
        writer.Commit();
    }
    for (std::size_t i = 0; i < kDatabases.size(); ++i) {
        DemoDatabase file(temp_ / "files", kDatabases[i]), server(temp_ / "server", kDatabases[i]);
        std::size_t rows = 0;
        for (const Table& table : (i == 0 ? MasterSchema() : ClinicSchema()).tables) {
            const std::string name(table.name);
            const std::string described =
                "SELECT name, replace(type,'INTEGER','INT') FROM pragma_table_info('" + name + "')";
            EXPECT_EQ(server.Rows(described), file.Rows(described)) << name;
            const auto sent = server.Rows("SELECT " + Columns(table, false) + " FROM " + name + " ORDER BY rowid");
            EXPECT_TRUE(sent ==
                        file.Rows("SELECT " + Columns(table, true) + " FROM " + name + " ORDER BY " + KeyOf(table)))
                << name;
            ExpectFits(file, table);
            rows += sent.size();
        }
        EXPECT_EQ(told.at(i), kDatabases[i] + " " + std::to_string(rows));
    }
}

}  // namespace
}  // namespace vlm::host
