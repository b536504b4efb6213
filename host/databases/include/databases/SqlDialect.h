#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "databases/DatabaseSchema.h"

namespace vlm::host {

/// Says a schema in the words of one engine. Each statement of a list runs alone, in the list's order, and ends without
/// a ";".
class SqlDialect {
public:
    virtual ~SqlDialect() = default;

    /// Tables, then views, then procedures.
    std::vector<std::string> Tables(const DatabaseSchema& schema) const;
    /// Apart, because a bulk load is faster when they come last.
    std::vector<std::string> Indices(const DatabaseSchema& schema) const;

protected:
    /// "VARCHAR(50)", "INT".
    static std::string TypeOf(const Column& column);
    /// "PRIMARY KEY (A, B)".
    static std::string PrimaryKey(const Table& table);
    std::string Select(const Query& query) const;

private:
    /// A column's type and what else is said with it.
    virtual std::string Declaration(const Table& table, const Column& column) const = 0;
    /// What follows the columns; "" for nothing.
    virtual std::string KeyClause(const Table& table) const = 0;
    /// What follows the table's closing bracket.
    virtual std::string_view Storage(const Table& table) const = 0;
    virtual std::string Indexed(const IndexPart& part) const = 0;
    virtual std::string_view JoinWord(JoinKind kind) const = 0;
    /// "SELECT" and what an ordered query needs to be a view.
    virtual std::string_view SelectWord(const Query& query) const = 0;
    virtual std::vector<std::string> Procedures(const std::vector<Procedure>& procedures) const = 0;

    std::string TableStatement(const Table& table) const;
    std::string IndexStatement(const Index& index) const;
};

/// The embedded engine. A key of one column is the row's number; the rows of a longer key lie in its order. A procedure
/// is rows of the table StoredProcedure, with ?1 for its argument.
class SqliteDialect final : public SqlDialect {
    std::string Declaration(const Table& table, const Column& column) const override;
    std::string KeyClause(const Table& table) const override;
    std::string_view Storage(const Table& table) const override;
    std::string Indexed(const IndexPart& part) const override;
    std::string_view JoinWord(JoinKind kind) const override;
    std::string_view SelectWord(const Query& query) const override;
    std::vector<std::string> Procedures(const std::vector<Procedure>& procedures) const override;
};

/// A server that speaks T-SQL (2012 and later). Comparisons of texts there disregard case and blanks at the end, dates
/// have a type, and the server's statistics choose the order of the joins; nothing of it has to be said.
class TSqlDialect final : public SqlDialect {
    std::string Declaration(const Table& table, const Column& column) const override;
    std::string KeyClause(const Table& table) const override;
    std::string_view Storage(const Table& table) const override;
    std::string Indexed(const IndexPart& part) const override;
    std::string_view JoinWord(JoinKind kind) const override;
    std::string_view SelectWord(const Query& query) const override;
    std::vector<std::string> Procedures(const std::vector<Procedure>& procedures) const override;
};

}  // namespace vlm::host
