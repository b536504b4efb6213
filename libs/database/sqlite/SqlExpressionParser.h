#pragma once

#include <string>
#include <vector>

#include "SqlExpression.h"
#include "SqlTranslation.h"

namespace vlm::data {

/// Reads the queries that stand inside expressions.
class SqlSubqueries {
public:
    virtual ~SqlSubqueries() = default;
    /// The query at the cursor, without its parentheses; its kind is that of its first column.
    virtual SqlExpression ParseSubquery(const SqlScope& scope) = 0;
};

/// Reads expressions and conditions at the cursor and gives them in the engine's words. One method for each level of
/// the grammar, from the loosest binding operator to the tightest.
class SqlExpressionParser {
public:
    SqlExpressionParser(SqlTranslation& translation, SqlSubqueries& subqueries, const SqlScope& scope)
        : translation_(translation), cursor_(translation.cursor), subqueries_(subqueries), scope_(scope) {}

    SqlExpression ParseCondition();
    /// A value: no AND, OR and comparison outside parentheses.
    SqlExpression ParseValue();
    std::vector<SqlExpression> ParseValues();

private:
    SqlExpression ParseConjunction();
    SqlExpression ParseNegation();
    SqlExpression ParsePredicate();
    SqlExpression ParsePredicateOf(const SqlExpression& left);
    SqlExpression ParseIn(const SqlExpression& left, bool negated);
    SqlExpression ParseLike(const SqlExpression& left, bool negated);
    SqlExpression ParseBetween(const SqlExpression& left, bool negated);
    SqlExpression ParseNullTest(const SqlExpression& left);
    SqlExpression ParseSum();
    SqlExpression ParseProduct();
    SqlExpression ParseConcatenation();
    SqlExpression ParseUnary();
    SqlExpression ParsePrimary();
    SqlExpression ParseParentheses();
    SqlExpression ParseName();
    SqlExpression ParseColumn();
    SqlExpression ParseCase();
    SqlExpression ParseCast();
    SqlExpression ParseCall();

    SqlTranslation& translation_;
    SqlCursor& cursor_;
    SqlSubqueries& subqueries_;
    const SqlScope& scope_;
};

}  // namespace vlm::data
