#include "ElementBuilder.h"

#include "SourceText.h"
#include "values/Utf8.h"

namespace vlm {

void ElementBuilder::Add(const RawElement& raw, std::uint64_t line) {
    line_ = line;
    if (format_.needsFiscalCode && raw[ElementColumn::CodiceFiscale].empty()) {
        return NoteFinding(Findings::Kind::NoFiscalCode, ElementColumn::CodiceFiscale, {});
    }
    const std::int32_t patient = Match(raw);
    if (format_.onlyExisting && patient == 0) return;
    elements_.AddNew();
    for (const SourceColumn& column : format_.columns) SetCell(column, raw[column.column]);
    if (format_.comune == ComuneRule::ByName) SetComune();
    elements_.SetWhole(OrdinalOf(ElementColumn::IDPaziente), patient);
    elements_.SetBoolean(OrdinalOf(ElementColumn::Selezionato), patient == 0);
    elements_.Update();
}

std::int32_t ElementBuilder::Match(const RawElement& raw) {
    const std::int32_t patient =
        MatchesByCode(format_) ? context_.archive.FindPatientByCode(raw[ElementColumn::Codice]) : 0;
    return patient != 0 ? patient : context_.archive.FindPatientByFiscalCode(raw[ElementColumn::CodiceFiscale]);
}

void ElementBuilder::SetCell(const SourceColumn& column, std::string_view value) {
    if (column.rule == CellRule::IstatCode) return SetComuneByIstat(value);
    if (IsDate(column.column)) return SetDate(column, value);
    SetText(column, value);
}

void ElementBuilder::SetText(const SourceColumn& column, std::string_view value) {
    switch (column.rule) {
        case CellRule::Words:
            value = changed_ = JoinWords(value);
            break;
        case CellRule::Apostrophes:
            value = changed_ = WithApostrophes(value);
            break;
        case CellRule::ExemptionCode:
            value = changed_ = ExemptionCode(value);
            break;
        case CellRule::TextIfAny:
            if (value.empty()) return;
            break;
        default:
            break;
    }
    elements_.SetText(OrdinalOf(column.column), value);
}

/// A source that has no date leaves the column Null; so does a text that is none, which the user is told.
void ElementBuilder::SetDate(const SourceColumn& column, std::string_view value) {
    if (IsBlankDate(value) || (!format_.emptyDate.empty() && text::EqualNoCase(value, format_.emptyDate))) return;
    std::optional<Date> date;
    switch (column.rule) {
        case CellRule::YmdDate:
            date = ParseSourceDate(DateFromYmd(value));
            break;
        case CellRule::DmyDate:
            date = ParseSourceDate(DateFromDmy(value));
            break;
        case CellRule::LayoutDate:
            date = ParseSourceDate(
                format_.dateLayout.empty() ? value : changed_ = ConvertTemplateDate(value, format_.dateLayout));
            break;
        default:
            date = ParseSourceDate(value);
    }
    if (!date) return NoteFinding(Findings::Kind::NotADate, column.column, value);
    elements_.SetDate(OrdinalOf(column.column), *date);
}

/// The name is looked up as the element keeps it.
void ElementBuilder::SetComune() {
    const std::int64_t id = context_.comuni.FindComuneByName(elements_.TextOf(OrdinalOf(ElementColumn::Comune)));
    elements_.SetWhole(OrdinalOf(ElementColumn::IDComune), id);
    if (id > 0 && format_.postalCodeOfComune) {
        elements_.SetText(OrdinalOf(ElementColumn::CAP), context_.comuni.PostalCodeOf(id));
    }
}

void ElementBuilder::SetComuneByIstat(std::string_view code) {
    const auto comune = context_.comuni.FindComuneByIstat(code);
    if (!comune && !code.empty()) NoteFinding(Findings::Kind::NotAComuneCode, ElementColumn::Comune, code);
    elements_.SetWhole(OrdinalOf(ElementColumn::IDComune), comune ? comune->id : 0);
    if (!comune || comune->id == 0) return;
    elements_.SetText(OrdinalOf(ElementColumn::Comune), comune->name);
    elements_.SetText(OrdinalOf(ElementColumn::CAP), comune->cap);
}

}  // namespace vlm
