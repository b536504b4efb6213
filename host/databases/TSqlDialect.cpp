#include "databases/TSqlDialect.h"

namespace vlm::host {

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
