#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "SqlSchema.h"
#include "SqliteSession.h"

namespace vlm::data {

/// What the attached databases declare. Columns are read once for each table and again when the database's schema
/// changes, also by another program.
class SqliteCatalog final : public SqlSchema {
public:
    explicit SqliteCatalog(SqliteSession& session) : session_(&session) {}

    std::string Attach(std::string_view database) override;
    std::shared_ptr<const SqlTable> TableOf(const std::string& schema, std::string_view name) override;
    bool HasFunction(std::string_view name) override;

    /// False when there is no such table or view.
    bool HasTable(const std::string& schema, std::string_view name) { return Find(schema, name) != nullptr; }
    /// Whether each row has a number of its own: false for a view and for a table that is kept by its key alone.
    bool HasRowNumbers(const std::string& schema, std::string_view name) const;

private:
    struct Schema {
        std::int64_t version = -1;
        std::uint64_t checkedFor = 0;  // the statement for which the version was read last
        std::map<std::string, std::shared_ptr<const SqlTable>> tables;  // by folded name
    };
    std::shared_ptr<const SqlTable> Find(const std::string& schema, std::string_view name);
    void Refresh(const std::string& name, Schema& schema);
    std::shared_ptr<const SqlTable> Read(const std::string& schema, std::string_view name);

    SqliteSession* session_;
    std::map<std::string, Schema> schemas_;
    std::set<std::string> functions_;  // folded names, read when first asked for
};

}  // namespace vlm::data
