#include "SqlQueryParser.h"

#include <charconv>

#include "SqlExpression.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

bool EndsOutputs(const SqlToken& token) {
    return token.IsAnyWord(
        {"FROM", "WHERE", "GROUP", "HAVING", "ORDER", "UNION", "EXCEPT", "INTERSECT", "LIMIT", "INTO"});
}

/// An unqualified name by which a term of ORDER BY may mean a column that the query gives.
bool IsAloneInOrder(const SqlCursor& cursor) {
    const SqlToken& next = cursor.Peek(1);
    return next.kind == SqlTokenKind::End || next.IsSymbol(",") || next.IsSymbol(")") || next.IsSymbol(";") ||
           next.IsAnyWord({"ASC", "DESC", "LIMIT"});
}

}  // namespace

SqlExpression SqlQueryParser::ParseSubquery(const SqlScope& scope) {
    SqlQuery query = ParseQuery(&scope);
    SqlExpression expression;
    expression.sql = std::move(query.sql);
    expression.kind = query.outputs.empty() ? SqlKind::Unknown : query.outputs.front().value.kind;
    return expression;
}

SqlQuery SqlQueryParser::ParseQuery(const SqlScope* outer) {
    Core core = ParseCore(outer);
    bool combined = false;
    while (cursor_.Peek().IsAnyWord({"UNION", "EXCEPT", "INTERSECT"})) {
        combined = true;
        core.sql += " " + cursor_.Take().source;
        if (cursor_.AcceptWord("ALL")) core.sql += " ALL";
        const Core next = ParseCore(outer);
        if (!next.top.empty() || !core.top.empty()) RefuseSql("TOP");
        core.sql += " " + next.sql;
    }
    if (cursor_.AcceptWord("ORDER")) {
        cursor_.ExpectWord("BY");
        core.sql += ParseOrder(core, combined);
    }
    if (cursor_.AcceptWord("LIMIT")) {
        core.sql += " LIMIT " + Expressions(*core.scope).ParseValue().sql;
        if (cursor_.AcceptWord("OFFSET")) core.sql += " OFFSET " + Expressions(*core.scope).ParseValue().sql;
    } else if (!core.top.empty()) {
        core.sql += " LIMIT " + core.top;
    }
    return {std::move(core.sql), std::move(core.outputs)};
}

SqlQueryParser::Core SqlQueryParser::ParseCore(const SqlScope* outer) {
    Core core;
    core.scope = std::make_unique<SqlScope>(outer);
    core.sql = "SELECT ";
    cursor_.ExpectWord("SELECT");
    if (cursor_.AcceptWord("DISTINCT")) {
        core.sql += "DISTINCT ";
    } else {
        cursor_.AcceptWord("ALL");
    }
    if (cursor_.AcceptWord("TOP")) {
        const bool enclosed = cursor_.AcceptSymbol("(");
        if (cursor_.Peek().kind != SqlTokenKind::Number) cursor_.Refuse();
        core.top = cursor_.Take().source;
        if (enclosed) cursor_.ExpectSymbol(")");
    }
    // What the columns mean is told by the sources, which the statement names after them.
    const std::size_t outputs = cursor_.Position();
    cursor_.SkipTo([&] { return EndsOutputs(cursor_.Peek()); });
    const std::size_t afterOutputs = cursor_.Position();
    std::string from;
    if (cursor_.IsWord("INTO")) cursor_.Refuse();
    if (cursor_.AcceptWord("FROM")) from = " FROM " + ParseFrom(*core.scope);
    const std::size_t afterFrom = cursor_.Position();
    cursor_.Seek(outputs);
    core.sql += ParseOutputs(core);
    if (cursor_.Position() != afterOutputs) cursor_.Refuse();
    cursor_.Seek(afterFrom);
    core.sql += from;
    ParseFilters(core);
    return core;
}

void SqlQueryParser::ParseFilters(Core& core) {
    SqlExpressionParser expressions = Expressions(*core.scope);
    if (cursor_.AcceptWord("WHERE")) core.sql += " WHERE " + expressions.ParseCondition().sql;
    if (cursor_.AcceptWord("GROUP")) {
        cursor_.ExpectWord("BY");
        std::string list;
        for (const SqlExpression& term : expressions.ParseValues()) list += (list.empty() ? " " : ", ") + term.sql;
        core.sql += " GROUP BY" + list;
    }
    if (cursor_.AcceptWord("HAVING")) core.sql += " HAVING " + expressions.ParseCondition().sql;
}

