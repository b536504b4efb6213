#include "SqlTranslator.h"

#include "SqlExpression.h"
#include "SqlQueryParser.h"
#include "SqlTranslation.h"
#include "values/Error.h"

namespace vlm::data {

namespace {

/// Reads one whole statement.
class StatementParser {
public:
    explicit StatementParser(SqlTranslation& translation)
        : translation_(translation), cursor_(translation.cursor), queries_(translation) {}

    SqlStatement Parse() {
        const SqlToken& first = cursor_.Peek();
        SqlStatement statement;
        if (first.IsWord("SELECT")) {
            statement.kind = SqlStatement::Kind::Query;
            SqlQuery query = queries_.ParseQuery(nullptr);
            statement.sql = std::move(query.sql);
            for (const SqlOutput& output : query.outputs) statement.columns.push_back(output.value.kind);
        } else if (first.IsWord("EXPLAIN")) {
            statement.kind = SqlStatement::Kind::Query;
            statement.sql = ParseExplain();
        } else if (first.IsAnyWord({"INSERT", "UPDATE", "DELETE"})) {
            statement.kind = SqlStatement::Kind::Change;
            statement.sql = ParseChange();
        } else if (first.IsWord("WITH")) {
            statement.kind = SqlStatement::Kind::Query;
            statement.sql = Copy();
        } else if (first.IsAnyWord({"CREATE", "DROP", "ALTER", "PRAGMA", "BEGIN", "COMMIT", "ROLLBACK", "ANALYZE",
                                    "REINDEX", "VACUUM"})) {
            statement.sql = Copy();
        } else {
            statement.kind = SqlStatement::Kind::Procedure;
            ParseCall(statement);
        }
        cursor_.AcceptSymbol(";");
        if (!cursor_.AtEnd()) cursor_.Refuse();
        return statement;
    }

private:
    /// How the engine would run a query: "EXPLAIN QUERY PLAN SELECT ...".
    std::string ParseExplain() {
        cursor_.ExpectWord("EXPLAIN");
        cursor_.ExpectWord("QUERY");
        cursor_.ExpectWord("PLAN");
        return "EXPLAIN QUERY PLAN " + queries_.ParseQuery(nullptr).sql;
    }

    std::string ParseChange() {
        if (cursor_.AcceptWord("INSERT")) return ParseInsert();
        if (cursor_.AcceptWord("UPDATE")) return ParseUpdate();
        cursor_.ExpectWord("DELETE");
        cursor_.AcceptWord("FROM");
        const SqlSource target = queries_.ParseTarget();
        return "DELETE FROM " + target.qualifier + ParseWhere(target);
    }

    std::string ParseUpdate() {
        const SqlSource target = queries_.ParseTarget();
        SqlScope scope(nullptr);
        scope.Add(target);
        cursor_.ExpectWord("SET");
        std::string list;
        do {
            const SqlName column = TakeColumnName(translation_);
            cursor_.ExpectSymbol("=");
            const SqlExpression value = queries_.Expressions(scope).ParseValue();
            list += (list.empty() ? "" : ", ") + SqlQuotedName(column.column) + " = " +
                    SqlAssigned(scope.KindOf({}, {}, column.column), value);
        } while (cursor_.AcceptSymbol(","));
        return "UPDATE " + target.qualifier + " SET " + list + ParseWhere(target);
    }

    std::string ParseWhere(const SqlSource& target) {
        if (!cursor_.AcceptWord("WHERE")) return {};
        SqlScope scope(nullptr);
        scope.Add(target);
        return " WHERE " + queries_.Expressions(scope).ParseCondition().sql;
    }

