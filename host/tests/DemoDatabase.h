#pragma once

#include <filesystem>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vlm::host {

/// A demo database as any tool of its engine sees it, the master tables attached as "Aldra".
class DemoDatabase {
public:
    DemoDatabase(const std::filesystem::path& folder, const std::string& name) {
        Check(sqlite3_open_v2((folder / (name + ".sqlite")).c_str(), &database_, SQLITE_OPEN_READWRITE, nullptr));
        Rows("ATTACH '" + (folder / "Aldra.sqlite").string() + "' AS Aldra");
    }
    DemoDatabase(const DemoDatabase&) = delete;
    DemoDatabase& operator=(const DemoDatabase&) = delete;
    ~DemoDatabase() { sqlite3_close_v2(database_); }

    /// Every row with its cells as text, "NULL" for a null. `argument` stands for ?1.
    std::vector<std::vector<std::string>> Rows(const std::string& sql, int argument = 0) {
        sqlite3_stmt* statement = Prepare(sql);
        if (sqlite3_bind_parameter_count(statement) > 0) sqlite3_bind_int(statement, 1, argument);
        std::vector<std::vector<std::string>> rows;
        int result = sqlite3_step(statement);
        for (; result == SQLITE_ROW; result = sqlite3_step(statement)) {
            std::vector<std::string>& row = rows.emplace_back();
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                row.emplace_back(text == nullptr ? "NULL" : text);
            }
        }
        sqlite3_finalize(statement);
        Check(result == SQLITE_DONE ? SQLITE_OK : result);
        return rows;
    }
    int Number(const std::string& sql) { return std::stoi(Rows(sql).at(0).at(0)); }

    /// Names and declared types of the columns; an empty type where a column is not a plain one.
    std::vector<std::pair<std::string, std::string>> Columns(const std::string& sql) {
        sqlite3_stmt* statement = Prepare(sql);
        std::vector<std::pair<std::string, std::string>> columns;
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const char* type = sqlite3_column_decltype(statement, i);
            columns.emplace_back(sqlite3_column_name(statement, i), type == nullptr ? "" : type);
        }
        sqlite3_finalize(statement);
        return columns;
    }

private:
    sqlite3_stmt* Prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        Check(sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr));
        return statement;
    }
    void Check(int result) const {
        if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_));
    }

    sqlite3* database_ = nullptr;
};

}  // namespace vlm::host
