#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "values/Date.h"

namespace vlm::host {

/// A person as a health authority lists them.
struct DemoListed {
    std::string code, surname, name, fiscalCode, town, street, telephone, exemption;
    std::string_view sex;
    std::optional<Date> birth, choice, expiry, suspension, from, to;
};

/// One column of a list: what it is called in a template, what stands in it, and where.
struct DemoListColumn {
    std::string_view key;
    std::string (*text)(const DemoListed&);
    int start = 0;   // fixed width: character from 1; workbook: column from 1
    int length = 0;  // fixed width only
};

/// A list of one format: the source in code page 1252, lines closed by CR LF, and the template that describes it.
struct DemoList {
    std::string_view templateName;  // "" for a format that the import knows
    std::string_view sourceName;    // "" for a format of which there is no sample
    char fileType;                  // 'D' delimited by ";", 'F' fixed width, 'E' workbook
    std::string_view remark;        // the template's first line
    std::span<const DemoListColumn> columns;
    std::string_view options = {};   // further lines of the template
    std::string_view headings = {};  // of the source
    bool capitals = false;
};

std::span<const DemoList> DemoLists();

std::string TemplateText(const DemoList& list);
std::string SourceText(const DemoList& list, std::span<const DemoListed> persons);

}  // namespace vlm::host
