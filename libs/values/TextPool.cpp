#include "values/TextPool.h"

#include <cstring>

#include "values/Error.h"

namespace vlm {

namespace {

// A length of 255 or more stands in four bytes behind this one.
constexpr unsigned char kLong = 255;

}  // namespace

std::uint32_t TextPool::Add(std::string_view value) {
    const bool isLong = value.size() >= kLong;
    const std::size_t head = isLong ? 1 + sizeof(std::uint32_t) : 1;
    if (value.size() > UINT32_MAX - kPageSize) throw OverflowError("Un testo è troppo lungo.");
    const std::uint32_t number = Reserve(head + value.size());
    char* const place = Place(number);
    if (isLong) {
        const auto size = static_cast<std::uint32_t>(value.size());
        *place = static_cast<char>(kLong);
        std::memcpy(place + 1, &size, sizeof size);
    } else {
        *place = static_cast<char>(value.size());
    }
    if (!value.empty()) std::memcpy(place + head, value.data(), value.size());
    return number;
}

std::string_view TextPool::At(std::uint32_t number) const noexcept {
    const char* const place = Place(number);
    const auto size = static_cast<unsigned char>(*place);
    if (size != kLong) return {place + 1, size};
    std::uint32_t longSize = 0;
    std::memcpy(&longSize, place + 1, sizeof longSize);
    return {place + 1 + sizeof longSize, longSize};
}

void TextPool::Clear() noexcept {
    blocks_.clear();
    blocks_.shrink_to_fit();
    pages_.clear();
    used_ = 0;
}

std::uint32_t TextPool::Reserve(std::size_t size) {
    const std::size_t end = pages_.size() << kPageBits;
    if (used_ + size > end) {
        const std::size_t count = (size + kPageSize - 1) >> kPageBits;
        if (pages_.size() + count > mostPages_) throw OverflowError("Le righe hanno troppo testo.");
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(count << kPageBits));
        for (std::size_t page = 0; page < count; ++page) pages_.push_back(blocks_.back().get() + (page << kPageBits));
        used_ = end;
    }
    const auto number = static_cast<std::uint32_t>(used_);
    used_ += size;
    return number;
}

}  // namespace vlm
