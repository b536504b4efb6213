#include <algorithm>
#include <iterator>

#include "SqlDateLiteral.h"
#include "SqlExpression.h"
#include "database/SqlTokens.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

/// What kind of value a function gives: a fixed one, or that of its first argument that tells one.
enum class Gives { Unknown, Number, Date, Text, AsArguments };

struct FunctionRule {
    std::string_view name;
    std::size_t arguments;
    std::string_view sql;  // {0}, {1}, ... stand for the arguments
    Gives gives;
};

/// Functions that the engine spells otherwise. The parts of a date are cut from its stored form by the engine's own
/// functions: a selection asks for them in every row.
constexpr FunctionRule kTranslated[] = {
    {"ISNULL", 2, "IFNULL({0}, {1})", Gives::AsArguments},
    {"YEAR", 1, "CAST(substr({0}, 1, 4) AS INTEGER)", Gives::Number},
    {"MONTH", 1, "CAST(substr({0}, 6, 2) AS INTEGER)", Gives::Number},
    {"DAY", 1, "CAST(substr({0}, 9, 2) AS INTEGER)", Gives::Number},
    {"CEILING", 1, "vlm_ceiling({0})", Gives::Number},
    {"FLOOR", 1, "vlm_floor({0})", Gives::Number},
    {"UPPER", 1, "vlm_upper({0})", Gives::Text},
    {"LOWER", 1, "vlm_lower({0})", Gives::Text},
    {"LEN", 1, "length(rtrim({0}))", Gives::Number},
    {"LEFT", 2, "substr({0}, 1, {1})", Gives::Text},
    {"RIGHT", 2, "substr({0}, max(length({0}) - ({1}) + 1, 1))", Gives::Text},
    {"SUBSTRING", 3, "substr({0}, {1}, {2})", Gives::Text},
    {"GETDATE", 0, "datetime('now', 'localtime')", Gives::Date},
};

struct FunctionKind {
    std::string_view name;
    Gives gives;
};

/// Functions that the engine has under the same name.
constexpr FunctionKind kSame[] = {
    {"COUNT", Gives::Number},         {"SUM", Gives::Number},         {"AVG", Gives::Number},
    {"ABS", Gives::Number},           {"ROUND", Gives::Number},       {"LENGTH", Gives::Number},
    {"INSTR", Gives::Number},         {"MAX", Gives::AsArguments},    {"MIN", Gives::AsArguments},
    {"COALESCE", Gives::AsArguments}, {"IFNULL", Gives::AsArguments}, {"NULLIF", Gives::AsArguments},
    {"LTRIM", Gives::Text},           {"RTRIM", Gives::Text},         {"TRIM", Gives::Text},
    {"REPLACE", Gives::Text},         {"SUBSTR", Gives::Text},        {"CHAR", Gives::Text},
    {"PRINTF", Gives::Text},          {"STRFTIME", Gives::Text},      {"DATE", Gives::Date},
    {"DATETIME", Gives::Date},
};

SqlKind KindOf(Gives gives, const std::vector<SqlExpression>& arguments) {
    switch (gives) {
        case Gives::Number:
            return SqlKind::Number;
        case Gives::Date:
            return SqlKind::Date;
        case Gives::Text:
            return SqlKind::Text;
        case Gives::Unknown:
            return SqlKind::Unknown;
        case Gives::AsArguments:
            break;
    }
    const auto told = std::find_if(arguments.begin(), arguments.end(),
                                   [](const SqlExpression& argument) { return argument.kind != SqlKind::Unknown; });
    return told == arguments.end() ? SqlKind::Unknown : told->kind;
}

std::string Filled(std::string_view pattern, const std::vector<std::string>& arguments) {
    std::string sql;
    for (std::size_t position = 0; position < pattern.size(); ++position) {
        if (pattern[position] == '{') {
            sql += arguments[static_cast<std::size_t>(pattern[position + 1] - '0')];
            position += 2;
        } else {
            sql += pattern[position];
        }
    }
    return sql;
}

