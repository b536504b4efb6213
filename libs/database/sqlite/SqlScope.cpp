#include "SqlScope.h"

#include "values/Utf8.h"

namespace vlm::data {

SqlKind SqlScope::KindOf(std::string_view schema, std::string_view source, std::string_view column) const {
    for (const SqlSource& each : sources_) {
        if (!source.empty() && !text::EqualNoCase(each.name, source)) continue;
        if (!schema.empty() && !text::EqualNoCase(each.schema, schema)) continue;
        if (const SqlColumn* found = each.table->Find(column)) return found->kind;
    }
    return outer_ == nullptr ? SqlKind::Unknown : outer_->KindOf(schema, source, column);
}

}  // namespace vlm::data
