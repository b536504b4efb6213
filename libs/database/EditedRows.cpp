#include "database/EditedRows.h"

#include <utility>

namespace vlm::data {

EditedRows::EditedRows(std::unique_ptr<MemoryRecordset> rows)
    : rows_(std::move(rows)), count_(static_cast<std::size_t>(rows_->RecordCount())) {}

void EditedRows::CancelUpdate() {
    rows_->CancelUpdate();
    adding_ = false;
    changed_.clear();
}

void EditedRows::MoveNext() {
    CancelUpdate();
    rows_->MoveNext();
    ++row_;
}

void EditedRows::AddNew() {
    CancelUpdate();
    rows_->AddNew();
    adding_ = true;
}

void EditedRows::SetValue(int ordinal, const Value& value) {
    rows_->SetValue(Checked(ordinal), value);
    changed_.insert(ordinal);
}

void EditedRows::Update() {
    if (!adding_ && changed_.empty()) return;
    Write(adding_ ? count_ : row_);
    if (adding_) row_ = count_++;
    rows_->Update();
    CancelUpdate();
}

}  // namespace vlm::data
