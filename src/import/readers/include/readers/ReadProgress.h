#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>

namespace vlm {

/// Tells how much of a source is read, in percent: never more than 100, never less than before on the same sheet, and
/// nothing while the size of the source is not known.
class ReadProgress {
public:
    using Listener = std::function<void(std::int32_t percent)>;

    explicit ReadProgress(const Listener& listener) : listener_(listener) {}

    void Restart() noexcept { last_ = 0; }
    void Raise(std::uint64_t done, std::uint64_t whole) {
        if (whole == 0 || !listener_) return;
        last_ = std::max(last_, static_cast<std::int32_t>(std::min<std::uint64_t>(done * 100 / whole, 100)));
        listener_(last_);
    }

private:
    const Listener& listener_;
    std::int32_t last_ = 0;
};

}  // namespace vlm
