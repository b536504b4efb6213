#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "SqlSchema.h"
#include "database/SqlTokens.h"

namespace vlm::data {

/// A statement in the engine's words.
struct SqlStatement {
    enum class Kind {
        Query,      // gives rows
        Change,     // changes rows
        Other,      // defines tables, opens transactions, ...
        Procedure,  // a call: `sql` is the procedure's name
    };
    Kind kind = Kind::Other;
    std::string sql;
    std::vector<SqlKind> columns;        // of a query: what is known of each column that it gives
    std::vector<SqlToken> arguments;     // of a procedure: literals
    std::vector<std::string> databases;  // the engine's names of the databases that it uses
};

/// Gives the system's statements in the engine's words, token by token: literals and names keep what is in them.
class SqlTranslator {
public:
    explicit SqlTranslator(SqlSchema& schema) : schema_(&schema) {}

    /// `arguments` are the values of ?1, ?2, ... Throws Error naming what cannot be said in the engine's words.
    SqlStatement Translate(std::string_view sql, const std::vector<SqlToken>& arguments = {}) const;

private:
    SqlSchema* schema_;
};

}  // namespace vlm::data
