#include "host/desktop/AnomalyReport.h"

#include <regex>
#include <set>

#include "platform/files/LineReader.h"

namespace vlm::host {

AnomalyReport::AnomalyReport(const std::string& path)
    : columns_{{"Documento", "Documento", 80},
               {"Numero", "Numero", 90, true, false, true},
               {"Data", "Data", 85},
               {"Prestazione", "Prestazione", 80, true, false, true},
               {"Anomalia", "Anomalia", 480}} {
    files::LineReader file(path);
    std::set<Row> told;
    report_ = !file.AtEnd();
    while (!file.AtEnd()) {
        const std::string_view line = file.ReadLine();
        if (line.empty()) continue;
        Row row = RowOf(line);
        report_ = report_ && !row.empty();
        if (!report_) return;
        if (told.insert(row).second) rows_.push_back(std::move(row));
    }
    report_ = report_ && !rows_.empty();
}

/// "Fattura A-125 del 16/03/2011:  - Prestazione 2: ..."; empty for another line.
AnomalyReport::Row AnomalyReport::RowOf(std::string_view line) {
    static const std::regex form(
        "(Fattura|Ricevuta) (.*-[0-9]+) del ([0-9]{2}/[0-9]{2}/[0-9]{4}):(?: +- Prestazione ([0-9]+):)? *(.+)");
    std::match_results<std::string_view::const_iterator> parts;
    if (!std::regex_match(line.begin(), line.end(), parts, form)) return {};
    Row row;
    for (std::size_t i = 1; i < parts.size(); ++i) row.push_back(parts[i].str());
    return row;
}

std::string AnomalyReport::Cell(int row, int column) const {
    return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

}  // namespace vlm::host
