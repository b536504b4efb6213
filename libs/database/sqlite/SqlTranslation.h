#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "SqlSchema.h"
#include "database/SqlTokens.h"

namespace vlm::data {

/// One statement on its way into the engine's words: its tokens, the values of its parameters, and the databases that
/// it was found to use.
class SqlTranslation {
public:
    SqlTranslation(std::vector<SqlToken> tokens, const std::vector<SqlToken>& arguments, SqlSchema& schema)
        : cursor(std::move(tokens)), schema_(&schema), arguments_(&arguments) {}

    SqlCursor cursor;

    /// Stands in each method that calls itself for what is nested. Throws Error for what is nested too deeply.
    class Nesting {
    public:
        explicit Nesting(SqlTranslation& translation);
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;
        ~Nesting() { --translation_.depth_; }

    private:
        SqlTranslation& translation_;
    };

    SqlSchema& Schema() const { return *schema_; }
    /// The engine's name of the database; remembers that the statement uses it. "" is the clinic's own.
    std::string Attach(std::string_view database);
    /// The engine's names of the databases used, each once.
    const std::vector<std::string>& Used() const { return used_; }
    /// The literal that stands for a parameter; NULL for one that has no value.
    SqlToken Argument(const SqlToken& parameter) const;

private:
    SqlSchema* schema_;
    const std::vector<SqlToken>* arguments_;
    std::vector<std::string> used_;
    int depth_ = 0;
};

/// A name of one to four parts as the statement writes it: `Column`, `Table.Column`, `Database..Table.Column`,
/// `Database.dbo.Table`. Empty parts are left out.
struct SqlName {
    bool hasDatabase = false;
    std::string schema;  // the engine's name of the database, when the name has one
    std::string table;   // value, without brackets
    std::string column;  // value; "*" for every column
    std::string tableSource;
    std::string columnSource;
};

/// Reads a name where a column is meant.
SqlName TakeColumnName(SqlTranslation& translation);
/// Reads a name where a table is meant; `column` stays empty.
SqlName TakeTableName(SqlTranslation& translation);

/// A table, view or inner query that a statement reads.
struct SqlSource {
    std::string name;       // by which its columns are named: its alias, or the table's name
    std::string schema;     // the engine's name of its database; empty for an alias or inner query
    std::string qualifier;  // what stands before a column's name in the engine's words
    std::shared_ptr<const SqlTable> table;
};

/// The sources whose columns a place in a statement can name: its own query's, then those of the queries around it.
class SqlScope {
public:
    explicit SqlScope(const SqlScope* outer) : outer_(outer) {}

    void Add(SqlSource source) { sources_.push_back(std::move(source)); }
    const std::vector<SqlSource>& Sources() const { return sources_; }
    const SqlScope* Outer() const { return outer_; }

    /// `schema` and `source` may be empty. Unknown when no source has the column.
    SqlKind KindOf(std::string_view schema, std::string_view source, std::string_view column) const;

private:
    std::vector<SqlSource> sources_;
    const SqlScope* outer_;
};

}  // namespace vlm::data
