#include "SqlQueryParser.h"

namespace vlm::data {

namespace {

bool StartsJoin(const SqlToken& token) { return token.IsAnyWord({"JOIN", "INNER", "LEFT", "RIGHT", "FULL", "CROSS"}); }

bool EndsSource(const SqlToken& token) {
    return StartsJoin(token) || token.IsAnyWord({"ON", "WHERE", "GROUP", "HAVING", "ORDER", "UNION", "EXCEPT",
                                                 "INTERSECT", "LIMIT", "SET", "VALUES", "WITH", "USING", "FROM"});
}

}  // namespace

std::string SqlQueryParser::ParseFrom(SqlScope& scope) {
    std::vector<FromPiece> pieces;
    ParseSources(scope, pieces);
    const std::size_t end = cursor_.Position();
    std::string sql;
    for (const FromPiece& piece : pieces) {
        sql += piece.sql;
        if (piece.condition == 0) continue;
        cursor_.Seek(piece.condition);
        sql += Expressions(scope).ParseCondition().sql;
        const bool closed = cursor_.IsSymbol(")") || cursor_.IsSymbol(",") || cursor_.IsSymbol(";");
        if (!closed && !cursor_.AtEnd() && !EndsSource(cursor_.Peek())) cursor_.Refuse();
    }
    cursor_.Seek(end);
    return sql;
}

void SqlQueryParser::ParseSources(SqlScope& scope, std::vector<FromPiece>& pieces) {
    ParseSource(scope, pieces);
    for (;;) {
        if (cursor_.AcceptSymbol(",")) {
            pieces.push_back({", "});
        } else if (StartsJoin(cursor_.Peek())) {
            pieces.push_back({ParseJoin()});
        } else {
            return;
        }
        ParseSource(scope, pieces);
        ParseJoinCondition(pieces);
    }
}

std::string SqlQueryParser::ParseJoin() {
    std::string sql = " ";
    while (cursor_.Peek().IsAnyWord({"INNER", "LEFT", "RIGHT", "FULL", "OUTER", "CROSS"})) {
        sql += cursor_.Take().source + " ";
    }
    cursor_.ExpectWord("JOIN");
    return sql + "JOIN ";
}

void SqlQueryParser::ParseJoinCondition(std::vector<FromPiece>& pieces) {
    if (!cursor_.AcceptWord("ON")) return;
    pieces.push_back({" ON ", cursor_.Position()});
    cursor_.SkipTo([&] {
        const bool function = cursor_.Peek(1).IsSymbol("(") && cursor_.Peek().IsAnyWord({"LEFT", "RIGHT"});
        return cursor_.IsSymbol(",") || (!function && EndsSource(cursor_.Peek()));
    });
}

void SqlQueryParser::ParseSource(SqlScope& scope, std::vector<FromPiece>& pieces) {
    const SqlTranslation::Nesting nesting(translation_);
    if (!cursor_.IsSymbol("(")) {
        std::string sql;
        scope.Add(ParseTable(sql));
        pieces.push_back({sql});
        return;
    }
    cursor_.Take();
    if (cursor_.IsWord("SELECT")) {
        pieces.push_back({ParseInnerQuery(scope)});
        return;
    }
    pieces.push_back({"("});
    ParseSources(scope, pieces);
    cursor_.ExpectSymbol(")");
    pieces.push_back({")"});
}

std::string SqlQueryParser::ParseInnerQuery(SqlScope& scope) {
    const SqlQuery query = ParseQuery(scope.Outer());
    cursor_.ExpectSymbol(")");
    auto columns = std::make_shared<SqlTable>();
    for (const SqlOutput& output : query.outputs) columns->columns.push_back({output.name, output.value.kind});
    const std::string alias = ParseAlias();
    if (alias.empty()) cursor_.Refuse();
    scope.Add({alias, {}, SqlQuotedName(alias), std::move(columns)});
    return "(" + query.sql + ") AS " + SqlQuotedName(alias);
}

SqlSource SqlQueryParser::ParseTable(std::string& sql) {
    SqlSource source = ParseTarget();
    sql = SqlQuotedName(source.schema) + "." + SqlQuotedName(source.name);
    const std::string alias = ParseAlias();
    SkipLockHints();
    if (alias.empty()) return source;
    sql += " AS " + SqlQuotedName(alias);
    source.name = alias;
    source.schema.clear();
    source.qualifier = SqlQuotedName(alias);
    return source;
}

SqlSource SqlQueryParser::ParseTarget() {
    const SqlName name = TakeTableName(translation_);
    const std::string schema = name.hasDatabase ? name.schema : translation_.Attach("");
    auto table = translation_.Schema().TableOf(schema, name.table);
    return {name.table, schema, SqlQuotedName(schema) + "." + SqlQuotedName(name.table), std::move(table)};
}

std::string SqlQueryParser::ParseAlias() {
    const bool named = cursor_.AcceptWord("AS");
    const SqlToken& token = cursor_.Peek();
    if (token.kind == SqlTokenKind::Name && !EndsSource(token)) return cursor_.Take().value;
    if (named) cursor_.Refuse();
    return {};
}

/// "WITH (NOLOCK)": a reader never locks here.
void SqlQueryParser::SkipLockHints() {
    if (!cursor_.IsWord("WITH") || !cursor_.Peek(1).IsSymbol("(")) return;
    cursor_.Take();
    cursor_.Take();
    cursor_.SkipTo([] { return false; });
    cursor_.ExpectSymbol(")");
}

}  // namespace vlm::data
