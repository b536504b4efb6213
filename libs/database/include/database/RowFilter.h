#pragma once

#include <string_view>
#include <vector>

#include "database/Recordset.h"

namespace vlm::data {

/// One condition `column = literal` of a filter, the literal already of the column's kind.
struct RowCondition {
    int ordinal = 0;
    Value value;
};

/// Whether a cell equals a condition's value: texts without regard to case, numbers by value; Null equals nothing.
bool CellEquals(const Value& cell, const Value& value);

/// `column = literal [AND column = literal ...]`; a literal is a number, a 'text' (quotes doubled), 'YYYY-MM-DD' or
/// #month/day/year# (also #YYYY-MM-DD#). A column may stand in brackets. Throws Error for anything else, for a column
/// that does not exist and for a literal that is not of the column's kind. An empty filter has no condition.
std::vector<RowCondition> ParseRowFilter(std::string_view filter, const Recordset& columns);

}  // namespace vlm::data
