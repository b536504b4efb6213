#pragma once

#include <string>
#include <vector>

#include "SqlExpression.h"

namespace vlm::data {

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

}  // namespace vlm::data
