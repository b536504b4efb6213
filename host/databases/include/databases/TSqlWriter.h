#pragma once

#include <string>
#include <vector>

#include "database/Connection.h"
#include "databases/DatabaseWriter.h"

namespace vlm::host {

/// A cell as T-SQL writes it for a column of its type: a text in single quotes, with the mark of Unicode where it is
/// not plain ASCII; a moment as 'YYYYMMDD' or 'YYYYMMDD HH:MM:SS', which no session's language misreads; an amount with
/// four digits after the point; a truth value as 0 or 1. Throws Error naming the column for a value that it cannot
/// hold.
std::string TSqlLiteral(const DatabaseWriter::Cell& cell, const Column& column);

/// Writes a database of a server that speaks T-SQL, over a connection to that database. Rows go there in statements of
/// many rows, those of one table in the order in which they were added.
class TSqlWriter final : public DatabaseWriter {
public:
    /// Begins the transaction. `schema` tells the columns' types, and outlives the writer.
    TSqlWriter(data::ConnectionPtr connection, const DatabaseSchema& schema);

    const std::string& Name() const override { return name_; }
    void Commit() override;

private:
    class Batch;

    const SqlDialect& Dialect() const override { return dialect_; }
    /// After the rows that wait.
    void Run(const std::string& statement) override;
    void Execute(const std::string& statement);
    void Flush();
    std::shared_ptr<Insertion> Into(std::string_view table, std::string_view columns) override;

    TSqlDialect dialect_;
    const DatabaseSchema& schema_;
    data::ConnectionPtr connection_;
    std::string name_;
    data::Transaction transaction_;
    std::vector<std::shared_ptr<Batch>> batches_;
};

}  // namespace vlm::host
