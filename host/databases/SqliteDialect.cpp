#include "databases/SqliteDialect.h"

#include "database/SqlTokens.h"

namespace vlm::host {

namespace {

bool HasLongKey(const Table& table) { return table.KeyColumns().size() > 1; }

}  // namespace

std::string SqliteDialect::Declaration(const Table& table, const Column& column) const {
    if (!column.key) return TypeOf(column);
    return HasLongKey(table) ? TypeOf(column) + " NOT NULL" : "INTEGER PRIMARY KEY";
}

std::string SqliteDialect::KeyClause(const Table& table) const { return HasLongKey(table) ? PrimaryKey(table) : ""; }

std::string_view SqliteDialect::Storage(const Table& table) const { return HasLongKey(table) ? " WITHOUT ROWID" : ""; }

/// The expressions are those that comparisons of such columns are translated into.
std::string SqliteDialect::Indexed(const IndexPart& part) const {
    const std::string column(part.column);
    switch (part.use) {
        case IndexUse::Moment:
            return "datetime(" + column + ")";
        case IndexUse::CodeText:
            return "rtrim(" + column + ") COLLATE NOCASE";
        case IndexUse::NameText:
            return column + " COLLATE NOCASE";
        case IndexUse::Plain:
            break;
    }
    return column;
}

/// CROSS JOIN pins the order of the joins.
std::string_view SqliteDialect::JoinWord(JoinKind kind) const {
    if (kind == JoinKind::Left) return "LEFT JOIN";
    return kind == JoinKind::Ordered ? "CROSS JOIN" : "INNER JOIN";
}

std::string_view SqliteDialect::SelectWord(const Query&) const { return "SELECT"; }

std::vector<std::string> SqliteDialect::Procedures(const std::vector<Procedure>& procedures) const {
    std::vector<std::string> statements = {
        "CREATE TABLE StoredProcedure (\n    Name VARCHAR(128),\n    Ordinal INT,\n    Body TEXT)"};
    for (const Procedure& each : procedures) {
        const std::string body = Select(each.query).append("\nWHERE ").append(each.where).append(" = ?1");
        statements.push_back("INSERT INTO StoredProcedure (Name, Ordinal, Body) VALUES (" +
                             data::SqlTextLiteral(each.name) + ", 1, " + data::SqlTextLiteral(body) + ")");
    }
    return statements;
}

}  // namespace vlm::host
