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
        copy->rows_->columns.push_back({std::string(source.FieldName(ordinal)), source.TypeOf(ordinal), true});
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
            if (rows_->columns[static_cast<std::size_t>(ordinal)].type == FieldType::Text) {
                SetText(ordinal, source.TextOf(ordinal));
            } else {
                SetValue(ordinal, source.ValueOf(ordinal));
            }
        }
        Update();
    }
    position_ = 0;
}

MemoryRecordset::~MemoryRecordset() { CancelUpdate(); }

std::unique_ptr<MemoryRecordset> MemoryRecordset::Share() {
    RequireOpen();
    Update();
    auto view = std::unique_ptr<MemoryRecordset>(new MemoryRecordset(rows_));
    view->texts_.assign(rows_->columns.size(), {});
    view->open_ = true;
    view->List();
    if (HasRow()) view->MoveToNumber(CurrentRow());
    return view;
}

/// Rows that others see stay with them.
void MemoryRecordset::OwnRows() {
    if (rows_.use_count() == 1) return;
    auto own = std::make_shared<Rows>();
    own->columns = rows_->columns;
    rows_ = std::move(own);
}

void MemoryRecordset::AppendColumn(std::string name, FieldType type, bool nullable) {
    if (open_) throw Error("La colonna " + name + " non si può aggiungere: l'insieme di righe è aperto.");
    if (FindField(name) >= 0) throw Error("La colonna " + name + " esiste già.");
    OwnRows();
    rows_->columns.push_back({std::move(name), type, nullable});
}

void MemoryRecordset::Open() {
    if (open_) throw Error("L'insieme di righe è già aperto.");
    if (rows_->columns.empty()) throw Error("L'insieme di righe non ha colonne.");
    OwnRows();
    rows_->store = {};
    for (const Column& column : rows_->columns) rows_->store.AddColumn(column.type);
    texts_.assign(rows_->columns.size(), {});
    position_ = 0;
    open_ = true;
}

void MemoryRecordset::Close() noexcept {
    CancelUpdate();
    open_ = false;
    if (rows_.use_count() == 1) {
        rows_->store.Clear();
        rows_->count = 0;
        rows_->indexes.clear();
        rows_->removed.clear();
    }
    filter_.clear();
    conditions_.clear();
    sort_.clear();
    keys_.clear();
    listed_ = false;
    shown_ = {};
    onRemoved_ = false;
}

void MemoryRecordset::AddNew() {
    BeforeMove();
    if (rows_->adding) throw Error("Un'altra riga è in corso di aggiunta.");
    rows_->store.AppendRow();
    rows_->adding = true;
    editing_ = Editing::Adding;
}

void MemoryRecordset::SetValue(int ordinal, const Value& value) {
    const Column& column = ColumnAt(ordinal);
    if (data::IsNull(value) && !column.nullable) throw Error("La colonna " + column.name + " non può essere vuota.");
    Value converted = ConvertTo(column.type, value, column.name);
    if (editing_ == Editing::Adding) return rows_->store.Set(rows_->count, ordinal, converted);
    if (editing_ == Editing::None) {
        const std::uint32_t row = CurrentRow();
        edited_.clear();
        for (int each = 0; each < FieldCount(); ++each) edited_.push_back(rows_->store.Get(row, each));
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
    rows_->store.SetText(rows_->count, ordinal, value);
}

void MemoryRecordset::SetWhole(int ordinal, std::int64_t value) {
    if (!AddsTo(ordinal, FieldType::BigInt)) return SetValue(ordinal, value);
    rows_->store.SetWhole(rows_->count, ordinal, value);
}

void MemoryRecordset::SetBoolean(int ordinal, bool value) {
    if (!AddsTo(ordinal, FieldType::Boolean)) return SetValue(ordinal, value);
    rows_->store.SetBoolean(rows_->count, ordinal, value);
}

void MemoryRecordset::SetDate(int ordinal, Date value) {
    if (!AddsTo(ordinal, FieldType::Date)) return SetValue(ordinal, value);
    rows_->store.SetDate(rows_->count, ordinal, value);
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
        if (!rows_->columns[static_cast<std::size_t>(ordinal)].nullable && IsNull(ordinal)) {
            throw Error("La colonna " + rows_->columns[static_cast<std::size_t>(ordinal)].name +
                        " non può essere vuota.");
        }
    }
}

void MemoryRecordset::CancelUpdate() noexcept {
    if (editing_ == Editing::Adding) {
        rows_->store.DropLastRow();
        rows_->adding = false;
    }
    editing_ = Editing::None;
    edited_.clear();
}

void MemoryRecordset::StoreAdded() {
    const std::uint32_t row = rows_->count++;
    editing_ = Editing::None;
    rows_->adding = false;
    for (auto& [ordinal, index] : rows_->indexes) index.Add(row);
    position_ = RecordCount();
    if (!listed_) {
        --position_;
    } else if (Meets(row)) {
        shown_.push_back(row);
    }
}

