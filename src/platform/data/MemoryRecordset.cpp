#include "platform/data/MemoryRecordset.h"

#include <algorithm>

#include "platform/Error.h"
#include "platform/data/ColumnConversion.h"

namespace vlm::data {

MemoryRecordset::MemoryRecordset() = default;
MemoryRecordset::~MemoryRecordset() = default;

std::unique_ptr<MemoryRecordset> MemoryRecordset::CopyOf(Recordset& source) {
    auto copy = std::make_unique<MemoryRecordset>();
    const int count = source.FieldCount();
    // A statement may give two columns of one name; the first is the one that its name finds.
    for (int ordinal = 0; ordinal < count; ++ordinal) {
        copy->columns_.push_back({std::string(source.FieldName(ordinal)), source.TypeOf(ordinal), true});
    }
    copy->Open();
    for (; !source.AtEnd(); source.MoveNext()) {
        std::vector<Value> cells;
        cells.reserve(static_cast<std::size_t>(count));
        for (int ordinal = 0; ordinal < count; ++ordinal) cells.push_back(source.ValueOf(ordinal));
        copy->AppendRow(std::move(cells));
    }
    return copy;
}

void MemoryRecordset::AppendColumn(std::string name, FieldType type, bool nullable) {
    if (open_) throw Error("La colonna " + name + " non si può aggiungere: l'insieme di righe è aperto.");
    if (FindField(name) >= 0) throw Error("La colonna " + name + " esiste già.");
    columns_.push_back({std::move(name), type, nullable});
}

void MemoryRecordset::Open() {
    if (open_) throw Error("L'insieme di righe è già aperto.");
    if (columns_.empty()) throw Error("L'insieme di righe non ha colonne.");
    texts_.assign(columns_.size(), {});
    position_ = 0;
    open_ = true;
}

void MemoryRecordset::Close() noexcept {
    open_ = false;
    cells_ = {};
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
    edited_.assign(columns_.size(), Value());
    editing_ = Editing::Adding;
}

void MemoryRecordset::SetValue(int ordinal, const Value& value) {
    RequireOpen();
    RequireColumn(ordinal);
    const Column& column = columns_[static_cast<std::size_t>(ordinal)];
    if (data::IsNull(value) && !column.nullable) throw Error("La colonna " + column.name + " non può essere vuota.");
    Value converted = ConvertTo(column.type, value, column.name);
    if (editing_ == Editing::None) {
        const std::uint32_t row = CurrentRow();
        edited_.clear();
        for (int each = 0; each < FieldCount(); ++each) edited_.push_back(StoredCell(row, each));
        editing_ = Editing::Changing;
    }
    edited_[static_cast<std::size_t>(ordinal)] = std::move(converted);
}

void MemoryRecordset::Update() {
    RequireOpen();
    if (editing_ == Editing::None) return;
    for (std::size_t ordinal = 0; ordinal < columns_.size(); ++ordinal) {
        if (!columns_[ordinal].nullable && data::IsNull(edited_[ordinal])) {
            throw Error("La colonna " + columns_[ordinal].name + " non può essere vuota.");
        }
    }
    if (editing_ == Editing::Adding) {
        StoreAdded();
    } else {
        StoreChanged();
    }
}

void MemoryRecordset::CancelUpdate() {
    editing_ = Editing::None;
    edited_.clear();
}

void MemoryRecordset::StoreAdded() {
    AppendRow(std::move(edited_));
    CancelUpdate();
    position_ = RecordCount();
    const std::uint32_t row = rowCount_ - 1;
    if (conditions_.empty()) {
        --position_;
    } else if (Meets(row)) {
        shown_.push_back(row);
    }
}

void MemoryRecordset::StoreChanged() {
    const std::size_t start = std::size_t{CurrentRow()} * columns_.size();
    for (std::size_t ordinal = 0; ordinal < columns_.size(); ++ordinal) {
        Value& stored = cells_[start + ordinal];
        if (stored == edited_[ordinal]) continue;
        indexes_.erase(static_cast<int>(ordinal));
        stored = std::move(edited_[ordinal]);
    }
    CancelUpdate();
}

void MemoryRecordset::AppendRow(std::vector<Value> cells) {
    if (rowCount_ == RowIndex::kNone) throw OverflowError("L'insieme di righe è pieno.");
    for (auto& [ordinal, index] : indexes_) index.Add(rowCount_, HashCell(cells[static_cast<std::size_t>(ordinal)]));
    std::move(cells.begin(), cells.end(), std::back_inserter(cells_));
    ++rowCount_;
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
    const RowIndex& index = IndexOver(first.ordinal);
    for (std::uint32_t row = index.First(HashCell(first.value)); row != RowIndex::kNone; row = index.Next(row)) {
        if (Meets(row)) shown_.push_back(row);
    }
}

bool MemoryRecordset::Meets(std::uint32_t row) const {
    return std::all_of(conditions_.begin(), conditions_.end(), [&](const RowCondition& condition) {
        return CellEquals(StoredCell(row, condition.ordinal), condition.value);
    });
}

const RowIndex& MemoryRecordset::IndexOver(int ordinal) {
    const auto found = indexes_.find(ordinal);
    if (found != indexes_.end()) return found->second;
    RowIndex index;
    for (std::uint32_t row = 0; row < rowCount_; ++row) index.Add(row, HashCell(StoredCell(row, ordinal)));
    return indexes_.emplace(ordinal, std::move(index)).first->second;
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

const Value& MemoryRecordset::StoredCell(std::uint32_t row, int ordinal) const {
    return cells_[std::size_t{row} * columns_.size() + static_cast<std::size_t>(ordinal)];
}

const Value& MemoryRecordset::Cell(int ordinal) const {
    RequireColumn(ordinal);
    if (editing_ != Editing::None) return edited_[static_cast<std::size_t>(ordinal)];
    return StoredCell(CurrentRow(), ordinal);
}

std::string_view MemoryRecordset::FieldName(int ordinal) const {
    RequireColumn(ordinal);
    return columns_[static_cast<std::size_t>(ordinal)].name;
}

FieldType MemoryRecordset::TypeOf(int ordinal) const {
    RequireColumn(ordinal);
    return columns_[static_cast<std::size_t>(ordinal)].type;
}

bool MemoryRecordset::IsNull(int ordinal) const { return data::IsNull(Cell(ordinal)); }

std::string_view MemoryRecordset::TextOf(int ordinal) const {
    const Value& cell = Cell(ordinal);
    if (const auto* content = std::get_if<std::string>(&cell)) return *content;
    return texts_[static_cast<std::size_t>(ordinal)] = data::TextOf(cell);
}

double MemoryRecordset::NumberOf(int ordinal) const { return data::NumberOf(Cell(ordinal)); }

std::int64_t MemoryRecordset::IntegerOf(int ordinal) const { return ColumnInteger(Cell(ordinal), FieldName(ordinal)); }

Currency MemoryRecordset::AmountOf(int ordinal) const { return data::AmountOf(Cell(ordinal), FieldName(ordinal)); }

std::optional<Date> MemoryRecordset::DateOf(int ordinal) const {
    return data::DateOf(Cell(ordinal), FieldName(ordinal));
}

}  // namespace vlm::data
