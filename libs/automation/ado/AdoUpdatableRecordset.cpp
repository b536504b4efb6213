#include "AdoUpdatableRecordset.h"

#include "values/ColumnConversion.h"

namespace vlm::data::ado {

/// A row set of a host's writes what is pending when it moves, and does not close before.
void AdoUpdatableRecordset::CancelUpdate() {
    if (editing_) rows_.Call("CancelUpdate");
    editing_ = false;
}

void AdoUpdatableRecordset::MoveNext() {
    CancelUpdate();
    read_.MoveNext();
}

void AdoUpdatableRecordset::Close() noexcept {
    try {
        if (!read_.IsOpen()) return;
        CancelUpdate();
        rows_.Call("Close");
    } catch (...) {  // a row set that cannot be closed is let go
    }
}

void AdoUpdatableRecordset::AddNew() {
    CancelUpdate();
    rows_.Call("AddNew");
    editing_ = true;
}

void AdoUpdatableRecordset::SetValue(int ordinal, const Value& value) {
    const FieldType type = TypeOf(ordinal);
    com::Variant given = com::FromValue(ConvertTo(type, value, FieldName(ordinal)), type);
    com::LateBound(rows_.ObjectOf("Fields").Item(com::Variant(ordinal)).Object()).Put("Value", std::move(given));
    editing_ = true;
}

void AdoUpdatableRecordset::Update() {
    if (!editing_) return;
    rows_.Call("Update");
    editing_ = false;
}

}  // namespace vlm::data::ado
