#pragma once

#include <string_view>
#include <vector>

/// What a database of the host is made of, apart from the dialect of the engine that keeps it.
namespace vlm::host {

/// What a column is declared to hold, as the library reads it.
enum class ColumnType { Int, SmallInt, Bit, Money, DateTime, VarChar };

/// A column of a key is never null, any other one may be.
struct Column {
    std::string_view name;
    ColumnType type;
    int width = 0;  // VarChar only: characters
    bool key = false;
};

constexpr Column Key(std::string_view name, ColumnType type = ColumnType::Int) { return {name, type, 0, true}; }
constexpr Column TextKey(std::string_view name, int width) { return {name, ColumnType::VarChar, width, true}; }
constexpr Column Int(std::string_view name) { return {name, ColumnType::Int}; }
constexpr Column SmallInt(std::string_view name) { return {name, ColumnType::SmallInt}; }
constexpr Column Bit(std::string_view name) { return {name, ColumnType::Bit}; }
constexpr Column Money(std::string_view name) { return {name, ColumnType::Money}; }
constexpr Column Moment(std::string_view name) { return {name, ColumnType::DateTime}; }
constexpr Column Text(std::string_view name, int width) { return {name, ColumnType::VarChar, width}; }

struct Table {
    std::string_view name;
    std::vector<Column> columns;

    std::vector<std::string_view> KeyColumns() const;
    /// Throws Error naming table and column when there is none.
    const Column& ColumnOf(std::string_view columnName) const;
};

/// What an index is asked for: the column as it is; a date, with and without a time of day; a code, without regard to
/// case and to blanks at its end; a name, without regard to case.
enum class IndexUse { Plain, Moment, CodeText, NameText };

struct IndexPart {
    std::string_view column;
    IndexUse use = IndexUse::Plain;
};

struct Index {
    std::string_view name, table;
    std::vector<IndexPart> parts;
};

/// A plain column of a table: an expression would lose its declared type.
struct SelectedColumn {
    std::string_view table, column;
    std::string_view alias = {};  // "" = the column's own name

    std::string_view Name() const { return alias.empty() ? column : alias; }
};

/// Ordered: an inner join that an engine without statistics looks up where it is written, not earlier.
enum class JoinKind { Inner, Ordered, Left };

struct Join {
    JoinKind kind;
    std::string_view table, condition;
};

struct Query {
    std::vector<SelectedColumn> columns;
    std::string_view from;
    std::vector<Join> joins;
    std::vector<std::string_view> order = {};
};

struct View {
    std::string_view name;
    Query query;
};

/// The rows of a query whose column `where` has the value of the one argument.
struct Procedure {
    std::string_view name, argument, where;
    Query query;
};

struct DatabaseSchema {
    std::vector<Table> tables;
    std::vector<Index> indices;
    std::vector<View> views = {};
    std::vector<Procedure> procedures = {};

    /// Throws Error naming the table when there is none.
    const Table& TableOf(std::string_view tableName) const;
};

/// `Aldra`: the master tables, one database for all clinics.
const DatabaseSchema& MasterSchema();
/// `StudioNNNN`: one database for each clinic.
const DatabaseSchema& ClinicSchema();

}  // namespace vlm::host
