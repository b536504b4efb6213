#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "SqlSchema.h"

namespace vlm::data {

/// The collation under which texts compare without regard to case, as the host's server compares them.
inline constexpr std::string_view kTextCollation = "VLM_NOCASE";

enum class SqlForm { Other, Column, TextLiteral, NumberLiteral };

/// An expression as the engine takes it, and what is known of it.
struct SqlExpression {
    std::string sql;
    SqlKind kind = SqlKind::Unknown;
    SqlForm form = SqlForm::Other;
    std::string literal;    // the content of a text literal
    bool compound = false;  // wants parentheses when it becomes part of a larger one

    std::string Operand() const { return compound ? "(" + sql + ")" : sql; }
    bool MayBeText() const { return kind == SqlKind::Text || kind == SqlKind::Unknown; }
};

/// Comparisons in the engine's words. Dates stand in the databases with and without a time of day, so that a date
/// literal is rewritten for a plain comparison of texts, which an index serves; texts compare under kTextCollation; a
/// text that meets a number compares as a number.
SqlExpression SqlComparison(const SqlExpression& left, const std::string& comparison, const SqlExpression& right);
SqlExpression SqlBetween(const SqlExpression& value, const SqlExpression& low, const SqlExpression& high, bool negated);
SqlExpression SqlInList(const SqlExpression& value, const std::vector<SqlExpression>& items, bool negated);
/// `escape` is empty for none. A pattern that begins with letters reads only the rows that begin so where an index on
/// the column, COLLATE NOCASE, is there.
SqlExpression SqlLike(const SqlExpression& value, const SqlExpression& pattern, const std::string& escape,
                      bool negated);

/// The operands of one chain of "+" and "-"; `operators` stand between them. "+" joins texts when any operand is text.
SqlExpression SqlSum(const std::vector<SqlExpression>& operands, const std::vector<std::string>& operators);

/// An expression as it is stored in a column of that kind: a date literal in the stored form.
std::string SqlAssigned(SqlKind column, const SqlExpression& value);

/// An expression as a row set is ordered by it, so that an index on (number, datetime(date), number) serves.
std::string SqlOrdered(const SqlExpression& term);

/// A call of a function in the engine's words; Error naming a function that neither the system's statements nor the
/// engine know.
SqlExpression SqlCall(const std::string& function, const std::vector<SqlExpression>& arguments, SqlSchema& schema);

/// CAST(value AS type(size)): `size` is the text in the type's parentheses, "" without.
SqlExpression SqlCast(const SqlExpression& value, const std::string& type, const std::string& size);

}  // namespace vlm::data
