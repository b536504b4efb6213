#pragma once

#include "sqlite/SqliteConnection.h"
#include "support/ConnectionContract.h"
#include "support/TempFolder.h"

namespace vlm::data::testing {

class DatabaseFolder final : public ConnectionFixture {
public:
    DatabaseFolder() {
        CreateDatabase("Aldra");
        CreateDatabase("Studio0012");
    }

    const std::filesystem::path& Path() const { return folder_.Path(); }

    void CreateDatabase(const std::string& database) const { std::ofstream(Path() / (database + ".sqlite")); }

    std::string ConnectionText(const std::string& database = "Studio0012") const {
        return "Provider=SQLite;Data Source=\"" + Path().string() + "\";initial catalog=" + database +
               ";Busy Timeout=0";
    }

    void Run(const std::string& database, const std::string& sql) override {
        const ConnectionPtr connection = SqliteConnection::Connect(ConnectionText(database));
        connection->Execute("PRAGMA synchronous = OFF");  // nothing here has to outlive a power failure
        connection->Execute(sql);
    }
    ConnectionPtr Connect() override { return SqliteConnection::Connect(ConnectionText()); }

private:
    test::TempFolder folder_;
};

class DatabaseTest : public OnDatabases<::testing::Test> {
protected:
    DatabaseTest() {
        fixture = std::make_unique<DatabaseFolder>();
        connection = fixture->Connect();
    }
    DatabaseFolder& Folder() { return static_cast<DatabaseFolder&>(*fixture); }
};

}  // namespace vlm::data::testing
