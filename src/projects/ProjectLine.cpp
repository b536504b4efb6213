#include "ProjectLine.h"

#include "record/FieldFormat.h"
#include "values/Number.h"

namespace vlm {

using projects::Content;
using projects::kLayout;
using projects::Row;

namespace {

constexpr FieldFormat kFormat{kCommonFields};

constexpr double kItaliana = 100;

/// Where a field of the amounts part starts in a finished line. From there on a line is digits, commas and blanks, so
/// that its characters are counted from the end whatever letters the names in front have.
std::size_t OffsetOf(const std::string& line, const Row& row) {
    return line.size() - static_cast<std::size_t>(projects::kLineLength + 1 - row.position);
}

}  // namespace

std::optional<Date> DateOfCell(const data::Recordset& rows, int column) {
    if (text::Trim(rows.TextOf(column)).empty()) return std::nullopt;
    return rows.DateOf(column);
}

ProjectLine::ProjectLine(const data::Recordset& rows)
    : rows_(rows),
      state_(rows.Ordinal("IDStatoPrestazioneErogata")),
      numeroAccessi_(rows.Ordinal("NumeroAccessi")),
      importoTotale_(rows.Ordinal("ImportoTotale")),
      dataRevoca_(rows.Ordinal("DataRevoca")) {
    for (std::size_t i = 0; i < kLayout.size(); ++i) {
        columns_[i] = HasColumn(kLayout[i]) ? rows.Ordinal(kLayout[i].field.source) : -1;
    }
}

void ProjectLine::BuildLine(std::string& line, bool startsProject) const {
    if (startsProject) WriteProject(line);
    WriteAmounts(line);
}

void ProjectLine::WriteProject(std::string& line) const {
    FixedLine fixed(line, projects::kLineLength);
    std::string field;
    for (std::size_t i = 0; i < kLayout.size(); ++i) {
        if (IsCompletedByEveryRow(kLayout[i])) continue;
        field.clear();
        AppendField(field, i, {});
        fixed.Put(kLayout[i], field);
    }
}

void ProjectLine::WriteAmounts(std::string& line) const {
    std::string field;
    for (std::size_t i = 0; i < kLayout.size(); ++i) {
        if (!IsCompletedByEveryRow(kLayout[i])) continue;
        const std::size_t offset = OffsetOf(line, kLayout[i]);
        field.clear();
        AppendField(field, i, std::string_view(line).substr(offset, static_cast<std::size_t>(kLayout[i].length)));
        line.replace(offset, field.size(), field);
    }
}

/// `written`: what stands in the field's place so far.
void ProjectLine::AppendField(std::string& out, std::size_t index, std::string_view written) const {
    const Row& row = kLayout[index];
    const int column = columns_[index];
    switch (row.field.content) {
        case Content::Column:
            return AppendColumn(out, row, column);
        case Content::ColumnText:
            return kFormat.AppendNumber(out, rows_.TextOf(column), row.length);
        case Content::UpperText:
            return kFormat.AppendText(out, text::ToUpper(rows_.TextOf(column)), row.length);
        case Content::Constant:
            return kFormat.AppendText(out, row.field.source, row.length);
        case Content::Sesso:
            return kFormat.AppendText(out, rows_.TextOf(column) == "M" ? "1" : "2", row.length);
        case Content::Cittadinanza: {
            const double code = rows_.NumberOf(column);
            return kFormat.AppendNumber(out, text::NumberText(code > 0 ? code : kItaliana), row.length);
        }
        case Content::IfRevoked:
            if (!DateOfCell(rows_, dataRevoca_)) return;
            return kFormat.AppendText(out, text::NumberText(rows_.NumberOf(column)), row.length);
        case Content::AccessesOf:
            if (IsInState(row.field.state)) AppendColumn(out, row, column);
            return;
        case Content::PerAccessOf:
            if (IsInState(row.field.state)) kFormat.AppendAmount(out, ImportoPerAccesso(), row.length);
            return;
        case Content::NoAmount:
            return kFormat.AppendAmount(out, Currency{}, row.length);
        case Content::Total:
            // A total that outgrew its field goes on from the digits that the field holds.
            return kFormat.AppendAmount(out, kFormat.ParseAmount(written) + ImportoTotale(), row.length);
    }
}

void ProjectLine::AppendColumn(std::string& out, const Row& row, int column) const {
    switch (row.rule) {
        case FieldRule::Number:
            return kFormat.AppendNumber(out, text::NumberText(rows_.NumberOf(column)), row.length);
        case FieldRule::Date:
            return kFormat.AppendDate(out, DateOfCell(rows_, column), row.length);
        default:
            return kFormat.AppendText(out, rows_.TextOf(column), row.length);
    }
}

Currency ProjectLine::ImportoTotale() const { return Currency::FromDouble(rows_.NumberOf(importoTotale_)); }

Currency ProjectLine::ImportoPerAccesso() const {
    const double total = rows_.NumberOf(importoTotale_);
    const double accesses = rows_.NumberOf(numeroAccessi_);
    return total == 0 || accesses == 0 ? Currency{} : Currency::FromDouble(total / accesses);
}

}  // namespace vlm
