#include "readers/TemplateFormat.h"

#include <array>

#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"
#include "workbooks/CellReference.h"

namespace vlm {

namespace {

/// What a template may say, in the order in which a row is read. A template never says the postal code.
constexpr std::array<ElementColumn, 15> kTemplateColumns = {
    ElementColumn::Codice,
    ElementColumn::Cognome,
    ElementColumn::Nome,
    ElementColumn::Sesso,
    ElementColumn::DataNascita,
    ElementColumn::CodiceFiscale,
    ElementColumn::DataScelta,
    ElementColumn::Comune,
    ElementColumn::Indirizzo,
    ElementColumn::Scadenza,
    ElementColumn::Sospensione,
    ElementColumn::Telefono,
    ElementColumn::Esenzione,
    ElementColumn::EsenzioneDataInizio,
    ElementColumn::EsenzioneDataScadenza,
};

[[noreturn]] void RefusePosition(ElementColumn column, const std::string& position) {
    throw Error("La posizione '" + position + "' della chiave " + NameOf(column) + " del modello non è valida.");
}

/// A text that is no number reads as 0; a number beyond 32 bits is no place in any source.
int NumberIn(std::string_view value) {
    const double number = text::ParseNumber(value).value_or(0);
    return number >= INT32_MIN && number <= INT32_MAX ? text::ToInt32(number, "") : 0;
}

/// Every column of a template is set, those that are not there to "": a date only when there is one.
template <typename Place>
SourceFormat FormatOf(const ImportTemplate& source, CellRule dates, Place&& place) {
    SourceFormat format;
    for (const ElementColumn column : kTemplateColumns) {
        SourceColumn& added = format.columns.emplace_back();
        added = {column, 0, 0, IsDate(column) ? dates : CellRule::Text};
        const std::string& position = source.GetTemplateValue(NameOf(column));
        if (!position.empty()) place(added, position);
    }
    return format;
}

}  // namespace

SourceFormat DelimitedFormatOf(const ImportTemplate& source) {
    SourceFormat format = FormatOf(source, CellRule::LayoutDate, [](SourceColumn& column, const std::string& position) {
        column.place = std::max(NumberIn(position), 0);
    });
    for (SourceColumn& column : format.columns) {
        if (column.column == ElementColumn::Esenzione) column.rule = CellRule::ExemptionCode;
    }
    format.dateLayout = source.GetTemplateValue("DATEFORMAT");
    format.delimiter = source.GetTemplateValue(kDelimiterKey);
    format.progress = ProgressRule::Characters;
    format.needsFiscalCode = true;
    format.onlyExisting = source.GetTemplateValue("ONLYEXISTING") == "S";
    return format;
}

SourceFormat FixedFormatOf(const ImportTemplate& source) {
    SourceFormat format = FormatOf(source, CellRule::LayoutDate, [](SourceColumn& column, const std::string& position) {
        const std::size_t comma = position.find(',');
        if (comma == std::string::npos) return;
        column.place = NumberIn(std::string_view(position).substr(0, comma));
        column.length = NumberIn(std::string_view(position).substr(comma + 1));
        if (column.place < 1 || column.length < 0) RefusePosition(column.column, position);
    });
    format.dateLayout = source.GetTemplateValue("DATEFORMAT");
    return format;
}

SourceFormat WorkbookFormatOf(const ImportTemplate& source) {
    SourceFormat format = FormatOf(source, CellRule::Date, [](SourceColumn& column, const std::string& position) {
        const auto number = files::ColumnNumber(position);
        if (!number) RefusePosition(column.column, position);
        column.place = static_cast<int>(*number);
    });
    format.sheet = NumberIn(source.GetTemplateValue("SHEET"));
    for (const SourceColumn& column : format.columns) {
        if (column.column == ElementColumn::Cognome) format.presenceColumn = column.place;
    }
    if (format.presenceColumn == 0) throw Error("Nel modello manca la chiave Cognome.");
    return format;
}

}  // namespace vlm
