#include "frmAnomalie.h"

#include <set>

#include "files/LineReader.h"
#include "values/DateText.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace {

constexpr std::string_view kDate = " del ";
constexpr std::size_t kDateLength = 10;
constexpr std::string_view kService = "- Prestazione ";

/// What stands before `mark`, which is taken off `rest` with it; "" and no change where there is no mark.
std::string_view TakeBefore(std::string_view& rest, std::string_view mark) {
    const std::size_t at = rest.find(mark);
    if (at == std::string_view::npos) return {};
    const std::string_view before = rest.substr(0, at);
    rest.remove_prefix(at + mark.size());
    return before;
}

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

AnomalyReport::AnomalyReport(const std::string& path)
    : columns_{{"Documento", "Documento", 80},
               {"Numero", "Numero", 90},
               {"Data", "Data", 85},
               {"Prestazione", "Prestazione", 80},
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
    std::string_view rest = line;
    const std::string_view document = TakeBefore(rest, " ");
    const std::string_view number = TakeBefore(rest, kDate);
    const std::string_view date = TakeBefore(rest, ":");
    const bool known = document == "Fattura" || document == "Ricevuta";
    const bool numbered = IsNumber(number.substr(number.rfind('-') + 1)) && number.find('-') != number.npos;
    if (!known || !numbered || date.size() != kDateLength || !text::ParseItalianDate(date)) return {};
    rest = text::Trim(rest);
    std::string_view service;
    if (rest.starts_with(kService)) {
        rest.remove_prefix(kService.size());
        service = TakeBefore(rest, ":");
        if (!IsNumber(service)) return {};
        rest = text::Trim(rest);
    }
    if (rest.empty()) return {};
    return {std::string(document), std::string(number), std::string(date), std::string(service), std::string(rest)};
}

std::string AnomalyReport::Cell(int row, int column) const {
    return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

frmAnomalie::frmAnomalie(std::shared_ptr<const AnomalyReport> report, std::function<void()> open)
    : Dialog("frmAnomalie", "Anomalie riscontrate") {
    AddRow("", {{{&lblTotale}}});
    AddRow("", {{{&grdAnomalie}}});
    SetButtons({&cmdApri, &cmdChiudi}, nullptr, &cmdChiudi);
    const int count = report->RowCount();
    lblTotale.SetCaption(count == 1 ? "1 anomalia" : text::FormatInteger(count, true) + " anomalie");
    grdAnomalie.SetModel(std::move(report));
    cmdApri.OnChange = std::move(open);
    cmdChiudi.OnChange = [this] { Close(); };
}

}  // namespace vlm::host
