#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "values/Value.h"

namespace vlm::data {

/// What an expression gives, as far as the declared types tell.
enum class SqlKind { Unknown, Number, Date, Text };

/// The field type of a declared column type such as "VARCHAR(30)".
FieldType FieldTypeOf(std::string_view declared);
/// Unknown for a column that is declared without a type (an expression of a view).
SqlKind SqlKindOf(std::string_view declared);

struct SqlColumn {
    std::string name;
    SqlKind kind = SqlKind::Unknown;
};

/// The columns of a table or view, in order.
struct SqlTable {
    std::vector<SqlColumn> columns;

    /// Names compare without regard to case; null when there is no such column.
    const SqlColumn* Find(std::string_view name) const;
};

/// What the translation of a statement asks of the databases.
class SqlSchema {
public:
    virtual ~SqlSchema() = default;

    /// The engine's name of a database, which is opened on first use; "" is the clinic's own. Throws Error naming a
    /// database that does not exist.
    virtual std::string Attach(std::string_view database) = 0;
    /// A table or view; Error naming it when the database has none of that name. `schema` is what Attach gave.
    virtual std::shared_ptr<const SqlTable> TableOf(const std::string& schema, std::string_view name) = 0;
    virtual bool HasFunction(std::string_view name) = 0;
};

}  // namespace vlm::data
