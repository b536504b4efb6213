#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sqlite/SqlSchema.h"

namespace vlm::data {

/// A table, view or inner query that a statement reads.
struct SqlSource {
    std::string name;       // by which its columns are named: its alias, or the table's name
    std::string schema;     // the engine's name of its database; empty for an alias or inner query
    std::string qualifier;  // what stands before a column's name in the engine's words
    std::shared_ptr<const SqlTable> table;
};

/// The sources whose columns a place in a statement can name: its own query's, then those of the queries around it.
class SqlScope {
public:
    explicit SqlScope(const SqlScope* outer) : outer_(outer) {}

    void Add(SqlSource source) { sources_.push_back(std::move(source)); }
    const std::vector<SqlSource>& Sources() const { return sources_; }
    const SqlScope* Outer() const { return outer_; }

    /// `schema` and `source` may be empty. Unknown when no source has the column.
    SqlKind KindOf(std::string_view schema, std::string_view source, std::string_view column) const;

private:
    std::vector<SqlSource> sources_;
    const SqlScope* outer_;
};

}  // namespace vlm::data
