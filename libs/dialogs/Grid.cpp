#include "dialogs/Grid.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <string>

#include "values/DateText.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

using Texts = std::vector<std::string>;

std::optional<double> DayOf(const std::string& cell) {
    const std::optional<Date> date = text::ParseItalianDate(cell);
    return date ? std::optional(date->Serial()) : std::nullopt;
}

std::optional<double> NumberOf(const std::string& cell) { return text::ParseNumber(cell); }

/// A number for each cell, the lowest for an empty one; nothing when some cell is not of this kind.
std::vector<double> Measures(const Texts& cells, std::optional<double> (*measure)(const std::string&)) {
    std::vector<double> measures;
    measures.reserve(cells.size());
    for (const std::string& cell : cells) {
        const auto value = cell.empty() ? -std::numeric_limits<double>::infinity() : measure(cell);
        if (!value) return {};
        measures.push_back(*value);
    }
    return measures;
}

template <class Keys>
void SortBy(const Keys& keys, bool descending, std::vector<int>& rows) {
    std::stable_sort(rows.begin(), rows.end(), [&keys, descending](int left, int right) {
        const auto& first = keys[static_cast<std::size_t>(descending ? right : left)];
        const auto& second = keys[static_cast<std::size_t>(descending ? left : right)];
        return first < second;
    });
}

int Entry(const std::vector<int>& entries, int at) noexcept {
    return at >= 0 && static_cast<std::size_t>(at) < entries.size() ? entries[static_cast<std::size_t>(at)] : at;
}

}  // namespace

void Grid::SetModel(std::shared_ptr<const GridModel> model) {
    model_ = std::move(model);
    current_ = -1;
    ++version_;
    Changed(false);
}

void Grid::Refresh() {
    if (current_ >= RowCount()) current_ = -1;
    ++version_;
    Changed(false);
}

void Grid::SetCurrentRow(int row) {
    if (row < 0 || row >= RowCount()) row = -1;
    if (row == current_) return;
    current_ = row;
    Changed(true);
}

void Grid::Check(int row, int column) {
    const bool there =
        model_ && row >= 0 && row < RowCount() && column >= 0 && column < static_cast<int>(model_->Columns().size());
    if (!there || !model_->Columns()[static_cast<std::size_t>(column)].checkBox) return;
    if (OnCheck) OnCheck(row, column);
}

void RowOrder::Sort(const GridModel& model, int column, bool descending) {
    const auto count = static_cast<std::size_t>(std::max(0, model.RowCount()));
    rows_.resize(count);
    std::iota(rows_.begin(), rows_.end(), 0);
    Texts cells;
    cells.reserve(count);
    for (const int row : rows_) cells.push_back(model.Cell(row, column));
    std::vector<double> measures = Measures(cells, DayOf);
    if (measures.empty()) measures = Measures(cells, NumberOf);
    if (measures.empty()) {
        for (std::string& cell : cells) cell = text::FoldCase(cell);
        SortBy(cells, descending, rows_);
    } else {
        SortBy(measures, descending, rows_);
    }
    places_.resize(count);
    for (std::size_t place = 0; place < count; ++place) {
        places_[static_cast<std::size_t>(rows_[place])] = static_cast<int>(place);
    }
}

int RowOrder::RowAt(int place) const noexcept { return Entry(rows_, place); }

int RowOrder::PlaceOf(int row) const noexcept { return Entry(places_, row); }

}  // namespace vlm::ui
