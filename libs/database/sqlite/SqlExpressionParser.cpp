#include "SqlExpressionParser.h"

namespace vlm::data {

namespace {

SqlExpression Made(std::string sql, SqlKind kind, bool compound) {
    SqlExpression made;
    made.sql = std::move(sql);
    made.kind = kind;
    made.compound = compound;
    return made;
}

/// Words that end an expression or belong to a clause; a column of such a name stands in brackets.
bool IsReserved(const SqlToken& token) {
    return token.IsAnyWord({"SELECT",    "FROM", "WHERE", "GROUP",   "HAVING", "ORDER",  "UNION",   "EXCEPT",
                            "INTERSECT", "ON",   "AND",   "OR",      "IN",     "LIKE",   "BETWEEN", "IS",
                            "AS",        "JOIN", "INNER", "THEN",    "WHEN",   "ELSE",   "END",     "SET",
                            "VALUES",    "INTO", "BY",    "CONVERT", "EXEC",   "EXECUTE"});
}

/// An operator between the current two operands, in the engine's spelling; "" when there is none.
std::string ComparisonAt(const SqlToken& token) {
    for (const std::string_view each : {"=", "<>", "<", "<=", ">", ">="}) {
        if (token.IsSymbol(each)) return token.source;
    }
    return token.IsSymbol("!=") ? "<>" : "";
}

bool IsAnySymbol(const SqlToken& token, std::initializer_list<std::string_view> symbols) {
    for (const std::string_view each : symbols) {
        if (token.IsSymbol(each)) return true;
    }
    return false;
}

}  // namespace

SqlExpression SqlExpressionParser::ParseCondition() {
    SqlExpression condition = ParseConjunction();
    while (cursor_.AcceptWord("OR")) {
        condition = Made(condition.sql + " OR " + ParseConjunction().sql, SqlKind::Number, true);
    }
    return condition;
}

SqlExpression SqlExpressionParser::ParseConjunction() {
    SqlExpression condition = ParseNegation();
    while (cursor_.AcceptWord("AND")) {
        condition = Made(condition.sql + " AND " + ParseNegation().sql, SqlKind::Number, true);
    }
    return condition;
}

SqlExpression SqlExpressionParser::ParseNegation() {
    const SqlTranslation::Nesting nesting(translation_);
    if (!cursor_.AcceptWord("NOT")) return ParsePredicate();
    return Made("NOT " + ParseNegation().sql, SqlKind::Number, true);
}

SqlExpression SqlExpressionParser::ParsePredicate() {
    SqlExpression left = ParseValue();
    for (;;) {
        const SqlToken& next = cursor_.Peek();
        if (!next.IsAnyWord({"IS", "NOT", "IN", "LIKE", "BETWEEN"}) && ComparisonAt(next).empty()) return left;
        left = ParsePredicateOf(left);
    }
}

SqlExpression SqlExpressionParser::ParsePredicateOf(const SqlExpression& left) {
    const std::string comparison = ComparisonAt(cursor_.Peek());
    if (!comparison.empty()) {
        cursor_.Take();
        return SqlComparison(left, comparison, ParseValue());
    }
    if (cursor_.AcceptWord("IS")) return ParseNullTest(left);
    const bool negated = cursor_.AcceptWord("NOT");
    if (cursor_.AcceptWord("IN")) return ParseIn(left, negated);
    if (cursor_.AcceptWord("LIKE")) return ParseLike(left, negated);
    cursor_.ExpectWord("BETWEEN");
    return ParseBetween(left, negated);
}

SqlExpression SqlExpressionParser::ParseNullTest(const SqlExpression& left) {
    const std::string test = cursor_.AcceptWord("NOT") ? " IS NOT NULL" : " IS NULL";
    cursor_.ExpectWord("NULL");
    return Made(left.Operand() + test, SqlKind::Number, true);
}

SqlExpression SqlExpressionParser::ParseIn(const SqlExpression& left, bool negated) {
    cursor_.ExpectSymbol("(");
    if (!cursor_.IsWord("SELECT")) {
        const std::vector<SqlExpression> items = ParseValues();
        cursor_.ExpectSymbol(")");
        return SqlInList(left, items, negated);
    }
    const SqlExpression query = subqueries_.ParseSubquery(scope_);
    cursor_.ExpectSymbol(")");
    const bool texts = left.MayBeText() && query.MayBeText();
    return Made(left.Operand() + (texts ? " COLLATE " + std::string(kTextCollation) : "") +
                    (negated ? " NOT IN (" : " IN (") + query.sql + ")",
                SqlKind::Number, true);
}

SqlExpression SqlExpressionParser::ParseLike(const SqlExpression& left, bool negated) {
    const SqlExpression pattern = ParseValue();
    const std::string escape = cursor_.AcceptWord("ESCAPE") ? ParseValue().Operand() : std::string();
    return SqlLike(left, pattern, escape, negated);
}

SqlExpression SqlExpressionParser::ParseBetween(const SqlExpression& left, bool negated) {
    const SqlExpression low = ParseValue();
    cursor_.ExpectWord("AND");
    return SqlBetween(left, low, ParseValue(), negated);
}

SqlExpression SqlExpressionParser::ParseValue() {
    SqlExpression value = ParseSum();
    while (IsAnySymbol(cursor_.Peek(), {"&", "|", "<<", ">>"})) {
        const std::string symbol = cursor_.Take().source;
        value = Made(value.Operand() + " " + symbol + " " + ParseSum().Operand(), SqlKind::Number, true);
    }
    return value;
}

std::vector<SqlExpression> SqlExpressionParser::ParseValues() {
    std::vector<SqlExpression> values = {ParseValue()};
    while (cursor_.AcceptSymbol(",")) values.push_back(ParseValue());
    return values;
}

SqlExpression SqlExpressionParser::ParseSum() {
    std::vector<SqlExpression> operands = {ParseProduct()};
    std::vector<std::string> operators;
    while (IsAnySymbol(cursor_.Peek(), {"+", "-"})) {
        operators.push_back(cursor_.Take().source);
        operands.push_back(ParseProduct());
    }
    return SqlSum(operands, operators);
}

SqlExpression SqlExpressionParser::ParseProduct() {
    SqlExpression product = ParseConcatenation();
    while (IsAnySymbol(cursor_.Peek(), {"*", "/", "%"})) {
        const std::string symbol = cursor_.Take().source;
        // Left to right without parentheses: all three bind alike.
        const std::string left = product.sql;
        product = Made(left + " " + symbol + " " + ParseConcatenation().Operand(), SqlKind::Number, true);
    }
    return product;
}

SqlExpression SqlExpressionParser::ParseConcatenation() {
    SqlExpression joined = ParseUnary();
    while (cursor_.AcceptSymbol("||")) {
        joined = Made(joined.Operand() + " || " + ParseUnary().Operand(), SqlKind::Text, true);
    }
    return joined;
}

SqlExpression SqlExpressionParser::ParseUnary() {
    const SqlTranslation::Nesting nesting(translation_);
    if (!IsAnySymbol(cursor_.Peek(), {"-", "+", "~"})) return ParsePrimary();
    const std::string symbol = cursor_.Take().source;
    const SqlExpression operand = ParseUnary();
    SqlExpression result = Made(symbol + operand.Operand(), SqlKind::Number, true);
    if (operand.form == SqlForm::NumberLiteral) result.form = SqlForm::NumberLiteral;
    return result;
}

SqlExpression SqlExpressionParser::ParsePrimary() {
    const SqlToken token =
        cursor_.Peek().kind == SqlTokenKind::Parameter ? translation_.Argument(cursor_.Peek()) : cursor_.Peek();
    switch (token.kind) {
        case SqlTokenKind::Number: {
            cursor_.Take();
            SqlExpression number = Made(token.source, SqlKind::Number, token.source.front() == '-');
            number.form = SqlForm::NumberLiteral;
            return number;
        }
        case SqlTokenKind::Text: {
            cursor_.Take();
            SqlExpression literal = Made(SqlTextLiteral(token.value), SqlKind::Text, false);
            literal.form = SqlForm::TextLiteral;
            literal.literal = token.value;
            return literal;
        }
        case SqlTokenKind::Name:
            return ParseName();
        default:
            break;
    }
    if (token.IsSymbol("(")) return ParseParentheses();
    cursor_.Refuse();
}

SqlExpression SqlExpressionParser::ParseParentheses() {
    cursor_.ExpectSymbol("(");
    SqlExpression inner = cursor_.IsWord("SELECT") ? subqueries_.ParseSubquery(scope_) : ParseCondition();
    cursor_.ExpectSymbol(")");
    inner.sql = "(" + inner.sql + ")";
    inner.compound = false;
    return inner;
}

SqlExpression SqlExpressionParser::ParseName() {
    const SqlToken& token = cursor_.Peek();
    if (token.kind == SqlTokenKind::Parameter) {  // a parameter without a value
        cursor_.Take();
        return Made("NULL", SqlKind::Unknown, false);
    }
    if (token.IsWord("CASE")) return ParseCase();
    if (token.IsWord("NULL")) {
        cursor_.Take();
        return Made("NULL", SqlKind::Unknown, false);
    }
    const bool call = cursor_.Peek(1).IsSymbol("(");
    if (token.IsWord("CAST") && call) return ParseCast();
    if (token.IsWord("EXISTS") && call) {
        cursor_.Take();
        return Made("EXISTS " + ParseParentheses().sql, SqlKind::Number, true);
    }
    if (IsReserved(token)) cursor_.Refuse();
    return call ? ParseCall() : ParseColumn();
}

SqlExpression SqlExpressionParser::ParseColumn() {
    const SqlName name = TakeColumnName(translation_);
    if (name.column == "*") RefuseSql("*");
    if (cursor_.IsSymbol("(")) RefuseSql(name.columnSource);
    SqlExpression column = Made(name.columnSource, scope_.KindOf(name.schema, name.table, name.column), false);
    column.form = SqlForm::Column;
    if (!name.table.empty()) column.sql = name.tableSource + "." + column.sql;
    if (name.hasDatabase) column.sql = SqlQuotedName(name.schema) + "." + column.sql;
    return column;
}

SqlExpression SqlExpressionParser::ParseCase() {
    cursor_.ExpectWord("CASE");
    std::string sql = "CASE";
    if (!cursor_.IsWord("WHEN")) {
        const SqlExpression base = ParseValue();
        sql += " " + (base.MayBeText() ? base.Operand() + " COLLATE " + std::string(kTextCollation) : base.sql);
    }
    SqlKind kind = SqlKind::Unknown;
    const auto takeResult = [&] {
        const SqlExpression result = ParseValue();
        if (kind == SqlKind::Unknown) kind = result.kind;
        return result.sql;
    };
    while (cursor_.AcceptWord("WHEN")) {
        sql += " WHEN " + ParseCondition().sql;
        cursor_.ExpectWord("THEN");
        sql += " THEN " + takeResult();
    }
    if (cursor_.AcceptWord("ELSE")) sql += " ELSE " + takeResult();
    cursor_.ExpectWord("END");
    return Made(sql + " END", kind, false);
}

SqlExpression SqlExpressionParser::ParseCast() {
    cursor_.ExpectWord("CAST");
    cursor_.ExpectSymbol("(");
    const SqlExpression value = ParseValue();
    cursor_.ExpectWord("AS");
    if (cursor_.Peek().kind != SqlTokenKind::Name) cursor_.Refuse();
    const std::string type = cursor_.Take().value;
    std::string size;
    if (cursor_.AcceptSymbol("(")) {
        while (!cursor_.IsSymbol(")")) {
            if (cursor_.AtEnd()) cursor_.Refuse();
            size += cursor_.Take().source;
        }
        cursor_.ExpectSymbol(")");
    }
    cursor_.ExpectSymbol(")");
    return SqlCast(value, type, size);
}

SqlExpression SqlExpressionParser::ParseCall() {
    const std::string function = cursor_.Take().source;
    cursor_.ExpectSymbol("(");
    std::vector<SqlExpression> arguments;
    if (cursor_.AcceptSymbol("*")) {
        arguments.push_back(Made("*", SqlKind::Number, false));
    } else if (cursor_.AcceptWord("DISTINCT")) {
        const SqlExpression value = ParseValue();
        arguments.push_back(Made("DISTINCT " + value.sql, value.kind, false));
    } else if (!cursor_.IsSymbol(")")) {
        arguments = ParseValues();
    }
    cursor_.ExpectSymbol(")");
    if (cursor_.IsWord("OVER")) cursor_.Refuse();
    return SqlCall(function, arguments, translation_.Schema());
}

}  // namespace vlm::data