std::string SqlQueryParser::ParseOutputs(Core& core) {
    std::string list;
    do {
        if (!list.empty()) list += ", ";
        std::size_t star = 0;  // "T.*" ends its name with a star, "a * b" has it between two values
        while (cursor_.Peek(star).kind == SqlTokenKind::Name || cursor_.Peek(star).IsSymbol(".")) ++star;
        const bool all = cursor_.Peek(star).IsSymbol("*") && (star == 0 || cursor_.Peek(star - 1).IsSymbol("."));
        if (all) {
            list += ParseStar(core);
            continue;
        }
        std::string alias;
        core.outputs.push_back(ParseOutput(*core.scope, alias));
        list += core.outputs.back().value.sql;
        if (!alias.empty()) list += " AS " + alias;
    } while (cursor_.AcceptSymbol(","));
    return list;
}

/// "*" and "T.*": written out as the columns' own names, so that what a table of another database gives is called as
/// the table calls it.
std::string SqlQueryParser::ParseStar(Core& core) {
    SqlName name;
    if (!cursor_.AcceptSymbol("*")) name = TakeColumnName(translation_);
    std::string list;
    for (const SqlSource& source : core.scope->Sources()) {
        if (!name.table.empty() && !text::EqualNoCase(source.name, name.table)) continue;
        if (name.hasDatabase && !text::EqualNoCase(source.schema, name.schema)) continue;
        for (const SqlColumn& column : source.table->columns) {
            SqlExpression value;
            value.sql = source.qualifier + "." + SqlQuotedName(column.name);
            value.kind = column.kind;
            value.form = SqlForm::Column;
            list += (list.empty() ? "" : ", ") + value.sql;
            core.outputs.push_back({column.name, std::move(value)});
        }
    }
    if (list.empty()) RefuseSql(name.table.empty() ? "*" : name.table + ".*");
    return list;
}

SqlOutput SqlQueryParser::ParseOutput(const SqlScope& scope, std::string& alias) {
    SqlOutput output;
    const std::size_t start = cursor_.Position();
    output.value = Expressions(scope).ParseValue();
    if (output.value.form == SqlForm::Column) {
        const std::size_t end = cursor_.Position();
        cursor_.Seek(end - 1);
        if (end > start && cursor_.Peek().kind == SqlTokenKind::Name) output.name = cursor_.Peek().value;
        cursor_.Seek(end);
    }
    const bool explicitAlias = cursor_.AcceptWord("AS");
    const SqlTokenKind kind = cursor_.Peek().kind;
    const bool named = (kind == SqlTokenKind::Name && !EndsOutputs(cursor_.Peek())) || kind == SqlTokenKind::Text;
    if (explicitAlias && !named) cursor_.Refuse();
    if (named) {
        output.name = cursor_.Take().value;
        alias = SqlQuotedName(output.name);
    }
    return output;
}

std::string SqlQueryParser::ParseOrder(const Core& core, bool combined) {
    std::string list;
    do {
        list += list.empty() ? " ORDER BY " : ", ";
        list += SqlOrdered(ParseOrderTerm(core, combined));
        if (cursor_.AcceptWord("DESC")) {
            list += " DESC";
        } else {
            cursor_.AcceptWord("ASC");
        }
    } while (cursor_.AcceptSymbol(","));
    return list;
}

/// A name alone means the column that the query gives under it before any column of the sources, also where several
/// of these have one of that name.
SqlExpression SqlQueryParser::ParseOrderTerm(const Core& core, bool combined) {
    const SqlOutput* output = IsAloneInOrder(cursor_) ? OutputAt(core) : nullptr;
    if (output == nullptr) return Expressions(*core.scope).ParseValue();
    const SqlToken& token = cursor_.Take();
    if (!combined) return output->value;
    // Queries put together are ordered by the names of their columns only.
    SqlExpression term;
    term.sql = token.source;
    term.kind = output->value.MayBeText() ? SqlKind::Text : SqlKind::Number;
    return term;
}

const SqlOutput* SqlQueryParser::OutputAt(const Core& core) const {
    const SqlToken& token = cursor_.Peek();
    if (token.kind == SqlTokenKind::Number) {
        std::size_t number = 0;
        std::from_chars(token.source.data(), token.source.data() + token.source.size(), number);
        return number >= 1 && number <= core.outputs.size() ? &core.outputs[number - 1] : nullptr;
    }
    if (token.kind != SqlTokenKind::Name) return nullptr;
    for (const SqlOutput& output : core.outputs) {
        if (text::EqualNoCase(output.name, token.value)) return &output;
    }
    return nullptr;
}

}  // namespace vlm::data
