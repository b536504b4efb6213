#include "databases/TSqlWriter.h"

#include <algorithm>
#include <optional>

#include "database/SqlTokens.h"
#include "values/Date.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace {

[[noreturn]] void Refuse(const Column& column) {
    throw Error("Valore non valido per la colonna " + std::string(column.name) + ".");
}

std::string TextOf(std::string_view value) { return (text::IsAscii(value) ? "" : "N") + data::SqlTextLiteral(value); }

std::string MomentOf(std::string_view text, const Column& column) {
    const std::optional<Date::Civil> moment = ParseIsoCivil(text);
    if (!moment) Refuse(column);
    const auto two = [](int number) { return text::FormatZeros(number, 2); };
    std::string day = "'" + text::FormatZeros(moment->year, 4) + two(moment->month) + two(moment->day);
    if (moment->hour != 0 || moment->minute != 0 || moment->second != 0)
        day += " " + two(moment->hour) + ":" + two(moment->minute) + ":" + two(moment->second);
    return day += "'";
}

/// The sign apart, so that the smallest amount is written too.
std::string AmountOf(Currency amount) {
    const bool negative = amount.Units() < 0;
    const auto units = static_cast<std::uint64_t>(amount.Units());
    const std::uint64_t magnitude = negative ? 0 - units : units;
    std::string fraction = std::to_string(magnitude % Currency::kScale);
    fraction.insert(0, 4 - fraction.size(), '0');
    return (negative ? "-" : "") + std::to_string(magnitude / Currency::kScale) + "." + fraction;
}

std::string NumberOf(std::int64_t number, const Column& column) {
    switch (column.type) {
        case ColumnType::Bit:
            return number == 0 ? "0" : "1";
        case ColumnType::Money:
            return AmountOf(Currency::FromInteger(number));
        case ColumnType::VarChar:
            return "'" + std::to_string(number) + "'";
        case ColumnType::DateTime:
            Refuse(column);
        case ColumnType::Int:
        case ColumnType::SmallInt:
            break;
    }
    return std::to_string(number);
}

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

std::string TSqlLiteral(const DatabaseWriter::Cell& cell, const Column& column) {
    const DatabaseWriter::Cell::Content& content = cell.Get();
    if (const auto* number = std::get_if<std::int64_t>(&content)) return NumberOf(*number, column);
    if (const auto* text = std::get_if<std::string_view>(&content)) {
        if (column.type == ColumnType::DateTime) return MomentOf(*text, column);
        if (column.type == ColumnType::VarChar) return TextOf(*text);
        Refuse(column);
    }
    if (const auto* amount = std::get_if<Currency>(&content)) {
        if (column.type != ColumnType::Money) Refuse(column);
        return AmountOf(*amount);
    }
    if (column.key) Refuse(column);
    return "NULL";
}

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
