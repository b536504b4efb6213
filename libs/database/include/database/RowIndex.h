#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "database/RowStore.h"

namespace vlm::data {

/// A hash index over one column of a row set: which rows hold a value, in the rows' own order. Texts are the same
/// without regard to case, numbers by value; Null is in no index. It holds row numbers only, 4 bytes for each slot of
/// the table and 4 for each row once a value stands in two rows, and reads the cells where they are.
class RowIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    /// Indexes the first `rows` rows of the store, which must stay where it is.
    RowIndex(const RowStore& store, int ordinal, FieldType type, std::uint32_t rows);

    /// Rows are added in ascending order.
    void Add(std::uint32_t row);
    /// The first row that holds the text; for a column of texts. kNone when there is none.
    std::uint32_t FirstText(std::string_view value) const;
    /// Whether a value stands in several rows.
    bool Repeats() const noexcept { return !next_.empty(); }
    /// Calls `take` with each row that holds the value.
    template <typename Take>
    void ForEach(const Value& value, Take&& take) const {
        const std::uint32_t last = LastOf(value);
        if (last == kNone) return;
        std::uint32_t row = After(last);
        while (row != last) {
            take(row);
            row = After(row);
        }
        take(last);
    }

private:
    std::uint32_t LastOf(const Value& value) const;
    std::uint32_t After(std::uint32_t row) const { return next_.empty() ? row : next_[row]; }
    std::size_t HashAt(std::uint32_t row) const;
    bool SameCell(std::uint32_t left, std::uint32_t right) const;
    /// The slot where a row that `same` accepts stands, or the free one where it would.
    template <typename Same>
    std::size_t SlotOf(std::size_t hash, Same&& same) const;
    void Resize(std::size_t slots);

    const RowStore* store_;
    int ordinal_;
    bool texts_;
    std::vector<std::uint32_t> slots_;  // of each value the last row; kNone is free
    std::vector<std::uint32_t> next_;   // rows of one value in a circle; empty while each value stands in one row
    std::size_t values_ = 0;
};

}  // namespace vlm::data
