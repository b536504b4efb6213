#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/SqlTokens.h"
#include "sqlite/SqlSchema.h"

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

}  // namespace vlm::data
