#include "database/RowStore.h"

#include <algorithm>

#include "values/Error.h"

namespace vlm::data {

namespace {

constexpr std::uint32_t kFull = 0xFFFFF000;
constexpr std::uint32_t kFirstRows = 16;  // many row sets have one row

}  // namespace

unsigned RowStore::WidthOf(FieldType type) noexcept {
    switch (type) {
        case FieldType::Boolean:
            return 1;
        case FieldType::SmallInt:
        case FieldType::Integer:
        case FieldType::Text:
            return sizeof(std::uint32_t);
        default:
            return sizeof(std::int64_t);
    }
}

void RowStore::AppendRow() {
    if (rowCount_ == capacity_) Grow();
    ++rowCount_;
}

void RowStore::Grow() {
    if (capacity_ == kFull) throw OverflowError("L'insieme di righe è pieno.");
    const std::uint32_t first = std::min(std::max(kFirstRows, capacity_ * 2), kChunkRows);
    const std::uint32_t capacity = capacity_ < kChunkRows ? first : capacity_ + kChunkRows;
    for (Column& column : columns_) {
        // A growth that ran out of memory half way is taken up again.
        if (column.chunks.size() <= capacity_ / kChunkRows) column.chunks.emplace_back();
        column.chunks.back().resize(std::size_t{std::min(capacity, kChunkRows)} * column.width);
        column.present.resize((std::size_t{capacity} + 63) / 64);
    }
    capacity_ = capacity;
}

void RowStore::DropLastRow() {
    --rowCount_;
    for (int ordinal = 0; ordinal < static_cast<int>(columns_.size()); ++ordinal) SetNull(rowCount_, ordinal);
}

void RowStore::Clear() noexcept {
    for (Column& column : columns_) {
        column.chunks = {};
        column.present = {};
    }
    texts_.Clear();
    rowCount_ = 0;
    capacity_ = 0;
}

void RowStore::SetNull(std::uint32_t row, int ordinal) noexcept {
    columns_[static_cast<std::size_t>(ordinal)].present[row >> 6] &= ~(std::uint64_t{1} << (row & 63));
}

std::int64_t RowStore::WholeAt(std::uint32_t row, int ordinal) const noexcept {
    if (IsNull(row, ordinal)) return 0;
    const bool narrow = At(ordinal).width == sizeof(std::int32_t);
    return narrow ? Load<std::int32_t>(row, ordinal) : Load<std::int64_t>(row, ordinal);
}

void RowStore::SetWhole(std::uint32_t row, int ordinal, std::int64_t value) noexcept {
    if (At(ordinal).width == sizeof(std::int32_t)) {
        Store(row, ordinal, static_cast<std::int32_t>(value));
    } else {
        Store(row, ordinal, value);
    }
}

Value RowStore::Get(std::uint32_t row, int ordinal) const {
    if (IsNull(row, ordinal)) return {};
    switch (At(ordinal).type) {
        case FieldType::Boolean:
            return Load<char>(row, ordinal) != 0;
        case FieldType::SmallInt:
        case FieldType::Integer:
        case FieldType::BigInt:
            return WholeAt(row, ordinal);
        case FieldType::Double:
            return Load<double>(row, ordinal);
        case FieldType::Currency:
            return Currency::FromUnits(Load<std::int64_t>(row, ordinal));
        case FieldType::Date:
            return Date(Load<double>(row, ordinal));
        case FieldType::Text:
            break;
    }
    return std::string(TextAt(row, ordinal));
}

void RowStore::Set(std::uint32_t row, int ordinal, const Value& value) {
    switch (value.index()) {
        case 0:
            return SetNull(row, ordinal);
        case 1:
            return SetBoolean(row, ordinal, std::get<bool>(value));
        case 2:
            return SetWhole(row, ordinal, std::get<std::int64_t>(value));
        case 3:
            return Store(row, ordinal, std::get<double>(value));
        case 4:
            return Store(row, ordinal, std::get<Currency>(value).Units());
        case 5:
            return SetDate(row, ordinal, std::get<Date>(value));
        default:
            return SetText(row, ordinal, std::get<std::string>(value));
    }
}

}  // namespace vlm::data
