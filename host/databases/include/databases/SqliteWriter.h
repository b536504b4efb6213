#pragma once

#include <filesystem>

#include "databases/DatabaseWriter.h"

struct sqlite3;

namespace vlm::host {

/// Writes a file of the embedded engine. There is no journal and nothing is forced to the disk, so write where a
/// half-made file does no harm.
class SqliteWriter final : public DatabaseWriter {
public:
    /// Creates the file, which must not be there yet.
    explicit SqliteWriter(const std::filesystem::path& file);
    ~SqliteWriter() override;

    const std::string& Name() const override { return name_; }
    /// Runs a script of one or more statements without rows.
    void Execute(const std::string& script);
    void Commit() override;

private:
    class PreparedInsertion;

    const SqlDialect& Dialect() const override { return dialect_; }
    void Run(const std::string& statement) override { Execute(statement); }
    std::shared_ptr<Insertion> Into(std::string_view table, std::string_view columns) override;
    void Check(int result) const;

    SqliteDialect dialect_;
    std::string name_;
    sqlite3* database_ = nullptr;
};

}  // namespace vlm::host
