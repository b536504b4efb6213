#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "SqlDateLiteral.h"
#include "SqlExpression.h"
#include "database/SqlTokens.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

SqlExpression Condition(std::string sql) {
    SqlExpression condition;
    condition.sql = std::move(sql);
    condition.kind = SqlKind::Number;
    condition.compound = true;
    return condition;
}

std::string Collated(const SqlExpression& value) { return value.Operand() + " COLLATE " + std::string(kTextCollation); }

std::string AsNumber(const SqlExpression& value) { return "CAST(" + value.sql + " AS NUMERIC)"; }

/// A column of a view that is declared nowhere may hold dates: beside a text with the shape of one it is taken so.
std::optional<SqlDateLiteral> DateBesideUndeclared(const std::string& literal) {
    if (literal.find_first_of("/-") == std::string::npos) return std::nullopt;
    try {
        return ParseSqlDate(literal);
    } catch (const Error&) {
        return std::nullopt;
    }
}

/// A date literal beside a date; nothing when the two are not that.
std::optional<SqlDateLiteral> DateBeside(const SqlExpression& date, const SqlExpression& literal) {
    if (literal.form != SqlForm::TextLiteral) return std::nullopt;
    if (date.kind == SqlKind::Date) return ParseSqlDate(literal.literal);
    const bool undeclared = date.kind == SqlKind::Unknown && date.form == SqlForm::Column;
    return undeclared ? DateBesideUndeclared(literal.literal) : std::nullopt;
}

std::string Plain(const SqlDateLiteral& date) { return "'" + date.iso + "'"; }

/// The later of the two forms in which the moment may be stored.
std::string Late(const SqlDateLiteral& date) { return date.midnight ? "'" + date.iso + " 00:00:00'" : Plain(date); }

std::string BothForms(const SqlDateLiteral& date) {
    return date.midnight ? Plain(date) + ", " + Late(date) : Plain(date);
}

std::string CompareDate(const std::string& column, const std::string& comparison, const SqlDateLiteral& date) {
    if (!date.midnight) return column + " " + comparison + " " + Plain(date);
    if (comparison == "=") return column + " IN (" + BothForms(date) + ")";
    if (comparison == "<>") return column + " NOT IN (" + BothForms(date) + ")";
    const bool late = comparison == "<=" || comparison == ">";
    return column + " " + comparison + " " + (late ? Late(date) : Plain(date));
}

std::string Mirrored(const std::string& comparison) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kMirrors = {
        {{"<", ">"}, {">", "<"}, {"<=", ">="}, {">=", "<="}}};
    for (const auto& [from, to] : kMirrors) {
        if (comparison == from) return std::string(to);
    }
    return comparison;
}

bool IsNumericText(const SqlExpression& value) {
    if (value.form != SqlForm::TextLiteral) return false;
    const char* const end = value.literal.data() + value.literal.size();
    double number = 0;
    const auto read = std::from_chars(value.literal.data(), end, number);
    return read.ec == std::errc() && read.ptr == end;
}

/// `value` as it stands beside `other` in a comparison by number. A column compares so by its own type.
std::string NumberBeside(const SqlExpression& value, const SqlExpression& other) {
    const bool meetsText = value.kind == SqlKind::Number && value.form != SqlForm::Column && other.MayBeText();
    const bool meetsNumber = other.kind == SqlKind::Number && IsNumericText(value);
    return meetsText || meetsNumber ? AsNumber(value) : value.Operand();
}

/// A text that the engine's own NOCASE compares as the host's server does, but for the blanks at its end.
bool IsPlainText(const SqlExpression& value) {
    return value.form == SqlForm::TextLiteral && text::IsAscii(value.literal);
}

bool IsTextColumn(const SqlExpression& value) { return value.form == SqlForm::Column && value.kind == SqlKind::Text; }

/// The column in the form that an index may be made of (`CREATE INDEX ... (rtrim(Codice) COLLATE NOCASE)`): one that
/// every tool for the engine's files can keep, which one over a collation of ours is not.
std::string Indexable(const SqlExpression& column) { return "rtrim(" + column.sql + ") COLLATE NOCASE"; }

std::string WithoutBlanksAtEnd(const SqlExpression& literal) {
    return literal.literal.ends_with(' ') ? "rtrim(" + literal.sql + ")" : literal.sql;
}

}  // namespace

SqlExpression SqlLike(const SqlExpression& value, const SqlExpression& pattern, const std::string& escape,
                      bool negated) {
    const std::string like = value.Operand() + (negated ? " NOT LIKE " : " LIKE ") + pattern.Operand() +
                             (escape.empty() ? "" : " ESCAPE " + escape);
    if (negated || !escape.empty() || !IsTextColumn(value) || pattern.form != SqlForm::TextLiteral)
        return Condition(like);
    // What all matches begin with, as far as the engine's NOCASE knows its letters, narrows the rows by an index.
    std::string first(std::string_view(pattern.literal).substr(0, pattern.literal.find_first_of("%_[")));
    first = text::ToLower(std::string_view(first).substr(0, text::AsciiPrefix(first)));
    if (first.empty() || first.back() == 0x7F) return Condition(like);
    std::string beyond = first;
    ++beyond.back();
    return Condition(value.sql + " >= " + SqlTextLiteral(first) + " COLLATE NOCASE AND " + value.sql + " < " +
                     SqlTextLiteral(beyond) + " COLLATE NOCASE AND " + like);
}

