#include "ElementGridModel.h"

#include <algorithm>
#include <numeric>

namespace vlm {

ElementGridModel::ElementGridModel(const std::vector<ShownColumn>& columns, ElementListPtr elements)
    : elements_(std::move(elements)) {
    for (const ShownColumn& shown : columns) {
        Column& column = columns_.emplace_back();
        column.name = NameOf(shown.column);
        column.title = shown.title;
        column.width = shown.width;
        column.visible = shown.visible;
        column.checkBox = shown.column == ElementColumn::Selezionato;
        sources_.push_back(shown.column);
    }
    elements_->SetFilter("");
    selected_.reserve(static_cast<std::size_t>(elements_->RecordCount()));
    for (; !elements_->AtEnd(); elements_->MoveNext()) {
        selected_.push_back(elements_->NumberOf(OrdinalOf(ElementColumn::Selezionato)) != 0);
        known_.push_back(elements_->IntegerOf(OrdinalOf(ElementColumn::IDPaziente)) != 0);
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
    list.SetWhole(OrdinalOf(ElementColumn::IDPaziente), patient);
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
    const ElementColumn source = sources_.at(static_cast<std::size_t>(column));
    if (source == ElementColumn::Selezionato) return selected_[element] ? "1" : "0";
    return std::string(At(element).TextOf(OrdinalOf(source)));
}

}  // namespace vlm
