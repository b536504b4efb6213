#include "platform/data/RowIndex.h"

#include <functional>
#include <string>

#include "platform/text/Utf8.h"

namespace vlm::data {

namespace {
constexpr std::size_t kSmallestTable = 64;
}

std::size_t HashCell(const Value& cell) {
    if (const auto* content = std::get_if<std::string>(&cell)) {
        return std::hash<std::string>{}(text::FoldCase(*content));
    }
    const double number = NumberOf(cell);
    return std::hash<double>{}(number == 0 ? 0.0 : number);
}

void RowIndex::Add(std::uint32_t row, std::size_t hash) {
    hashes_.push_back(hash);
    next_.push_back(kNone);
    if (hashes_.size() > chains_.size()) {
        Grow();
    } else {
        Link(row);
    }
}

std::uint32_t RowIndex::First(std::size_t hash) const {
    return chains_.empty() ? kNone : chains_[hash % chains_.size()].first;
}

void RowIndex::Link(std::uint32_t row) {
    Chain& chain = chains_[hashes_[row] % chains_.size()];
    if (chain.first == kNone) {
        chain.first = row;
    } else {
        next_[chain.last] = row;
    }
    chain.last = row;
    next_[row] = kNone;
}

void RowIndex::Grow() {
    chains_.assign(std::max(kSmallestTable, chains_.size() * 2), Chain());
    for (std::uint32_t row = 0; row < hashes_.size(); ++row) Link(row);
}

}  // namespace vlm::data
