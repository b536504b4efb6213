#include "database/MemoryRecordset.h"

#include <algorithm>

#include "values/ColumnConversion.h"
#include "values/Error.h"

namespace vlm::data {

std::unique_ptr<MemoryRecordset> MemoryRecordset::CopyOf(Recordset& source) {
    auto copy = std::make_unique<MemoryRecordset>();
    const int count = source.FieldCount();
    // A statement may give two columns of one name; the first is the one that its name finds.
    for (int ordinal = 0; ordinal < count; ++ordinal) {
        copy->columns_.push_back({std::string(source.FieldName(ordinal)), source.TypeOf(ordinal), true});
    }
    copy->Open();
    copy->Append(source);
    return copy;
}

void MemoryRecordset::Append(Recordset& source) {
    RequireOpen();
    for (; !source.AtEnd(); source.MoveNext()) {
        AddNew();
        for (int ordinal = 0; ordinal < FieldCount(); ++ordinal) {
            if (source.IsNull(ordinal)) continue;
            if (columns_[static_cast<std::size_t>(ordinal)].type == FieldType::Text) {
                SetText(ordinal, source.TextOf(ordinal));
            } else {
                SetValue(ordinal, source.ValueOf(ordinal));
            }
        }
        Update();
    }
    position_ = 0;
}

void MemoryRecordset::AppendColumn(std::string name, FieldType type, bool nullable) {
    if (open_) throw Error("La colonna " + name + " non si può aggiungere: l'insieme di righe è aperto.");
    if (FindField(name) >= 0) throw Error("La colonna " + name + " esiste già.");
    columns_.push_back({std::move(name), type, nullable});
}

void MemoryRecordset::Open() {
    if (open_) throw Error("L'insieme di righe è già aperto.");
    if (columns_.empty()) throw Error("L'insieme di righe non ha colonne.");
    store_ = {};
    for (const Column& column : columns_) store_.AddColumn(column.type);
    texts_.assign(columns_.size(), {});
    position_ = 0;
    open_ = true;
}

void MemoryRecordset::Close() noexcept {
    open_ = false;
    store_.Clear();
    rowCount_ = 0;
    filter_.clear();
    conditions_.clear();
    shown_ = {};
    indexes_.clear();
    editing_ = Editing::None;
    edited_.clear();
}

void MemoryRecordset::AddNew() {
    RequireOpen();
    Update();
    store_.AppendRow();
    editing_ = Editing::Adding;
}

void MemoryRecordset::SetValue(int ordinal, const Value& value) {
    const Column& column = ColumnAt(ordinal);
    if (data::IsNull(value) && !column.nullable) throw Error("La colonna " + column.name + " non può essere vuota.");
    Value converted = ConvertTo(column.type, value, column.name);
    if (editing_ == Editing::Adding) return store_.Set(rowCount_, ordinal, converted);
    if (editing_ == Editing::None) {
        const std::uint32_t row = CurrentRow();
        edited_.clear();
        for (int each = 0; each < FieldCount(); ++each) edited_.push_back(store_.Get(row, each));
        editing_ = Editing::Changing;
    }
    edited_[static_cast<std::size_t>(ordinal)] = std::move(converted);
}

bool MemoryRecordset::AddsTo(int ordinal, FieldType type) const {
    const Column& column = ColumnAt(ordinal);
    if (column.type != type) throw Error("La colonna " + column.name + " è di un altro tipo.");
    return editing_ == Editing::Adding;
}

void MemoryRecordset::SetText(int ordinal, std::string_view value) {
    if (!AddsTo(ordinal, FieldType::Text)) return SetValue(ordinal, std::string(value));
    store_.SetText(rowCount_, ordinal, value);
}

void MemoryRecordset::SetWhole(int ordinal, std::int64_t value) {
    if (!AddsTo(ordinal, FieldType::BigInt)) return SetValue(ordinal, value);
    store_.SetWhole(rowCount_, ordinal, value);
}

void MemoryRecordset::SetBoolean(int ordinal, bool value) {
    if (!AddsTo(ordinal, FieldType::Boolean)) return SetValue(ordinal, value);
    store_.SetBoolean(rowCount_, ordinal, value);
}

void MemoryRecordset::SetDate(int ordinal, Date value) {
    if (!AddsTo(ordinal, FieldType::Date)) return SetValue(ordinal, value);
    store_.SetDate(rowCount_, ordinal, value);
}

void MemoryRecordset::Update() {
    RequireOpen();
    if (editing_ == Editing::None) return;
    RequireCells();
    if (editing_ == Editing::Adding) {
        StoreAdded();
    } else {
        StoreChanged();
    }
}

void MemoryRecordset::RequireCells() const {
    for (int ordinal = 0; ordinal < FieldCount(); ++ordinal) {
        if (!columns_[static_cast<std::size_t>(ordinal)].nullable && IsNull(ordinal)) {
            throw Error("La colonna " + columns_[static_cast<std::size_t>(ordinal)].name + " non può essere vuota.");
        }
    }
}

void MemoryRecordset::CancelUpdate() {
    if (editing_ == Editing::Adding) store_.DropLastRow();
    editing_ = Editing::None;
    edited_.clear();
}

void MemoryRecordset::StoreAdded() {
    const std::uint32_t row = rowCount_++;
    editing_ = Editing::None;
    for (auto& [ordinal, index] : indexes_) index.Add(row);
    position_ = RecordCount();
    if (conditions_.empty()) {
        --position_;
    } else if (Meets(row)) {
        shown_.push_back(row);
    }
}

void MemoryRecordset::StoreChanged() {
    const std::uint32_t row = CurrentRow();
    for (int ordinal = 0; ordinal < FieldCount(); ++ordinal) {
        const Value& changed = edited_[static_cast<std::size_t>(ordinal)];
        if (store_.Get(row, ordinal) == changed) continue;
        indexes_.erase(ordinal);
        store_.Set(row, ordinal, changed);
    }
    CancelUpdate();
}

void MemoryRecordset::SetFilter(std::string_view filter) {
    RequireOpen();
    Update();
    std::vector<RowCondition> conditions = ParseRowFilter(filter, *this);
    filter_ = filter;
    conditions_ = std::move(conditions);
    shown_.clear();
    position_ = 0;
    if (conditions_.empty()) return;
    const RowCondition& first = conditions_.front();
    IndexOver(first.ordinal).ForEach(first.value, [this](std::uint32_t row) {
        if (Meets(row)) shown_.push_back(row);
    });
}

bool MemoryRecordset::MoveTo(int ordinal, std::string_view value) {
    if (ColumnAt(ordinal).type != FieldType::Text)
        throw Error("La colonna " + ColumnAt(ordinal).name + " non ha testi.");
    Update();
    filter_.clear();
    conditions_.clear();
    shown_.clear();
    const std::uint32_t row = IndexOver(ordinal).FirstText(value);
    position_ = std::min(row, rowCount_);
    return row != RowIndex::kNone;
}

bool MemoryRecordset::Meets(std::uint32_t row) const {
    return std::all_of(conditions_.begin(), conditions_.end(), [&](const RowCondition& condition) {
        return CellEquals(store_.Get(row, condition.ordinal), condition.value);
    });
}

RowIndex& MemoryRecordset::IndexOver(int ordinal) {
    const auto found = indexes_.find(ordinal);
    if (found != indexes_.end()) return found->second;
    return indexes_.try_emplace(ordinal, store_, ordinal, TypeOf(ordinal), rowCount_).first->second;
}

bool MemoryRecordset::Repeats(int ordinal) {
    RequireOpen();
    RequireColumn(ordinal);
    return IndexOver(ordinal).Repeats();
}

std::int64_t MemoryRecordset::RecordCount() const {
    return conditions_.empty() ? rowCount_ : static_cast<std::int64_t>(shown_.size());
}

bool MemoryRecordset::AtEnd() const { return !open_ || position_ >= RecordCount(); }

bool MemoryRecordset::HasRow() const { return open_ && position_ >= 0 && position_ < RecordCount(); }

void MemoryRecordset::MoveFirst() {
    RequireOpen();
    Update();
    position_ = 0;
}

void MemoryRecordset::MoveToRow(std::uint32_t row) {
    RequireOpen();
    Update();
    position_ = std::min<std::int64_t>(row, RecordCount());
}

void MemoryRecordset::MoveNext() {
    RequireOpen();
    Update();
    if (AtEnd()) throw Error("Non ci sono altre righe.");
    ++position_;
}

void MemoryRecordset::MovePrevious() {
    RequireOpen();
    Update();
    if (AtStart()) throw Error("Non ci sono righe precedenti.");
    --position_;
}

void MemoryRecordset::RequireOpen() const {
    if (!open_) throw Error("L'insieme di righe non è aperto.");
}

const MemoryRecordset::Column& MemoryRecordset::ColumnAt(int ordinal) const {
    RequireOpen();
    RequireColumn(ordinal);
    return columns_[static_cast<std::size_t>(ordinal)];
}

void MemoryRecordset::RequireColumn(int ordinal) const {
    if (ordinal < 0 || ordinal >= FieldCount()) {
        throw Error("La colonna numero " + std::to_string(ordinal) + " non esiste nelle righe lette.");
    }
}

std::uint32_t MemoryRecordset::CurrentRow() const {
    RequireOpen();
    if (!HasRow()) throw Error("Non c'è una riga corrente.");
    return conditions_.empty() ? static_cast<std::uint32_t>(position_) : shown_[static_cast<std::size_t>(position_)];
}

Value MemoryRecordset::Cell(int ordinal) const {
    RequireColumn(ordinal);
    if (editing_ == Editing::Changing) return edited_[static_cast<std::size_t>(ordinal)];
    return store_.Get(RowInHand(), ordinal);
}

std::string_view MemoryRecordset::FieldName(int ordinal) const {
    RequireColumn(ordinal);
    return columns_[static_cast<std::size_t>(ordinal)].name;
}

FieldType MemoryRecordset::TypeOf(int ordinal) const {
    RequireColumn(ordinal);
    return columns_[static_cast<std::size_t>(ordinal)].type;
}

bool MemoryRecordset::IsNull(int ordinal) const {
    RequireColumn(ordinal);
    if (editing_ == Editing::Changing) return data::IsNull(edited_[static_cast<std::size_t>(ordinal)]);
    return store_.IsNull(RowInHand(), ordinal);
}

std::string_view MemoryRecordset::TextOf(int ordinal) const {
    RequireColumn(ordinal);
    if (columns_[static_cast<std::size_t>(ordinal)].type != FieldType::Text) {
        return texts_[static_cast<std::size_t>(ordinal)] = data::TextOf(Cell(ordinal));
    }
    if (editing_ != Editing::Changing) return store_.TextAt(RowInHand(), ordinal);
    const auto* content = std::get_if<std::string>(&edited_[static_cast<std::size_t>(ordinal)]);
    return content == nullptr ? std::string_view() : *content;
}

double MemoryRecordset::NumberOf(int ordinal) const { return data::NumberOf(Cell(ordinal)); }

std::int64_t MemoryRecordset::IntegerOf(int ordinal) const { return ColumnInteger(Cell(ordinal), FieldName(ordinal)); }

Currency MemoryRecordset::AmountOf(int ordinal) const { return data::AmountOf(Cell(ordinal), FieldName(ordinal)); }

std::optional<Date> MemoryRecordset::DateOf(int ordinal) const {
    return data::DateOf(Cell(ordinal), FieldName(ordinal));
}

}  // namespace vlm::data
