#include "database/RowIndex.h"

#include <bit>
#include <functional>
#include <numeric>
#include <string>

#include "values/Utf8.h"

namespace vlm::data {

namespace {

constexpr std::size_t kSmallestTable = 16;
constexpr std::uint64_t kHashStart = 0xCBF29CE484222325ULL;
constexpr std::uint64_t kHashFactor = 0x100000001B3ULL;

/// The table takes the low bits: what differs only in the high ones must reach them.
std::size_t Mixed(std::uint64_t hash) { return static_cast<std::size_t>(hash ^ (hash >> 32)); }

std::size_t HashText(std::string_view value) {
    value = text::TrimRight(value);
    std::uint64_t hash = kHashStart;
    if (!text::IsAscii(value)) {
        while (!value.empty()) hash = (hash ^ text::ToLower(text::Decode(value))) * kHashFactor;
        return Mixed(hash);
    }
    for (const char c : value) {
        const char folded = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
        hash = (hash ^ static_cast<unsigned char>(folded)) * kHashFactor;
    }
    return Mixed(hash);
}

std::size_t HashNumber(double number) {
    return Mixed(std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number) * 0x9E3779B97F4A7C15ULL);
}

std::size_t HashValue(const Value& value) {
    const auto* content = std::get_if<std::string>(&value);
    return content != nullptr ? HashText(*content) : HashNumber(NumberOf(value));
}

/// Codes are mostly written alike: their bytes decide before their letters do.
bool SameText(std::string_view left, std::string_view right) { return left == right || text::EqualNoCase(left, right); }

}  // namespace

RowIndex::RowIndex(const RowStore& store, int ordinal, FieldType type, std::uint32_t rows)
    : store_(&store), ordinal_(ordinal), texts_(type == FieldType::Text) {
    Resize(std::bit_ceil(std::max(kSmallestTable, std::size_t{rows} + rows / 2)));
    for (std::uint32_t row = 0; row < rows; ++row) Add(row);
}

void RowIndex::Add(std::uint32_t row) {
    if (!next_.empty()) next_.push_back(row);
    if (store_->IsNull(row, ordinal_)) return;
    if (values_ * 3 >= slots_.size() * 2) Resize(slots_.size() * 2);
    std::uint32_t& last = slots_[SlotOf(HashAt(row), [&](std::uint32_t other) { return SameCell(other, row); })];
    if (last == kNone) {
        ++values_;
    } else {
        if (next_.empty()) {
            next_.resize(std::size_t{row} + 1);
            std::iota(next_.begin(), next_.end(), 0U);
        }
        next_[row] = next_[last];
        next_[last] = row;
    }
    last = row;
}

std::uint32_t RowIndex::FirstText(std::string_view value) const {
    const std::uint32_t last = slots_[SlotOf(
        HashText(value), [&](std::uint32_t row) { return SameText(store_->TextAt(row, ordinal_), value); })];
    return last == kNone ? kNone : After(last);
}

std::uint32_t RowIndex::LastOf(const Value& value) const {
    if (data::IsNull(value)) return kNone;
    return slots_[SlotOf(HashValue(value),
                         [&](std::uint32_t row) { return Compare(store_->Get(row, ordinal_), value) == 0; })];
}

std::size_t RowIndex::HashAt(std::uint32_t row) const {
    return texts_ ? HashText(store_->TextAt(row, ordinal_)) : HashNumber(NumberOf(store_->Get(row, ordinal_)));
}

bool RowIndex::SameCell(std::uint32_t left, std::uint32_t right) const {
    if (texts_) return SameText(store_->TextAt(left, ordinal_), store_->TextAt(right, ordinal_));
    return Compare(store_->Get(left, ordinal_), store_->Get(right, ordinal_)) == 0;
}

template <typename Same>
std::size_t RowIndex::SlotOf(std::size_t hash, Same&& same) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hash & mask;
    while (slots_[slot] != kNone && !same(slots_[slot])) slot = (slot + 1) & mask;
    return slot;
}

void RowIndex::Resize(std::size_t slots) {
    std::vector<std::uint32_t> old(slots, kNone);
    old.swap(slots_);
    for (const std::uint32_t last : old) {
        if (last != kNone) slots_[SlotOf(HashAt(last), [](std::uint32_t) { return false; })] = last;
    }
}

}  // namespace vlm::data
