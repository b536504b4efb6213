#pragma once

#include <string>
#include <vector>

#include "record/Columns.h"
#include "record/Layout.h"

/// Layouts as pages for people, from the tables that write and read the lines.
namespace vlm {

/// What a page says of one field.
struct FieldDescription {
    FieldPlace place;
    std::string name;
    std::string columns;  // that it is read from, in the order in which they are read
    std::string note;
};

/// The names of the columns that fill a member.
template <const auto& kColumns, class Member>
std::string ColumnsOf([[maybe_unused]] Member member) {
    std::string names;
    ForEachColumn<kColumns>([&](auto index) {
        const auto& column = std::get<index>(kColumns);
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(column.member)>, Member>) {
            if (column.member == member) names.append(names.empty() ? "" : ", ").append(column.name);
        }
    });
    return names;
}

/// The fields of a layout, in order, with the columns of the tables that are read for it.
template <const auto& kLayout, const auto&... kColumns>
std::vector<FieldDescription> DescribeFields() {
    std::vector<FieldDescription> fields;
    ForEachField<kLayout>([&](auto index) {
        const auto& row = std::get<index>(kLayout.fields);
        const auto member = MemberOf(row);
        std::string columns;
        if constexpr (!std::is_null_pointer_v<std::remove_cv_t<decltype(member)>>) {
            ((columns.empty() ? columns = ColumnsOf<kColumns>(member) : columns), ...);
        }
        fields.push_back({row, row.name, columns, row.note});
    });
    return fields;
}

/// A page in Markdown, in Italian: the engineers of a health authority read it beside the official layout.
std::string LayoutPage(const std::string& title, const std::string& introduction, int length,
                       const std::vector<FieldDescription>& fields);

}  // namespace vlm
