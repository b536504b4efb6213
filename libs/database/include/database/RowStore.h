#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "values/TextPool.h"
#include "values/Value.h"

namespace vlm::data {

/// The cells of a disconnected row set, column by column, as small as their types allow: a patient list of a million
/// elements must fit beside the host. Rows and columns count from 0 and are the caller's to check; what is set must
/// already be of the column's type.
class RowStore {
public:
    void AddColumn(FieldType type) { columns_.push_back({type, WidthOf(type), {}, {}}); }
    std::uint32_t RowCount() const noexcept { return rowCount_; }
    /// A row of Nulls at the end. OverflowError when the store is full.
    void AppendRow();
    void DropLastRow();
    /// Drops the rows; the columns stay.
    void Clear() noexcept;

    bool IsNull(std::uint32_t row, int ordinal) const noexcept {
        const Column& column = At(ordinal);
        return ((column.present[row >> 6] >> (row & 63)) & 1) == 0;
    }
    Value Get(std::uint32_t row, int ordinal) const;
    void Set(std::uint32_t row, int ordinal, const Value& value);
    void SetNull(std::uint32_t row, int ordinal) noexcept;

    // Cells of columns of just that kind. Null gives "" and 0.
    std::string_view TextAt(std::uint32_t row, int ordinal) const noexcept {
        return IsNull(row, ordinal) ? std::string_view() : texts_.At(Load<std::uint32_t>(row, ordinal));
    }
    void SetText(std::uint32_t row, int ordinal, std::string_view value) { Store(row, ordinal, texts_.Add(value)); }
    /// Whole numbers of any width.
    std::int64_t WholeAt(std::uint32_t row, int ordinal) const noexcept;
    void SetWhole(std::uint32_t row, int ordinal, std::int64_t value) noexcept;
    void SetBoolean(std::uint32_t row, int ordinal, bool value) noexcept { Store<char>(row, ordinal, value ? 1 : 0); }
    void SetDate(std::uint32_t row, int ordinal, Date value) noexcept { Store(row, ordinal, value.Serial()); }

private:
    static constexpr unsigned kChunkBits = 12;
    static constexpr std::uint32_t kChunkRows = 1U << kChunkBits;

    struct Column {
        FieldType type;
        unsigned width;                         // bytes of a cell
        std::vector<std::vector<char>> chunks;  // of kChunkRows cells each; the last one grows up to that
        std::vector<std::uint64_t> present;     // a bit for each row: 0 is Null
    };
    static unsigned WidthOf(FieldType type) noexcept;

    void Grow();
    const Column& At(int ordinal) const noexcept { return columns_[static_cast<std::size_t>(ordinal)]; }
    const char* Place(const Column& column, std::uint32_t row) const noexcept {
        return column.chunks[row >> kChunkBits].data() + std::size_t{row & (kChunkRows - 1)} * column.width;
    }
    template <typename T>
    T Load(std::uint32_t row, int ordinal) const noexcept {
        T value{};
        std::memcpy(&value, Place(At(ordinal), row), sizeof value);
        return value;
    }
    template <typename T>
    void Store(std::uint32_t row, int ordinal, T value) noexcept {
        Column& column = columns_[static_cast<std::size_t>(ordinal)];
        std::memcpy(const_cast<char*>(Place(column, row)), &value, sizeof value);
        column.present[row >> 6] |= std::uint64_t{1} << (row & 63);
    }

    std::vector<Column> columns_;
    TextPool texts_;
    std::uint32_t rowCount_ = 0;
    std::uint32_t capacity_ = 0;  // rows that the chunks have room for; 0xFFFFF000 at most
};

}  // namespace vlm::data
