#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "sqlite/SqliteConnection.h"
#include "support/ConnectionContract.h"

namespace vlm::data::testing {

/// A folder of databases that lives as long as the test.
class DatabaseFolder final : public ConnectionFixture {
public:
    DatabaseFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("vlm-data-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
        CreateDatabase("Aldra");
        CreateDatabase("Studio0012");
    }
    DatabaseFolder(const DatabaseFolder&) = delete;
    DatabaseFolder& operator=(const DatabaseFolder&) = delete;
    ~DatabaseFolder() override {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& Path() const { return path_; }

    /// An empty file is an empty database.
    void CreateDatabase(const std::string& database) const { std::ofstream(path_ / (database + ".sqlite")); }

    std::string ConnectionText(const std::string& database = "Studio0012") const {
        return "Provider=SQLite;Data Source=\"" + path_.string() + "\";initial catalog=" + database + ";Busy Timeout=0";
    }

    void Run(const std::string& database, const std::string& sql) override {
        const ConnectionPtr connection = SqliteConnection::Connect(ConnectionText(database));
        connection->Execute("PRAGMA synchronous = OFF");  // nothing here has to outlive a power failure
        connection->Execute(sql);
    }
    ConnectionPtr Connect() override { return SqliteConnection::Connect(ConnectionText()); }

private:
    std::filesystem::path path_;
};

}  // namespace vlm::data::testing
