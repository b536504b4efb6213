#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/data/Value.h"

namespace vlm::data {

/// The hash of a cell, the same for cells that compare equal.
std::size_t HashCell(const Value& cell);

/// A hash index over one column of a row set: row numbers in chains, each in the rows' own order. It holds no cells:
/// who asks it checks the cells it gives.
class RowIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    /// Rows are added in ascending order.
    void Add(std::uint32_t row, std::size_t hash);
    /// The first row that may hold a cell of that hash, then the next one; kNone when there is none.
    std::uint32_t First(std::size_t hash) const;
    std::uint32_t Next(std::uint32_t row) const { return next_[row]; }

private:
    struct Chain {
        std::uint32_t first = kNone;
        std::uint32_t last = kNone;
    };
    void Link(std::uint32_t row);
    void Grow();

    std::vector<Chain> chains_;
    std::vector<std::uint32_t> next_;
    std::vector<std::size_t> hashes_;
};

}  // namespace vlm::data
