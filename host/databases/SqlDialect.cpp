#include "databases/SqlDialect.h"

#include "database/SqlTokens.h"

namespace vlm::host {

namespace {

/// Parts with something between them.
class Joined {
public:
    explicit Joined(std::string_view separator) : separator_(separator) {}
    void Add(std::string_view part) { text_.append(text_.empty() ? "" : separator_).append(part); }
    const std::string& Text() const { return text_; }

private:
    std::string_view separator_;
    std::string text_;
};

bool HasLongKey(const Table& table) { return table.KeyColumns().size() > 1; }

}  // namespace

std::string SqlDialect::TypeOf(const Column& column) {
    switch (column.type) {
        case ColumnType::Int:
            return "INT";
        case ColumnType::SmallInt:
            return "SMALLINT";
        case ColumnType::Bit:
            return "BIT";
        case ColumnType::Money:
            return "MONEY";
        case ColumnType::DateTime:
            return "DATETIME";
        case ColumnType::VarChar:
            break;
    }
    return "VARCHAR(" + std::to_string(column.width) + ")";
}

std::string SqlDialect::PrimaryKey(const Table& table) {
    Joined names(", ");
    for (std::string_view name : table.KeyColumns()) names.Add(name);
    return "PRIMARY KEY (" + names.Text() + ")";
}

std::string SqlDialect::TableStatement(const Table& table) const {
    Joined lines(",\n    ");
    for (const Column& column : table.columns)
        lines.Add(std::string(column.name).append(" ").append(Declaration(table, column)));
    if (const std::string key = KeyClause(table); !key.empty()) lines.Add(key);
    return std::string("CREATE TABLE ")
        .append(table.name)
        .append(" (\n    ")
        .append(lines.Text())
        .append(")")
        .append(Storage(table));
}

std::string SqlDialect::IndexStatement(const Index& index) const {
    Joined parts(", ");
    for (const IndexPart& part : index.parts) parts.Add(Indexed(part));
    return std::string("CREATE INDEX ")
        .append(index.name)
        .append(" ON ")
        .append(index.table)
        .append(" (")
        .append(parts.Text())
        .append(")");
}

std::string SqlDialect::Select(const Query& query) const {
    Joined columns(",\n    ");
    for (const SelectedColumn& each : query.columns)
        columns.Add(std::string(each.table).append(".").append(each.column).append(" AS ").append(each.Name()));
    std::string sql(SelectWord(query));
    sql.append(" ").append(columns.Text()).append("\nFROM ").append(query.from);
    for (const Join& join : query.joins) {
        sql.append("\n    ").append(JoinWord(join.kind)).append(" ").append(join.table);
        sql.append(" ON ").append(join.condition);
    }
    Joined order(", ");
    for (std::string_view column : query.order) order.Add(column);
    if (!query.order.empty()) sql.append("\nORDER BY ").append(order.Text());
    return sql;
}

std::vector<std::string> SqlDialect::Tables(const DatabaseSchema& schema) const {
    std::vector<std::string> statements;
    for (const Table& table : schema.tables) statements.push_back(TableStatement(table));
    for (const View& view : schema.views)
        statements.push_back(std::string("CREATE VIEW ").append(view.name).append(" AS\n") + Select(view.query));
    if (schema.procedures.empty()) return statements;
    for (std::string& statement : Procedures(schema.procedures)) statements.push_back(std::move(statement));
    return statements;
}

std::vector<std::string> SqlDialect::Indices(const DatabaseSchema& schema) const {
    std::vector<std::string> statements;
    for (const Index& index : schema.indices) statements.push_back(IndexStatement(index));
    return statements;
}

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

/// NULL is said, because what a column is without it depends on the session.
std::string TSqlDialect::Declaration(const Table&, const Column& column) const {
    return TypeOf(column) + (column.key ? " NOT NULL" : " NULL");
}

std::string TSqlDialect::KeyClause(const Table& table) const {
    if (table.KeyColumns().empty()) return "";
    return std::string("CONSTRAINT PK_").append(table.name).append(" ") + PrimaryKey(table);
}

std::string_view TSqlDialect::Storage(const Table&) const { return ""; }

std::string TSqlDialect::Indexed(const IndexPart& part) const { return std::string(part.column); }

std::string_view TSqlDialect::JoinWord(JoinKind kind) const {
    return kind == JoinKind::Left ? "LEFT JOIN" : "INNER JOIN";
}

/// A view may be ordered only where it is limited; of 100 percent the server would drop the order again.
std::string_view TSqlDialect::SelectWord(const Query& query) const {
    return query.order.empty() ? "SELECT" : "SELECT TOP (2147483647)";
}

std::vector<std::string> TSqlDialect::Procedures(const std::vector<Procedure>& procedures) const {
    std::vector<std::string> statements;
    for (const Procedure& each : procedures) {
        std::string sql = "CREATE PROCEDURE ";
        sql.append(each.name).append(" @").append(each.argument).append(" INT AS\n").append(Select(each.query));
        statements.push_back(sql.append("\nWHERE ").append(each.where).append(" = @").append(each.argument));
    }
    return statements;
}

}  // namespace vlm::host
