#include "ImportGrids.h"

#include <algorithm>
#include <numeric>

#include "values/Utf8.h"

namespace vlm {

namespace {

using ShownColumns = std::vector<ElementGridModel::ShownColumn>;

/// What they all show first, up to the fiscal code, then `rest`.
ShownColumns PersonThen(ShownColumns rest) {
    ShownColumns columns = {
        {ElementColumn::Selezionato, "Importa", 60},
        {ElementColumn::Codice, "Codice paziente", 110},
        {ElementColumn::Cognome, "Cognome", 130},
        {ElementColumn::Nome, "Nome", 130},
        {ElementColumn::DataNascita, "Data nascita", 90},
        {ElementColumn::Sesso, "Sesso", 50},
        {ElementColumn::CodiceFiscale, "Codice fiscale", 150},
    };
    columns.insert(columns.end(), rest.begin(), rest.end());
    return columns;
}

const ShownColumns kPatientColumns = PersonThen({
    {ElementColumn::DataScelta, "Data scelta", 90},
    {ElementColumn::Comune, "Comune di residenza", 150},
    {ElementColumn::Indirizzo, "Indirizzo", 180},
    {ElementColumn::IDComune, "IDComune", 80, false},
    {ElementColumn::IDPaziente, "IDPaziente", 80, false},
    {ElementColumn::Scadenza, "Scadenza", 90},
    {ElementColumn::Sospensione, "Sospensione", 90},
    {ElementColumn::Telefono, "Telefono", 100},
});

const ShownColumns kExemptionColumns = PersonThen({
    {ElementColumn::Esenzione, "Esenzione", 80},
    {ElementColumn::IDPaziente, "IDPaziente", 80, false},
    {ElementColumn::EsenzioneDataInizio, "Data inizio", 90},
    {ElementColumn::EsenzioneDataScadenza, "Data scadenza", 90},
});

const ShownColumns kRevocableColumns = PersonThen({
    {ElementColumn::DataScelta, "Data scelta", 90},
    {ElementColumn::IDPaziente, "IDPaziente", 80, false},
});

std::string CellText(const ui::GridModel& model, int row, std::size_t column) {
    std::string cell = model.Cell(row, static_cast<int>(column));
    if (model.Columns()[column].checkBox) return cell == "1" ? "x" : "";
    return cell;
}

/// The visible columns and how many characters each needs.
struct Layout {
    std::vector<std::size_t> columns;
    std::vector<std::size_t> widths;
};

Layout LayoutOf(const ui::GridModel& model) {
    Layout layout;
    for (std::size_t column = 0; column < model.Columns().size(); ++column) {
        if (!model.Columns()[column].visible) continue;
        std::size_t width = text::Length(model.Columns()[column].title);
        for (int row = 0; row < model.RowCount(); ++row) {
            width = std::max(width, text::Length(CellText(model, row, column)));
        }
        layout.columns.push_back(column);
        layout.widths.push_back(width);
    }
    return layout;
}

template <typename TextOf>
std::string LineOf(const Layout& layout, TextOf&& textOf) {
    std::string line;
    for (std::size_t at = 0; at < layout.columns.size(); ++at) {
        const std::string cell = textOf(layout.columns[at]);
        line += cell + std::string(layout.widths[at] - text::Length(cell) + 2, ' ');
    }
    return std::string(text::TrimRight(line));
}

}  // namespace

ElementGridModel::ElementGridModel(const std::vector<ShownColumn>& columns, ElementListPtr elements)
    : elements_(std::move(elements)), patientOrdinal_(elements_->Ordinal(NameOf(ElementColumn::IDPaziente))) {
    for (const ShownColumn& shown : columns) {
        Column& column = columns_.emplace_back();
        column.name = NameOf(shown.column);
        column.title = shown.title;
        column.width = shown.width;
        column.visible = shown.visible;
        column.checkBox = shown.column == ElementColumn::Selezionato;
        sources_.push_back(elements_->Ordinal(column.name));
    }
    const int selectedOrdinal = elements_->Ordinal(NameOf(ElementColumn::Selezionato));
    elements_->SetFilter("");
    selected_.reserve(static_cast<std::size_t>(elements_->RecordCount()));
    for (; !elements_->AtEnd(); elements_->MoveNext()) {
        selected_.push_back(elements_->NumberOf(selectedOrdinal) != 0);
        known_.push_back(elements_->IntegerOf(patientOrdinal_) != 0);
    }
    ShowOnlyNew(false);
}

void ElementGridModel::ShowOnlyNew(bool onlyNew) {
    shown_.resize(selected_.size());
    std::iota(shown_.begin(), shown_.end(), 0U);
    if (!onlyNew) return;
    std::erase_if(shown_, [this](std::uint32_t element) { return known_[element]; });
}

void ElementGridModel::SetPatient(std::uint32_t element, std::int64_t patient) {
    ElementList& list = At(element);
    list.SetWhole(patientOrdinal_, patient);
    list.Update();
    known_[element] = patient != 0;
}

int ElementGridModel::RowOf(std::uint32_t element) const {
    const auto found = std::lower_bound(shown_.begin(), shown_.end(), element);
    return found != shown_.end() && *found == element ? static_cast<int>(found - shown_.begin()) : -1;
}

std::size_t ElementGridModel::CountSelected() const {
    return static_cast<std::size_t>(std::count(selected_.begin(), selected_.end(), true));
}

std::size_t ElementGridModel::CountShownSelected() const {
    return static_cast<std::size_t>(
        std::count_if(shown_.begin(), shown_.end(), [this](std::uint32_t element) { return selected_[element]; }));
}

ElementList& ElementGridModel::At(std::uint32_t element) const {
    elements_->MoveToRow(element);
    return *elements_;
}

std::string ElementGridModel::Cell(int row, int column) const {
    const std::uint32_t element = ElementAt(row);
    const auto at = static_cast<std::size_t>(column);
    if (columns_.at(at).checkBox) return selected_[element] ? "1" : "0";
    return std::string(At(element).TextOf(sources_.at(at)));
}

std::shared_ptr<ElementGridModel> PatientGrid(ElementListPtr elements) {
    return std::make_shared<ElementGridModel>(kPatientColumns, std::move(elements));
}

std::shared_ptr<ElementGridModel> ExemptionGrid(ElementListPtr elements) {
    return std::make_shared<ElementGridModel>(kExemptionColumns, std::move(elements));
}

RevocableGridModel::RevocableGridModel(ElementListPtr patients)
    : ElementGridModel(kRevocableColumns, std::move(patients)), revoked_(ElementCount(), false) {
    columns_[1].name = "CodicePaziente";
    columns_.push_back({"Revocato", "Revocato", 70});
}

std::int32_t RevocableGridModel::PatientAt(int row) const {
    const ElementList& patients = At(ElementAt(row));
    return patients.Int32Of(patients.Ordinal(NameOf(ElementColumn::IDPaziente)));
}

std::string RevocableGridModel::TextAt(int row, ElementColumn column) const {
    const ElementList& patients = At(ElementAt(row));
    return std::string(patients.TextOf(patients.Ordinal(NameOf(column))));
}

std::string RevocableGridModel::Cell(int row, int column) const {
    if (column + 1 < static_cast<int>(columns_.size())) return ElementGridModel::Cell(row, column);
    return IsRevoked(row) ? "Si" : "";
}

std::vector<std::string> PrintedTable(const ui::GridModel& model) {
    const Layout layout = LayoutOf(model);
    std::vector<std::string> lines;
    lines.push_back(LineOf(layout, [&](std::size_t column) { return model.Columns()[column].title; }));
    for (int row = 0; row < model.RowCount(); ++row) {
        lines.push_back(LineOf(layout, [&](std::size_t column) { return CellText(model, row, column); }));
    }
    return lines;
}

}  // namespace vlm
