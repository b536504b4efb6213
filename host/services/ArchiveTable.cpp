#include "ArchiveTable.h"

#include "values/Utf8.h"

namespace vlm::host {

std::string RecordText(const ArchiveTable& table, std::int64_t key) {
    return std::string(table.subject) + " n. " + std::to_string(key);
}

ArchiveTable ArchiveTableOf(std::string_view name) {
    for (const ArchiveTable& table : {kPatients, kPatientExemptions}) {
        if (text::EqualNoCase(table.name, name)) return table;
    }
    return {name, {}, "Il record", "bloccato"};
}

}  // namespace vlm::host
