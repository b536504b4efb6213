#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

#include "platform/text/Currency.h"

struct sqlite3;
struct sqlite3_stmt;

namespace vlm::host {

/// A new SQLite file that is filled in one go. Everything happens in one transaction that Commit ends; a writer that
/// ends without it leaves a file that is good for nothing. There is no journal and nothing is forced to the disk, so
/// write where a half-made file does no harm. Errors throw vlm::Error naming the file.
class DatabaseWriter {
public:
    /// One value: null, a whole number, an amount of euro or a text (kept only until the row is added).
    class Cell {
    public:
        Cell(std::nullptr_t) {}
        template <std::integral T>
        Cell(T value) : value_(static_cast<std::int64_t>(value)) {}
        Cell(Currency value) : value_(value) {}
        Cell(std::string_view value) : value_(value) {}
        Cell(const std::string& value) : value_(std::string_view(value)) {}
        Cell(const char* value) : value_(std::string_view(value)) {}

    private:
        friend class DatabaseWriter;
        std::variant<std::nullptr_t, std::int64_t, Currency, std::string_view> value_ = nullptr;
    };

    /// A prepared insertion into one table; it must not outlive its writer.
    class Rows {
    public:
        /// `columns`: names parted by commas, in the order of the cells.
        Rows(DatabaseWriter& writer, std::string_view table, std::string_view columns);
        Rows(const Rows&) = delete;
        Rows& operator=(const Rows&) = delete;
        ~Rows();
        void Add(std::initializer_list<Cell> cells);

    private:
        DatabaseWriter* writer_;
        sqlite3_stmt* statement_ = nullptr;
        int columns_;
    };

    /// Creates the file, which must not be there yet.
    explicit DatabaseWriter(const std::filesystem::path& file);
    DatabaseWriter(const DatabaseWriter&) = delete;
    DatabaseWriter& operator=(const DatabaseWriter&) = delete;
    ~DatabaseWriter();

    /// Runs a script of one or more statements without rows.
    void Execute(std::string_view script);
    void Commit();

private:
    void Check(int result) const;
    static int Bind(sqlite3_stmt* statement, int place, const Cell& cell);

    std::string name_;
    sqlite3* database_ = nullptr;
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