void MemoryRecordset::Delete() {
    if (editing_ == Editing::Adding) return CancelUpdate();
    const std::uint32_t row = CurrentRow();
    CancelUpdate();
    rows_->indexes.clear();  // a row without cells is in none
    for (int ordinal = 0; ordinal < FieldCount(); ++ordinal) rows_->store.SetNull(row, ordinal);
    rows_->removed.insert(row);
    const std::int64_t place = position_;
    if (listed_) {
        shown_.erase(shown_.begin() + static_cast<std::ptrdiff_t>(place));
    } else {
        List();
    }
    removed_ = rows_->removed.size();
    position_ = place;
    onRemoved_ = true;
}

Value MemoryRecordset::StoredValueOf(int ordinal) const {
    RequireColumn(ordinal);
    return editing_ == Editing::Adding ? Value() : rows_->store.Get(CurrentRow(), ordinal);
}

bool MemoryRecordset::IsNullable(int ordinal) const {
    RequireColumn(ordinal);
    return rows_->columns[static_cast<std::size_t>(ordinal)].nullable;
}

void MemoryRecordset::StoreChanged() {
    const std::uint32_t row = CurrentRow();
    for (int ordinal = 0; ordinal < FieldCount(); ++ordinal) {
        const Value& changed = edited_[static_cast<std::size_t>(ordinal)];
        if (rows_->store.Get(row, ordinal) == changed) continue;
        rows_->indexes.erase(ordinal);
        rows_->store.Set(row, ordinal, changed);
    }
    CancelUpdate();
}

void MemoryRecordset::SetFilter(std::string_view filter) {
    BeforeMove();
    std::vector<RowCondition> conditions = ParseRowFilter(filter, *this);
    filter_ = filter;
    conditions_ = std::move(conditions);
    List();
}

void MemoryRecordset::SetSort(std::string_view sort) {
    BeforeMove();
    std::vector<SortKey> keys = ParseSortKeys(sort, *this);
    sort_ = sort;
    keys_ = std::move(keys);
    List();
}

void MemoryRecordset::List() {
    shown_.clear();
    position_ = 0;
    onRemoved_ = false;
    removed_ = rows_->removed.size();
    listed_ = !conditions_.empty() || !keys_.empty() || removed_ != 0;
    if (!listed_) return;
    const auto take = [this](std::uint32_t row) {
        if (Meets(row) && !rows_->removed.contains(row)) shown_.push_back(row);
    };
    if (!conditions_.empty() && conditions_.front().comparison == Comparison::Equal) {
        IndexOver(conditions_.front().ordinal).ForEach(conditions_.front().value, take);
    } else {
        for (std::uint32_t row = 0; row < rows_->count; ++row) take(row);
    }
    if (!keys_.empty()) SortShown();
}

/// Each cell is read once.
void MemoryRecordset::SortShown() {
    struct Sorted {
        std::uint32_t row;
        std::vector<Value> cells;
    };
    std::vector<Sorted> sorted;
    sorted.reserve(shown_.size());
    for (const std::uint32_t row : shown_) {
        std::vector<Value>& cells = sorted.emplace_back(Sorted{row, {}}).cells;
        cells.reserve(keys_.size());
        for (const SortKey& key : keys_) cells.push_back(rows_->store.Get(row, key.ordinal));
    }
    std::stable_sort(sorted.begin(), sorted.end(), [this](const Sorted& left, const Sorted& right) {
        for (std::size_t at = 0; at < keys_.size(); ++at) {
            const int order = Compare(left.cells[at], right.cells[at]);
            if (order != 0) return keys_[at].descending ? order > 0 : order < 0;
        }
        return false;
    });
    std::transform(sorted.begin(), sorted.end(), shown_.begin(), [](const Sorted& each) { return each.row; });
}

void MemoryRecordset::BeforeMove() {
    RequireOpen();
    Update();
    if (removed_ == rows_->removed.size()) return;
    // The row in hand, or the first one behind it that is still there.
    const bool hole = onRemoved_, wasListed = listed_;
    const std::int64_t place = position_, count = RecordCount();
    const std::vector<std::uint32_t> before = std::move(shown_);
    List();
    position_ = place < 0 ? -1 : RecordCount();
    onRemoved_ = place >= 0 && (hole || place < count);
    for (std::int64_t at = std::max<std::int64_t>(place, 0); place >= 0 && at < count; ++at) {
        const auto row = wasListed ? before[static_cast<std::size_t>(at)] : static_cast<std::uint32_t>(at);
        const auto found = std::find(shown_.begin(), shown_.end(), row);
        if (found == shown_.end()) continue;
        position_ = found - shown_.begin();
        onRemoved_ = hole || at != place;
        return;
    }
}

