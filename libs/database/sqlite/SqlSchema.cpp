#include "SqlSchema.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm::data {

namespace {

struct DeclaredType {
    std::string_view name;
    FieldType type;
};

constexpr DeclaredType kDeclaredTypes[] = {
    {"BIT", FieldType::Boolean},        {"BOOLEAN", FieldType::Boolean},  {"TINYINT", FieldType::SmallInt},
    {"SMALLINT", FieldType::SmallInt},  {"INT", FieldType::Integer},      {"INTEGER", FieldType::Integer},
    {"BIGINT", FieldType::BigInt},      {"FLOAT", FieldType::Double},     {"REAL", FieldType::Double},
    {"DOUBLE", FieldType::Double},      {"MONEY", FieldType::Currency},   {"SMALLMONEY", FieldType::Currency},
    {"DECIMAL", FieldType::Currency},   {"NUMERIC", FieldType::Currency}, {"DATETIME", FieldType::Date},
    {"SMALLDATETIME", FieldType::Date}, {"DATETIME2", FieldType::Date},   {"DATE", FieldType::Date},
};

}  // namespace

FieldType FieldTypeOf(std::string_view declared) {
    const std::string_view trimmed = text::Trim(declared);
    const std::string_view name = trimmed.substr(0, trimmed.find_first_of(" ("));
    const auto found = std::find_if(std::begin(kDeclaredTypes), std::end(kDeclaredTypes),
                                    [&](const DeclaredType& each) { return text::EqualNoCase(each.name, name); });
    return found == std::end(kDeclaredTypes) ? FieldType::Text : found->type;
}

SqlKind SqlKindOf(std::string_view declared) {
    if (text::Trim(declared).empty()) return SqlKind::Unknown;
    switch (FieldTypeOf(declared)) {
        case FieldType::Date:
            return SqlKind::Date;
        case FieldType::Text:
            return SqlKind::Text;
        default:
            return SqlKind::Number;
    }
}

const SqlColumn* SqlTable::Find(std::string_view name) const {
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const SqlColumn& column) { return text::EqualNoCase(column.name, name); });
    return found == columns.end() ? nullptr : &*found;
}

}  // namespace vlm::data
