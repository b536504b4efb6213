#include "databases/TSqlWriter.h"

#include <algorithm>

#include "TSqlLiteral.h"
#include "values/Error.h"

namespace vlm::host {

namespace {

// A statement takes at most a thousand rows, and engines read long ones slowly.
constexpr int kRowsOfStatement = 200;
constexpr std::size_t kBytesOfStatement = 60 * 1024;

std::vector<const Column*> ColumnsOf(const Table& table, std::string_view names) {
    std::vector<const Column*> columns;
    while (!names.empty()) {
        const std::size_t end = std::min(names.find(','), names.size());
        columns.push_back(&table.ColumnOf(names.substr(0, end)));
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return columns;
}

}  // namespace

/// The rows of one insertion that wait for their statement.
class TSqlWriter::Batch final : public Insertion {
public:
    Batch(TSqlWriter& writer, const Table& table, std::string_view columns)
        : writer_(writer), columns_(ColumnsOf(table, columns)) {
        head_.append("INSERT INTO ").append(table.name).append(" (").append(columns).append(") VALUES");
    }

    void Add(Cells cells) override {
        std::string row;
        auto column = columns_.begin();
        for (const Cell& cell : cells) row.append(row.empty() ? "(" : ", ").append(TSqlLiteral(cell, **column++));
        row += ')';
        if (rows_ == kRowsOfStatement || statement_.size() + row.size() > kBytesOfStatement) Flush();
        if (rows_ == 0) statement_ = head_;
        statement_.append(rows_++ == 0 ? "\n" : ",\n").append(row);
    }

    void Flush() {
        if (rows_ == 0) return;
        writer_.Execute(statement_);
        statement_.clear();
        rows_ = 0;
    }

private:
    TSqlWriter& writer_;
    std::vector<const Column*> columns_;
    std::string head_, statement_;
    int rows_ = 0;
};

TSqlWriter::TSqlWriter(data::ConnectionPtr connection, const DatabaseSchema& schema)
    : schema_(schema),
      connection_(std::move(connection)),
      name_(connection_->InitialCatalog()),
      transaction_(*connection_) {}

void TSqlWriter::Run(const std::string& statement) {
    Flush();
    Execute(statement);
}

void TSqlWriter::Execute(const std::string& statement) {
    try {
        connection_->Execute(statement);
    } catch (const Error& error) {
        throw Error("Impossibile scrivere il database \"" + name_ + "\": " + error.what(), error.Number(),
                    error.Source());
    }
}

std::shared_ptr<DatabaseWriter::Insertion> TSqlWriter::Into(std::string_view table, std::string_view columns) {
    return batches_.emplace_back(std::make_shared<Batch>(*this, schema_.TableOf(table), columns));
}

void TSqlWriter::Flush() {
    for (const auto& batch : batches_) batch->Flush();
}

void TSqlWriter::Commit() {
    Flush();
    transaction_.Commit();
}

}  // namespace vlm::host
