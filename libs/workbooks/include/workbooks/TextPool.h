#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::files {

/// Many texts in one block of memory, asked for by their number from 0.
class TextPool {
public:
    /// The new text's number. Throws WorkbookFault beyond the limit.
    std::uint32_t Add(std::string_view content);
    std::size_t Size() const noexcept { return ends_.size(); }
    std::string_view At(std::uint32_t number) const;

private:
    std::string bytes_;
    std::vector<std::uint32_t> ends_;
};

}  // namespace vlm::files