bool MemoryRecordset::MoveTo(int ordinal, std::string_view value) {
    if (ColumnAt(ordinal).type != FieldType::Text)
        throw Error("La colonna " + ColumnAt(ordinal).name + " non ha testi.");
    Update();
    filter_.clear();
    conditions_.clear();
    sort_.clear();
    keys_.clear();
    if (listed_) List();
    const std::uint32_t row = IndexOver(ordinal).FirstText(value);
    if (row != RowIndex::kNone && MoveToNumber(row)) return true;
    position_ = RecordCount();
    return false;
}

bool MemoryRecordset::MoveToNumber(std::uint32_t number) {
    BeforeMove();
    if (listed_) {
        const auto found = std::find(shown_.begin(), shown_.end(), number);
        if (found == shown_.end()) return false;
        position_ = found - shown_.begin();
    } else if (number < rows_->count) {
        position_ = number;
    } else {
        return false;
    }
    onRemoved_ = false;
    return true;
}

bool MemoryRecordset::Meets(std::uint32_t row) const {
    return std::all_of(conditions_.begin(), conditions_.end(), [&](const RowCondition& condition) {
        return condition.IsMetBy(rows_->store.Get(row, condition.ordinal));
    });
}

RowIndex& MemoryRecordset::IndexOver(int ordinal) {
    const auto found = rows_->indexes.find(ordinal);
    if (found != rows_->indexes.end()) return found->second;
    return rows_->indexes.try_emplace(ordinal, rows_->store, ordinal, TypeOf(ordinal), rows_->count).first->second;
}

bool MemoryRecordset::Repeats(int ordinal) {
    RequireOpen();
    RequireColumn(ordinal);
    return IndexOver(ordinal).Repeats();
}

std::int64_t MemoryRecordset::RecordCount() const {
    return listed_ ? static_cast<std::int64_t>(shown_.size()) : rows_->count;
}

bool MemoryRecordset::AtEnd() const { return !open_ || (position_ >= RecordCount() && !onRemoved_); }

bool MemoryRecordset::HasRow() const { return open_ && !onRemoved_ && position_ >= 0 && position_ < RecordCount(); }

void MemoryRecordset::MoveFirst() { MoveToRow(0); }

void MemoryRecordset::MoveToRow(std::int64_t place) {
    BeforeMove();
    onRemoved_ = false;
    position_ = std::clamp<std::int64_t>(place, -1, RecordCount());
}

void MemoryRecordset::MoveNext() {
    BeforeMove();
    if (AtEnd()) throw Error("Non ci sono altre righe.");
    if (!onRemoved_) ++position_;
    onRemoved_ = false;
}

void MemoryRecordset::MovePrevious() {
    BeforeMove();
    if (AtStart()) throw Error("Non ci sono righe precedenti.");
    --position_;
    onRemoved_ = false;
}

void MemoryRecordset::RequireOpen() const {
    if (!open_) throw Error("L'insieme di righe non è aperto.");
}

const MemoryRecordset::Column& MemoryRecordset::ColumnAt(int ordinal) const {
    RequireOpen();
    RequireColumn(ordinal);
    return rows_->columns[static_cast<std::size_t>(ordinal)];
}

void MemoryRecordset::RequireColumn(int ordinal) const {
    if (ordinal < 0 || ordinal >= FieldCount()) {
        throw Error("La colonna numero " + std::to_string(ordinal) + " non esiste nelle righe lette.");
    }
}

std::uint32_t MemoryRecordset::CurrentRow() const {
    RequireOpen();
    if (!HasRow()) throw Error("Non c'è una riga corrente.");
    return listed_ ? shown_[static_cast<std::size_t>(position_)] : static_cast<std::uint32_t>(position_);
}

Value MemoryRecordset::Cell(int ordinal) const {
    RequireColumn(ordinal);
    if (editing_ == Editing::Changing) return edited_[static_cast<std::size_t>(ordinal)];
    return rows_->store.Get(RowInHand(), ordinal);
}

std::string_view MemoryRecordset::FieldName(int ordinal) const {
    RequireColumn(ordinal);
    return rows_->columns[static_cast<std::size_t>(ordinal)].name;
}

FieldType MemoryRecordset::TypeOf(int ordinal) const {
    RequireColumn(ordinal);
    return rows_->columns[static_cast<std::size_t>(ordinal)].type;
}

bool MemoryRecordset::IsNull(int ordinal) const {
    RequireColumn(ordinal);
    if (editing_ == Editing::Changing) return data::IsNull(edited_[static_cast<std::size_t>(ordinal)]);
    return rows_->store.IsNull(RowInHand(), ordinal);
}

std::string_view MemoryRecordset::TextOf(int ordinal) const {
    RequireColumn(ordinal);
    if (rows_->columns[static_cast<std::size_t>(ordinal)].type != FieldType::Text) {
        return texts_[static_cast<std::size_t>(ordinal)] = data::TextOf(Cell(ordinal));
    }
    if (editing_ != Editing::Changing) return rows_->store.TextAt(RowInHand(), ordinal);
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
