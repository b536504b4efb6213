#include "databases/SqlDialect.h"

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

}  // namespace vlm::host
