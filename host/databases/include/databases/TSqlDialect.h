#pragma once

#include "databases/SqlDialect.h"

namespace vlm::host {

/// A server that speaks T-SQL (2012 and later). Comparisons of texts there disregard case and blanks at the end, dates
/// have a type, and the server's statistics choose the order of the joins; nothing of it has to be said.
class TSqlDialect final : public SqlDialect {
    std::string Declaration(const Table& table, const Column& column) const override;
    std::string KeyClause(const Table& table) const override;
    std::string_view Storage(const Table& table) const override;
    std::string Indexed(const IndexPart& part) const override;
    std::string_view JoinWord(JoinKind kind) const override;
    std::string_view SelectWord(const Query& query) const override;
    std::vector<std::string> Procedures(const std::vector<Procedure>& procedures) const override;
};

}  // namespace vlm::host
