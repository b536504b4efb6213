#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace vlm {

/// Texts side by side in pages, each known by a number of 32 bits: one byte of overhead for a short text, and no
/// allocation of its own. Texts stay where they are until Clear.
class TextPool {
public:
    /// Takes up to `most` bytes, the overhead counted: 4 GiB at most.
    explicit TextPool(std::uint64_t most = std::uint64_t{1} << 32)
        : mostPages_(static_cast<std::size_t>(most >> kPageBits)) {}

    /// OverflowError beyond what the pool takes.
    std::uint32_t Add(std::string_view value);
    std::string_view At(std::uint32_t number) const noexcept;
    void Clear() noexcept;

private:
    static constexpr unsigned kPageBits = 16;
    static constexpr std::size_t kPageSize = std::size_t{1} << kPageBits;

    /// Room for `size` bytes in one piece; where it starts, as a number.
    std::uint32_t Reserve(std::size_t size);
    char* Place(std::uint32_t number) const noexcept {
        return pages_[number >> kPageBits] + (number & (kPageSize - 1));
    }

    std::size_t mostPages_;
    std::vector<std::unique_ptr<char[]>> blocks_;
    std::vector<char*> pages_;  // a block of several pages stands here with each of them
    std::size_t used_ = 0;      // of all pages
};

}  // namespace vlm
