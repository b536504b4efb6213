#pragma once

#include "databases/SqlDialect.h"

namespace vlm::host {

/// The embedded engine. A key of one column is the row's number; the rows of a longer key lie in its order. A procedure
/// is rows of the table StoredProcedure, with ?1 for its argument.
class SqliteDialect final : public SqlDialect {
    std::string Declaration(const Table& table, const Column& column) const override;
    std::string KeyClause(const Table& table) const override;
    std::string_view Storage(const Table& table) const override;
    std::string Indexed(const IndexPart& part) const override;
    std::string_view JoinWord(JoinKind kind) const override;
    std::string_view SelectWord(const Query& query) const override;
    std::vector<std::string> Procedures(const std::vector<Procedure>& procedures) const override;
};

}  // namespace vlm::host
