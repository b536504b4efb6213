#pragma once

#include <memory>
#include <string>
#include <vector>

#include "SqlExpressionParser.h"
#include "SqlTranslation.h"

namespace vlm::data {

/// A column that a query gives.
struct SqlOutput {
    std::string name;
    SqlExpression value;
};

struct SqlQuery {
    std::string sql;
    std::vector<SqlOutput> outputs;
};

/// Reads SELECT statements at the cursor and gives them in the engine's words.
class SqlQueryParser final : public SqlSubqueries {
public:
    explicit SqlQueryParser(SqlTranslation& translation) : translation_(translation), cursor_(translation.cursor) {}

    SqlQuery ParseQuery(const SqlScope* outer);
    SqlExpression ParseSubquery(const SqlScope& scope) override;

    /// The table or view at the cursor as the only source of a statement that changes it.
    SqlSource ParseTarget();
    SqlExpressionParser Expressions(const SqlScope& scope) { return SqlExpressionParser(translation_, *this, scope); }

private:
    /// One SELECT of a query, up to UNION or ORDER BY.
    struct Core {
        std::unique_ptr<SqlScope> scope;
        std::string sql;
        std::string top;  // the number of rows that "TOP n" asks for
        std::vector<SqlOutput> outputs;
    };
    Core ParseCore(const SqlScope* outer);
    std::string ParseOutputs(Core& core);
    std::string ParseStar(Core& core);
    SqlOutput ParseOutput(const SqlScope& scope, std::string& alias);
    void ParseFilters(Core& core);

    std::string ParseOrder(const Core& core, bool combined);
    SqlExpression ParseOrderTerm(const Core& core, bool combined);
    const SqlOutput* OutputAt(const Core& core) const;

    /// The FROM clause in pieces: a join's condition is read when all the sources are known.
    struct FromPiece {
        std::string sql;
        std::size_t condition = 0;  // where the condition starts among the tokens; 0 for plain text
    };
    std::string ParseFrom(SqlScope& scope);
    void ParseSources(SqlScope& scope, std::vector<FromPiece>& pieces);
    void ParseSource(SqlScope& scope, std::vector<FromPiece>& pieces);
    void ParseJoinCondition(std::vector<FromPiece>& pieces);
    std::string ParseJoin();
    std::string ParseInnerQuery(SqlScope& scope);
    SqlSource ParseTable(std::string& sql);
    /// The alias at the cursor; "" when there is none.
    std::string ParseAlias();
    void SkipLockHints();

    SqlTranslation& translation_;
    SqlCursor& cursor_;
};

}  // namespace vlm::data