SqlExpression SqlComparison(const SqlExpression& left, const std::string& comparison, const SqlExpression& right) {
    if (const auto date = DateBeside(left, right)) return Condition(CompareDate(left.Operand(), comparison, *date));
    if (const auto date = DateBeside(right, left)) {
        return Condition(CompareDate(right.Operand(), Mirrored(comparison), *date));
    }
    if (comparison == "=" && IsTextColumn(left) && IsPlainText(right)) {
        return Condition(Indexable(left) + " = " + WithoutBlanksAtEnd(right));
    }
    if (comparison == "=" && IsTextColumn(right) && IsPlainText(left)) return SqlComparison(right, comparison, left);
    const std::string middle = " " + comparison + " ";
    if (left.kind == SqlKind::Date && right.kind == SqlKind::Date) {
        return Condition("datetime(" + left.sql + ")" + middle + "datetime(" + right.sql + ")");
    }
    if (left.kind == SqlKind::Number || right.kind == SqlKind::Number) {
        return Condition(NumberBeside(left, right) + middle + NumberBeside(right, left));
    }
    if (!left.MayBeText() || !right.MayBeText()) return Condition(left.Operand() + middle + right.Operand());
    return Condition(left.Operand() + middle + Collated(right));
}

SqlExpression SqlBetween(const SqlExpression& value, const SqlExpression& low, const SqlExpression& high,
                         bool negated) {
    const SqlExpression from = SqlComparison(value, ">=", low);
    const SqlExpression to = SqlComparison(value, "<=", high);
    const std::string both = "(" + from.sql + " AND " + to.sql + ")";
    return Condition(negated ? "NOT " + both : both);
}

SqlExpression SqlInList(const SqlExpression& value, const std::vector<SqlExpression>& items, bool negated) {
    const bool textMeetsNumber =
        value.kind == SqlKind::Text &&
        std::any_of(items.begin(), items.end(), [](const SqlExpression& item) { return item.kind == SqlKind::Number; });
    if (textMeetsNumber) {
        std::string either;
        for (const SqlExpression& item : items) {
            either += (either.empty() ? "" : " OR ") + SqlComparison(value, "=", item).sql;
        }
        return Condition((negated ? "NOT (" : "(") + either + ")");
    }
    const bool indexable = IsTextColumn(value) && std::all_of(items.begin(), items.end(), IsPlainText);
    std::string list;
    for (const SqlExpression& item : items) {
        if (!list.empty()) list += ", ";
        if (indexable) {
            list += WithoutBlanksAtEnd(item);
            continue;
        }
        const auto date = DateBeside(value, item);
        list += date ? BothForms(*date) : item.sql;
    }
    const std::string column = indexable ? Indexable(value) : value.MayBeText() ? Collated(value) : value.Operand();
    return Condition(column + (negated ? " NOT IN (" : " IN (") + list + ")");
}

SqlExpression SqlSum(const std::vector<SqlExpression>& operands, const std::vector<std::string>& operators) {
    if (operands.size() == 1) return operands.front();
    const auto any = [&](SqlKind kind) {
        return std::any_of(operands.begin(), operands.end(),
                           [kind](const SqlExpression& operand) { return operand.kind == kind; });
    };
    SqlExpression sum;
    sum.kind = any(SqlKind::Text) ? SqlKind::Text : any(SqlKind::Number) ? SqlKind::Number : SqlKind::Unknown;
    sum.compound = true;
    // Stored dates are texts: adding days to one would give its year plus the days.
    if (sum.kind != SqlKind::Text && any(SqlKind::Date)) RefuseSql("calcolo su una data");
    sum.sql = operands.front().Operand();
    for (std::size_t index = 0; index < operators.size(); ++index) {
        const bool joins = sum.kind == SqlKind::Text && operators[index] == "+";
        sum.sql += " " + (joins ? std::string("||") : operators[index]) + " " + operands[index + 1].Operand();
    }
    return sum;
}

std::string SqlAssigned(SqlKind column, const SqlExpression& value) {
    if (column == SqlKind::Date && value.form == SqlForm::TextLiteral) {
        if (const auto date = ParseSqlDate(value.literal)) return Plain(*date);
    }
    return value.sql;
}

std::string SqlOrdered(const SqlExpression& term) {
    switch (term.kind) {
        case SqlKind::Number:
            return term.sql;
        case SqlKind::Date:
            return "datetime(" + term.sql + ")";
        default:
            return Collated(term);
    }
}

}  // namespace vlm::data
