#include "SqlTranslation.h"

#include <algorithm>
#include <charconv>

#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

constexpr std::string_view kOwner = "dbo";
constexpr int kDeepest = 300;

/// The parts between the points; an empty one for what is left out between two points.
std::vector<SqlToken> TakeParts(SqlCursor& cursor) {
    std::vector<SqlToken> parts = {cursor.Take()};
    while (cursor.AcceptSymbol(".")) {
        if (cursor.IsSymbol(".")) {
            parts.push_back({});
        } else if (cursor.Peek().kind == SqlTokenKind::Name || cursor.IsSymbol("*")) {
            parts.push_back(cursor.Take());
        } else {
            cursor.Refuse();
        }
    }
    return parts;
}

bool IsOwner(const SqlToken& part) { return part.kind == SqlTokenKind::End || text::EqualNoCase(part.value, kOwner); }

std::string Whole(const std::vector<SqlToken>& parts) {
    std::string whole;
    for (const SqlToken& part : parts) whole += (whole.empty() ? "" : ".") + part.source;
    return whole;
}

/// Reads what stands before the table: `database.owner`, `owner` or `database`.
void ReadDatabase(const std::vector<SqlToken>& parts, std::size_t count, SqlTranslation& translation, SqlName& name) {
    const bool hasOwner = count > 0 && IsOwner(parts[count - 1]);
    if (count > 2 || (count == 2 && !hasOwner)) RefuseSql(Whole(parts));
    if (count == 0 || (count == 1 && hasOwner)) return;
    name.hasDatabase = true;
    name.schema = translation.Attach(parts.front().value);
}

}  // namespace

SqlTranslation::Nesting::Nesting(SqlTranslation& translation) : translation_(translation) {
    if (translation.depth_ >= kDeepest) throw Error("L'istruzione SQL è troppo annidata.");
    ++translation.depth_;
}

std::string SqlTranslation::Attach(std::string_view database) {
    std::string schema = schema_->Attach(database);
    if (std::find(used_.begin(), used_.end(), schema) == used_.end()) used_.push_back(schema);
    return schema;
}

SqlToken SqlTranslation::Argument(const SqlToken& parameter) const {
    std::size_t number = 1;
    std::from_chars(parameter.value.data(), parameter.value.data() + parameter.value.size(), number);
    if (number >= 1 && number <= arguments_->size()) return (*arguments_)[number - 1];
    return {SqlTokenKind::Name, "NULL", "NULL", false};
}

SqlName TakeColumnName(SqlTranslation& translation) {
    const std::vector<SqlToken> parts = TakeParts(translation.cursor);
    SqlName name;
    name.column = parts.back().IsSymbol("*") ? "*" : parts.back().value;
    name.columnSource = parts.back().source;
    if (parts.size() == 1) return name;
    const SqlToken& table = parts[parts.size() - 2];
    if (table.kind != SqlTokenKind::Name) RefuseSql(Whole(parts));
    name.table = table.value;
    name.tableSource = table.source;
    ReadDatabase(parts, parts.size() - 2, translation, name);
    return name;
}

SqlName TakeTableName(SqlTranslation& translation) {
    if (translation.cursor.Peek().kind != SqlTokenKind::Name) translation.cursor.Refuse();
    const std::vector<SqlToken> parts = TakeParts(translation.cursor);
    if (parts.back().kind != SqlTokenKind::Name) RefuseSql(Whole(parts));
    SqlName name;
    name.table = parts.back().value;
    name.tableSource = parts.back().source;
    ReadDatabase(parts, parts.size() - 1, translation, name);
    return name;
}

SqlKind SqlScope::KindOf(std::string_view schema, std::string_view source, std::string_view column) const {
    for (const SqlSource& each : sources_) {
        if (!source.empty() && !text::EqualNoCase(each.name, source)) continue;
        if (!schema.empty() && !text::EqualNoCase(each.schema, schema)) continue;
        if (const SqlColumn* found = each.table->Find(column)) return found->kind;
    }
    return outer_ == nullptr ? SqlKind::Unknown : outer_->KindOf(schema, source, column);
}

}  // namespace vlm::data
