#include "PreviewGrid.h"

#include <string>

#include "PreviewColumns.h"
#include "Priorita.h"
#include "record/FieldFormat.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::puglia {

namespace {

constexpr FieldFormat kFormat{kPugliaFields};
constexpr std::string_view kMale = "1";

std::string CellOf(const PreviewColumn& column, std::string_view line) {
    const std::string_view field = text::Trim(FieldAt(line, column.place));
    if (field.empty()) return {};
    switch (column.shown) {
        case Shown::Text:
            break;
        case Shown::Number:
            return std::to_string(text::LeadingInteger(field));
        case Shown::Amount:
            return text::FormatDecimals(kFormat.ParseAmount(field), 2, true);
        case Shown::Date:
            return kFormat.DisplayDate(field);
        case Shown::Sesso:
            return field == kMale ? "M" : "F";
        case Shown::Priorita:
            return std::string(PrioritaDescrizione(field));
    }
    return std::string(field);
}

}  // namespace

void InitPreview(ViewGrid& grid, std::int32_t records) {
    for (const PreviewColumn& column : kPreviewColumns) {
        const bool aligned = column.shown == Shown::Number || column.shown == Shown::Amount;
        grid.AddColumn(column.title + (column.slot > 0 ? std::to_string(column.slot) : ""), column.width, aligned);
    }
    grid.SetRowCount(records);
}

void FillPreview(std::string_view line, ViewGrid& grid, std::int32_t row) {
    std::size_t at = 0;
    for (const PreviewColumn& column : kPreviewColumns) grid.SetCell(row, at++, CellOf(column, line));
}

}  // namespace vlm::puglia
