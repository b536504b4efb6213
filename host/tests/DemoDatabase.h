#pragma once

#include <filesystem>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "demo/DemoClinic.h"
#include "support/TempFolder.h"

namespace vlm::host {

inline const Date kDemoDay = *Date::FromYmd(2011, 4, 15);

/// The demo of that day, made once. For questions that only read, and for copies.
inline const test::TempFolder& SharedDemo() {
    static const test::TempFolder folder;
    static const bool made = (CreateDemo(folder.Path(), kDemoDay), true);
    (void)made;
    return folder;
}

/// A demo database as any tool of its engine sees it, the master tables attached as "Aldra".
class DemoDatabase {
public:
    using Row = std::vector<std::string>;

    DemoDatabase(const std::filesystem::path& folder, const std::string& name) {
        if (sqlite3_open_v2((folder / (name + ".sqlite")).c_str(), &database_, SQLITE_OPEN_READWRITE, nullptr) != 0)
            throw std::runtime_error(sqlite3_errmsg(database_));
        Attach(folder, "Aldra", "Aldra");
    }
    DemoDatabase(const DemoDatabase&) = delete;
    DemoDatabase& operator=(const DemoDatabase&) = delete;
    ~DemoDatabase() { sqlite3_close_v2(database_); }

    void Attach(const std::filesystem::path& folder, const std::string& name, const std::string& as) {
        Rows("ATTACH '" + (folder / (name + ".sqlite")).string() + "' AS " + as);
    }
    /// Every row with its cells as text, "NULL" for a null.
    std::vector<Row> Rows(const std::string& sql) {
        std::vector<Row> rows;
        const auto add = [](void* all, int count, char** cells, char**) {
            Row& row = static_cast<std::vector<Row>*>(all)->emplace_back();
            for (int i = 0; i < count; ++i) row.emplace_back(cells[i] == nullptr ? "NULL" : cells[i]);
            return 0;
        };
        if (sqlite3_exec(database_, sql.c_str(), add, &rows, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(database_));
        return rows;
    }
    int Number(const std::string& sql) { return std::stoi(Rows(sql).at(0).at(0)); }
    /// The first rows of one query that the other does not give, and whether it gives as many; the engine compares.
    std::vector<Row> Differences(const std::string& one, const std::string& other) {
        std::vector<Row> rows = Rows("SELECT * FROM (" + one + ") EXCEPT SELECT * FROM (" + other + ") LIMIT 3");
        const auto count = [](const std::string& query) { return "SELECT COUNT(*) FROM (" + query + ")"; };
        if (Number(count(one)) != Number(count(other))) rows.push_back({"another number of rows"});
        return rows;
    }

private:
    sqlite3* database_ = nullptr;
};

}  // namespace vlm::host
