#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "values/Error.h"

struct sqlite3;
struct sqlite3_stmt;

namespace vlm::data {

/// The engine has as many databases open as it takes, and none of them can be let go.
class TooManyDatabases final : public Error {
public:
    explicit TooManyDatabases(const std::string& database)
        : Error("Il database " + database + " non si può aprire: ci sono troppi database in uso.") {}
};

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const noexcept;
};
using SqliteStatementPtr = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// The engine's handle on a folder of databases: the clinic's own is "main", each other one is attached under its own
/// name on first use. Row sets keep the session alive, so that closing the connection before them does no harm.
class SqliteSession {
public:
    /// Throws Error naming a folder or database that does not exist. Never creates a file.
    SqliteSession(const std::string& folder, std::string_view catalog, int busyMilliseconds);
    SqliteSession(const SqliteSession&) = delete;
    SqliteSession& operator=(const SqliteSession&) = delete;
    ~SqliteSession();

    sqlite3* Handle() const { return handle_; }
    /// The clinic's database as the connection text names it.
    const std::string& Catalog() const { return catalog_; }
    /// The name that users know a schema by.
    std::string NameOf(const std::string& schema) const;

    /// Begins the translation of a statement: what is attached from here on stays until the next one.
    void BeginStatement() { ++statement_; }
    std::uint64_t StatementNumber() const { return statement_; }
    bool InTransaction() const;
    /// The engine's name for a database. When there are as many as the engine takes, the one that was not in use for
    /// the longest time is let go; its name is put in `detached`. None can be while a transaction is open or a row
    /// set is read: TooManyDatabases.
    std::string Attach(std::string_view database, std::string& detached);
    /// Keeps databases from being let go while a row set reads them. Every Hold is followed by a Release.
    void Hold(const std::vector<std::string>& schemas) { Count(schemas, 1); }
    void Release(const std::vector<std::string>& schemas) noexcept { Count(schemas, -1); }

    /// `databases` are named in the text of an error.
    SqliteStatementPtr Prepare(std::string_view sql, const std::vector<std::string>& databases) const;
    /// True when there is a row, false at the end.
    bool Step(sqlite3_stmt* statement, const std::vector<std::string>& databases) const;
    /// Runs one statement without rows.
    void Run(std::string_view sql) const;

private:
    struct Attached {
        std::string name;
        int holders = 0;
        std::uint64_t lastUse = 0;
    };
    std::filesystem::path FileOf(std::string_view database) const;
    std::string LetGo(const std::string& wanted);
    void Count(const std::vector<std::string>& schemas, int change) noexcept;
    [[noreturn]] void Fail(const std::vector<std::string>& databases) const;

    std::filesystem::path folder_;
    std::string catalog_;
    sqlite3* handle_ = nullptr;
    std::vector<Attached> attached_;
    std::uint64_t statement_ = 0;
};

/// Gives a connection the collation and the functions that translated statements use, and its LIKE. Throws Error.
void RegisterFunctions(sqlite3* database);

}  // namespace vlm::data
