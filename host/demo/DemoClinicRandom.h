#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>

namespace vlm::host {

/// Choices that come out the same on every machine: the engine is fixed by the standard, the mapping to a range is ours
/// because the library's distributions differ between makers.
class DemoClinicRandom {
public:
    /// Each `stream` of a seed is its own sequence, so that one part of the data may change without moving the others.
    DemoClinicRandom(std::uint64_t seed, std::uint64_t stream) : engine_(seed * 1000003 + stream) {}

    /// 0 to count - 1; count must be positive.
    int Below(int count) { return static_cast<int>(((engine_() >> 32) * static_cast<std::uint64_t>(count)) >> 32); }
    /// Both ends included.
    int Between(int first, int last) { return first + Below(last - first + 1); }
    bool Percent(int chance) { return Below(100) < chance; }

    template <typename Range>
    const auto& Of(const Range& range) {
        return range[static_cast<std::size_t>(Below(static_cast<int>(std::size(range))))];
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace vlm::host
