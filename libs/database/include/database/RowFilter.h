#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/Recordset.h"

namespace vlm::data {

enum class Comparison { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual, Like };

/// One condition of a filter, `column comparison literal`, the literal already of the column's kind.
struct RowCondition {
    int ordinal = 0;
    Value value;
    Comparison comparison = Comparison::Equal;

    /// Texts without regard to case, numbers by value; Null meets nothing.
    bool IsMetBy(const Value& cell) const;
};

/// `column = literal [AND column = literal ...]`, with = <> < <= > >= or LIKE. A literal is a number, a 'text' (quotes
/// doubled), 'YYYY-MM-DD' or #month/day/year# (also #YYYY-MM-DD#); that of LIKE is a text with a * or % at its end, or
/// at both. A column may stand in brackets. Throws Error for anything else, for a column that does not exist and for a
/// literal that is not of the column's kind. An empty filter has no condition.
std::vector<RowCondition> ParseRowFilter(std::string_view filter, const Recordset& columns);

/// A column that rows are sorted by.
struct SortKey {
    int ordinal = 0;
    bool descending = false;
};

/// `column [ASC | DESC] [, column ...]`; a column may stand in brackets. Throws Error for anything else and for a
/// column that does not exist. An empty text has no key.
std::vector<SortKey> ParseSortKeys(std::string_view sort, const Recordset& columns);

}  // namespace vlm::data