    std::string ParseInsert() {
        cursor_.AcceptWord("INTO");
        const SqlSource target = queries_.ParseTarget();
        std::string sql = "INSERT INTO " + target.qualifier;
        std::vector<SqlKind> kinds;
        if (cursor_.AcceptSymbol("(")) {
            std::string list;
            do {
                if (cursor_.Peek().kind != SqlTokenKind::Name) cursor_.Refuse();
                const std::string column = cursor_.Take().value;
                const SqlColumn* known = target.table->Find(column);
                kinds.push_back(known == nullptr ? SqlKind::Unknown : known->kind);
                list += (list.empty() ? "" : ", ") + SqlQuotedName(column);
            } while (cursor_.AcceptSymbol(","));
            cursor_.ExpectSymbol(")");
            sql += " (" + list + ")";
        } else {
            for (const SqlColumn& column : target.table->columns) kinds.push_back(column.kind);
        }
        if (cursor_.IsWord("SELECT")) return sql + " " + queries_.ParseQuery(nullptr).sql;
        cursor_.ExpectWord("VALUES");
        return sql + " VALUES " + ParseRows(kinds);
    }

    std::string ParseRows(const std::vector<SqlKind>& kinds) {
        const SqlScope scope(nullptr);
        std::string rows;
        do {
            cursor_.ExpectSymbol("(");
            const std::vector<SqlExpression> values = queries_.Expressions(scope).ParseValues();
            cursor_.ExpectSymbol(")");
            std::string list;
            for (std::size_t index = 0; index < values.size(); ++index) {
                const SqlKind kind = index < kinds.size() ? kinds[index] : SqlKind::Unknown;
                list += (list.empty() ? "" : ", ") + SqlAssigned(kind, values[index]);
            }
            rows += (rows.empty() ? "(" : ", (") + list + ")";
        } while (cursor_.AcceptSymbol(","));
        return rows;
    }

    /// The statement as it stands, but for the names of databases and parameters.
    std::string Copy() {
        std::string sql;
        while (!cursor_.AtEnd()) {
            if (!sql.empty()) sql += ' ';
            const SqlToken& token = cursor_.Peek();
            if (token.kind == SqlTokenKind::Name && cursor_.Peek(1).IsSymbol(".")) {
                sql += CopyName();
            } else if (token.kind == SqlTokenKind::Parameter) {
                sql += translation_.Argument(cursor_.Take()).source;
            } else {
                sql += token.kind == SqlTokenKind::Text ? SqlTextLiteral(token.value) : token.source;
                cursor_.Take();
            }
        }
        return sql;
    }

    /// "Database..Table" becomes the engine's own form; a name with single points stays.
    std::string CopyName() {
        std::string sql;
        if (cursor_.Peek(2).IsSymbol(".")) {
            sql = SqlQuotedName(translation_.Attach(cursor_.Take().value)) + ".";
            cursor_.Take();
            cursor_.Take();
            return sql;
        }
        sql = cursor_.Take().source;
        return sql + cursor_.Take().source;
    }

    /// `Name literal, literal`, with EXEC before it or without.
    void ParseCall(SqlStatement& statement) {
        const SqlToken first = cursor_.Peek();
        const bool explicitCall = cursor_.AcceptWord("EXEC") || cursor_.AcceptWord("EXECUTE");
        if (cursor_.Peek().kind != SqlTokenKind::Name) cursor_.Refuse();
        statement.sql = TakeTableName(translation_).table;
        while (!cursor_.AtEnd() && !cursor_.IsSymbol(";")) {
            if (!statement.arguments.empty()) cursor_.ExpectSymbol(",");
            SqlToken argument;
            const bool negative = cursor_.AcceptSymbol("-");
            argument = cursor_.Take();
            const bool literal = argument.kind == SqlTokenKind::Number ||
                                 (!negative && (argument.kind == SqlTokenKind::Text || argument.IsWord("NULL")));
            if (!literal) RefuseSql(explicitCall ? argument.source : first.source);
            if (negative) argument.source.insert(0, "-");
            statement.arguments.push_back(std::move(argument));
        }
    }

    SqlTranslation& translation_;
    SqlCursor& cursor_;
    SqlQueryParser queries_;
};

}  // namespace

SqlStatement SqlTranslator::Translate(std::string_view sql, const std::vector<SqlToken>& arguments) const {
    std::vector<SqlToken> tokens = Tokenize(sql);
    if (tokens.size() == 1) throw Error("L'istruzione SQL è vuota.");
    SqlTranslation translation(std::move(tokens), arguments, *schema_);
    SqlStatement statement = StatementParser(translation).Parse();
    statement.databases = translation.Used();
    return statement;
}

}  // namespace vlm::data