std::string Joined(const std::vector<std::string>& arguments) {
    std::string joined;
    for (const std::string& argument : arguments) joined += (joined.empty() ? "" : ", ") + argument;
    return joined;
}

/// A literal among the arguments of a function that gives a date is a date: "ISNULL(Scadenza, '1/1/1900')".
std::vector<std::string> ArgumentTexts(const std::vector<SqlExpression>& arguments, SqlKind kind) {
    std::vector<std::string> texts;
    for (const SqlExpression& argument : arguments) texts.push_back(SqlAssigned(kind, argument));
    return texts;
}

template <std::size_t N, typename Rule>
const Rule* FindRule(const Rule (&rules)[N], std::string_view name) {
    const auto found = std::find_if(std::begin(rules), std::end(rules),
                                    [&](const Rule& rule) { return text::EqualNoCase(rule.name, name); });
    return found == std::end(rules) ? nullptr : found;
}

bool IsDatePart(std::string_view name) {
    return text::EqualNoCase(name, "YEAR") || text::EqualNoCase(name, "MONTH") || text::EqualNoCase(name, "DAY");
}

SqlExpression Result(std::string sql, SqlKind kind) {
    SqlExpression result;
    result.sql = std::move(sql);
    result.kind = kind;
    return result;
}

}  // namespace

SqlExpression SqlCall(const std::string& function, const std::vector<SqlExpression>& arguments, SqlSchema& schema) {
    if (const FunctionRule* rule = FindRule(kTranslated, function)) {
        if (arguments.size() != rule->arguments) RefuseSql(function);
        const SqlKind kind = KindOf(rule->gives, arguments);
        const SqlKind taken = IsDatePart(function) ? SqlKind::Date : kind;
        return Result(Filled(rule->sql, ArgumentTexts(arguments, taken)), kind);
    }
    const FunctionKind* same = FindRule(kSame, function);
    if (same == nullptr && !schema.HasFunction(function)) RefuseSql(function);
    const SqlKind kind = KindOf(same == nullptr ? Gives::Unknown : same->gives, arguments);
    return Result(function + "(" + Joined(ArgumentTexts(arguments, kind)) + ")", kind);
}

SqlExpression SqlCast(const SqlExpression& value, const std::string& type, const std::string& size) {
    if (text::EqualNoCase(type, "BIT")) return Result("(CAST(" + value.sql + " AS NUMERIC) <> 0)", SqlKind::Number);
    switch (FieldTypeOf(type)) {
        case FieldType::Date: {
            const std::string taken = SqlAssigned(SqlKind::Date, value);
            const bool dayOnly = text::EqualNoCase(type, "DATE");
            return Result((dayOnly ? "date(" : "datetime(") + taken + ")", SqlKind::Date);
        }
        case FieldType::Currency: {
            const bool money = !text::EqualNoCase(type, "DECIMAL") && !text::EqualNoCase(type, "NUMERIC");
            const std::string decimals = money                                 ? "4"
                                         : size.find(',') == std::string::npos ? "0"
                                                                               : size.substr(size.find(',') + 1);
            return Result("round(CAST(" + value.sql + " AS REAL), " + decimals + ")", SqlKind::Number);
        }
        case FieldType::Double:
            return Result("CAST(" + value.sql + " AS REAL)", SqlKind::Number);
        case FieldType::Text: {
            const std::string content = "CAST(" + value.sql + " AS TEXT)";
            const bool bounded = !size.empty() && !text::EqualNoCase(size, "MAX");
            return Result(bounded ? "substr(" + content + ", 1, " + size + ")" : content, SqlKind::Text);
        }
        default:
            return Result("CAST(" + value.sql + " AS INTEGER)", SqlKind::Number);
    }
}

}  // namespace vlm::data
