#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/Connection.h"

namespace vlm::data {

class SqliteSession;

/// A folder with one file for each database: `Aldra.sqlite`, `Studio0012.sqlite`, ... A statement that names another
/// database than the clinic's own ("Aldra..Comune") opens it on first use. For one thread at a time.
class SqliteConnection final : public Connection {
public:
    /// `Provider=SQLite;Data Source=FOLDER;Initial Catalog=Studio0012[;Busy Timeout=10000]`, the time in milliseconds
    /// that a statement waits for another user's lock. Throws Error naming what is missing; never creates a file.
    static ConnectionPtr Connect(std::string_view connectionText);

    SqliteConnection(const std::string& folder, const std::string& catalog, int busyMilliseconds);
    ~SqliteConnection() override;

    bool IsOpen() const override { return true; }
    std::string InitialCatalog() const override;

    RecordsetPtr Open(std::string_view sql) override;
    std::int64_t Execute(std::string_view sql) override;
    /// Throws Error for a view, and for a table WITHOUT ROWID.
    UpdatableRecordsetPtr OpenForUpdate(std::string_view sql) override;

    void BeginTransaction() override;
    void CommitTransaction() override;
    void RollbackTransaction() override;

private:
    struct Engine;
    struct Prepared;
    std::unique_ptr<Engine> MakeEngine() const;
    void Begin();
    Prepared PrepareStatements(std::string_view sql);
    SqliteSession& Own() const;

    std::string folder_;
    std::string catalog_;
    int busyMilliseconds_;
    /// Statements run on the first engine. Another one joins it when a statement names a database that the first has
    /// no room for while a row set is read: the list of all the clinics, and for each its own database.
    std::vector<std::unique_ptr<Engine>> engines_;
    bool inTransaction_ = false;
    bool begun_ = false;  // of the engine itself
};

/// As the table declares the column of rows that a SqliteConnection opened ("VARCHAR(30)"); "" for an expression.
std::string_view DeclaredTypeOf(const Recordset& rows, int ordinal);

}  // namespace vlm::data
