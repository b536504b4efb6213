#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "databases/SqlDialect.h"
#include "values/Currency.h"

namespace vlm::host {

/// A new database that is filled in one go: everything happens in one transaction that Commit ends; a writer that ends
/// without it leaves a database that is good for nothing. Errors throw vlm::Error naming the database.
class DatabaseWriter {
public:
    /// One value: null, a whole number, an amount of euro or a text (kept only until the row is added). A date is ISO
    /// text, with or without a time of day.
    class Cell {
    public:
        using Content = std::variant<std::nullptr_t, std::int64_t, Currency, std::string_view>;

        Cell(std::nullptr_t) {}
        template <std::integral T>
        Cell(T value) : content_(static_cast<std::int64_t>(value)) {}
        Cell(Currency value) : content_(value) {}
        Cell(std::string_view value) : content_(value) {}
        Cell(const std::string& value) : content_(std::string_view(value)) {}
        Cell(const char* value) : content_(std::string_view(value)) {}

        const Content& Get() const { return content_; }

    private:
        Content content_ = nullptr;
    };
    using Cells = std::initializer_list<Cell>;

    /// An insertion into some columns of one table.
    class Insertion {
    public:
        virtual ~Insertion() = default;
        virtual void Add(Cells cells) = 0;
    };

    /// The rows of one table; it must not outlive its writer.
    class Rows {
    public:
        /// `columns`: names parted by commas, in the order of the cells.
        Rows(DatabaseWriter& writer, std::string_view table, std::string_view columns);
        void Add(Cells cells);

    private:
        DatabaseWriter* writer_;
        std::size_t columns_;
        std::shared_ptr<Insertion> insertion_;
    };

    DatabaseWriter() = default;
    DatabaseWriter(const DatabaseWriter&) = delete;
    DatabaseWriter& operator=(const DatabaseWriter&) = delete;
    virtual ~DatabaseWriter() = default;

    /// What the database is called in an error.
    virtual const std::string& Name() const = 0;
    /// Tables, views and procedures.
    void CreateTables(const DatabaseSchema& schema);
    void CreateIndices(const DatabaseSchema& schema);
    virtual void Commit() = 0;
    /// The rows that were added.
    std::int64_t RowCount() const { return rowCount_; }

private:
    virtual const SqlDialect& Dialect() const = 0;
    virtual void Run(const std::string& statement) = 0;
    virtual std::shared_ptr<Insertion> Into(std::string_view table, std::string_view columns) = 0;

    std::int64_t rowCount_ = 0;
};

/// A text that is null when it is empty.
inline DatabaseWriter::Cell OrNull(std::string_view value) {
    return value.empty() ? DatabaseWriter::Cell(nullptr) : DatabaseWriter::Cell(value);
}

/// A key that is null when it is 0.
inline DatabaseWriter::Cell OrNull(std::int64_t key) {
    return key == 0 ? DatabaseWriter::Cell(nullptr) : DatabaseWriter::Cell(key);
}

}  // namespace vlm::host
