#pragma once

#include <string>
#include <string_view>

#include "sqlite/SqlSchema.h"

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

}  // namespace vlm::data
