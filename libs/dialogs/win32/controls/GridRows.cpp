#include "controls/GridRows.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm::ui {

const GridModel::Column& GridRows::ColumnAt(int shown) const {
    const int column = columns_[static_cast<std::size_t>(shown)];
    return model_->Columns()[static_cast<std::size_t>(column)];
}

std::string GridRows::Cell(int place, int shown) const {
    const int row = RowAt(place);
    if (grid_.Model() == nullptr || row < 0 || row >= grid_.RowCount()) return {};
    try {
        return grid_.Model()->Cell(row, columns_[static_cast<std::size_t>(shown)]);
    } catch (const std::exception&) {
        return {};
    }
}

void GridRows::ReadColumns() {
    columns_.clear();
    placeOfFirst_ = 0;
    sortColumn_ = -1;
    if (model_ == nullptr) return;
    const auto count = static_cast<int>(model_->Columns().size());
    for (int i = 0; i < count; ++i) {
        if (model_->Columns()[static_cast<std::size_t>(i)].visible) columns_.push_back(i);
    }
    const auto boxes = std::find_if(columns_.begin(), columns_.end(), [this](int column) {
        return model_->Columns()[static_cast<std::size_t>(column)].checkBox;
    });
    if (boxes == columns_.end()) return;
    placeOfFirst_ = static_cast<int>(boxes - columns_.begin());
    std::rotate(columns_.begin(), boxes, boxes + 1);
}

bool GridRows::Renew(bool checking) {
    const bool otherModel = model_ != grid_.Model();
    const bool sameRows = !otherModel && count_ == grid_.RowCount();
    model_ = grid_.Model();
    count_ = grid_.RowCount();
    if (otherModel) ReadColumns();
    if (!sameRows || (sortColumn_ >= 0 && !checking)) Sort();
    return otherModel;
}

void GridRows::SortNext(int shown) {
    const bool again = shown == sortColumn_;
    sortColumn_ = again && descending_ ? -1 : shown;
    descending_ = again && sortColumn_ >= 0;
    Sort();
}

void GridRows::Sort() {
    if (sortColumn_ < 0) return order_.Clear();
    order_.Sort(*model_, columns_[static_cast<std::size_t>(sortColumn_)], descending_);
}

int GridRows::FindFrom(int start, const std::string& text) const {
    int column = sortColumn_ >= 0 && !ColumnAt(sortColumn_).checkBox ? sortColumn_ : HasBoxes() ? 1 : 0;
    if (column >= static_cast<int>(columns_.size())) return -1;
    const std::string folded = text::FoldCase(text);
    for (int step = 0; step < count_; ++step) {
        const int place = (std::max(0, start) + step) % count_;
        if (text::FoldCase(Cell(place, column)).starts_with(folded)) return place;
    }
    return -1;
}

}  // namespace vlm::ui
