#include "AdoRecordset.h"

#include "ado/AdoTypes.h"
#include "automation/ErrorReport.h"
#include "values/ColumnConversion.h"
#include "values/Error.h"

namespace vlm::data::ado {

namespace {

/// A block of the widest view stays below a megabyte.
constexpr std::int32_t kBlockRows = 500;

bool IsOpenObject(const com::LateBound& rows) {
    return (static_cast<std::int32_t>(NumberOf(rows.Get("State").Value())) & kStateOpen) != 0;
}

}  // namespace

com::LateBound AdoRecordset::FirstOpen(com::LateBound rows) {
    while (rows && !IsOpenObject(rows)) {
        rows = rows.Has("NextRecordset") ? com::LateBound(rows.Call("NextRecordset").Object()) : com::LateBound();
    }
    return rows;
}

AdoRecordset::AdoRecordset(com::LateBound rows) : rows_(std::move(rows)) {
    Bind();
    Begin();
}

void AdoRecordset::Bind() {
    columns_.clear();
    fields_ = rows_.ObjectOf("Fields");
    const auto count = static_cast<std::int32_t>(data::NumberOf(fields_.Get("Count").Value()));
    for (std::int32_t i = 0; i < count; ++i) {
        const com::LateBound field(fields_.Item(com::Variant(i)).Object());
        const auto type = static_cast<std::int32_t>(data::NumberOf(field.Get("Type").Value()));
        columns_.push_back({field.Get("Name").Text(), FieldTypeOf(type)});
    }
    inBlocks_ = rows_.Has("GetRows");
}

void AdoRecordset::Begin() {
    fetched_.assign(columns_.size(), com::Variant());
    isFetched_.assign(columns_.size(), false);
    atEnd_ = data::NumberOf(rows_.Get("EOF").Value()) != 0;
    if (atEnd_ || !inBlocks_) return;
    try {
        FetchBlock();
    } catch (const Error& error) {  // a member that is there by name only
        if (error.Number() != E_NOTIMPL && error.Number() != com::ResultOf(kNotSupported)) throw;
        inBlocks_ = false;
    }
}

void AdoRecordset::DropBlock() noexcept {
    cells_ = nullptr;
    rowsInBlock_ = 0;
    row_ = 0;
    block_ = com::Variant();
}

void AdoRecordset::FetchBlock() {
    DropBlock();
    block_ = rows_.Call("GetRows", {com::Variant(kBlockRows)});
    VARIANT place;
    const VARIANT& block = com::Resolve(block_.Get(), place);
    SAFEARRAY* const array = (block.vt & VT_ARRAY) != 0 ? block.parray : nullptr;
    VARTYPE type = VT_EMPTY;
    if (SafeArrayGetDim(array) != 2 || FAILED(SafeArrayGetVartype(array, &type)) || type != VT_VARIANT ||
        array->rgsabound[1].cElements != columns_.size()) {
        throw Error("GetRows non ha dato un blocco di righe.");
    }
    cells_ = static_cast<const VARIANT*>(array->pvData);  // ours, and whole, for as long as block_ holds it
    rowsInBlock_ = array->rgsabound[0].cElements;
    atEnd_ = rowsInBlock_ == 0;
}

void AdoRecordset::MoveNext() {
    if (atEnd_) throw Error("Non c'è una riga corrente.", kNoCurrentRow);
    if (inBlocks_) {
        if (++row_ < rowsInBlock_) return;
        atEnd_ = data::NumberOf(rows_.Get("EOF").Value()) != 0;
        if (!atEnd_) FetchBlock();
        return;
    }
    rows_.Call("MoveNext");
    isFetched_.assign(columns_.size(), false);
    atEnd_ = data::NumberOf(rows_.Get("EOF").Value()) != 0;
}

const VARIANT& AdoRecordset::Cell(int ordinal) const {
    const auto at = static_cast<std::size_t>(ordinal);
    if (ordinal < 0 || at >= columns_.size()) throw Error("La colonna richiesta non esiste.", kItemNotFound);
    if (atEnd_) throw Error("Non c'è una riga corrente.", kNoCurrentRow);
    if (inBlocks_) return cells_[row_ * columns_.size() + at];
    if (!isFetched_[at]) {
        fetched_[at] = com::LateBound(fields_.Item(com::Variant(ordinal)).Object()).Get("Value");
        isFetched_[at] = true;
    }
    return fetched_[at].Get();
}

std::string_view AdoRecordset::FieldName(int ordinal) const {
    return columns_.at(static_cast<std::size_t>(ordinal)).name;
}

FieldType AdoRecordset::TypeOf(int ordinal) const { return columns_.at(static_cast<std::size_t>(ordinal)).type; }

bool AdoRecordset::NextRecordset() {
    if (!rows_) return false;
    DropBlock();
    atEnd_ = true;
    com::LateBound next;
    if (rows_.Has("NextRecordset")) next = com::LateBound(rows_.Call("NextRecordset").Object());
    next = FirstOpen(std::move(next));
    if (!next) return false;
    rows_ = std::move(next);
    Bind();
    Begin();
    return true;
}

void AdoRecordset::Close() noexcept {
    DropBlock();
    atEnd_ = true;
    fields_ = {};
    try {
        if (rows_ && IsOpenObject(rows_)) rows_.Call("Close");
    } catch (...) {  // a row set that cannot be closed is let go
    }
    rows_ = {};
}

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
