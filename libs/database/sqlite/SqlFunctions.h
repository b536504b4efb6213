#pragma once

#include <string>
#include <vector>

#include "SqlExpression.h"
#include "sqlite/SqlSchema.h"

namespace vlm::data {

/// A call of a function in the engine's words; Error naming a function that neither the system's statements nor the
/// engine know.
SqlExpression SqlCall(const std::string& function, const std::vector<SqlExpression>& arguments, SqlSchema& schema);

/// CAST(value AS type(size)): `size` is the text in the type's parentheses, "" without.
SqlExpression SqlCast(const SqlExpression& value, const std::string& type, const std::string& size);

}  // namespace vlm::data
