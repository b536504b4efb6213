#include "workbooks/TextPool.h"

#include "workbooks/WorkbookFault.h"

namespace vlm::files {

namespace {

constexpr std::size_t kMaxBytes = 512U << 20;
constexpr std::size_t kMaxTexts = 16U << 20;

}  // namespace

std::uint32_t TextPool::Add(std::string_view content) {
    if (ends_.size() >= kMaxTexts || content.size() > kMaxBytes - bytes_.size()) {
        throw WorkbookFault("contiene troppi testi");
    }
    bytes_ += content;
    ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    return static_cast<std::uint32_t>(ends_.size() - 1);
}

std::string_view TextPool::At(std::uint32_t number) const {
    const std::size_t start = number == 0 ? 0 : ends_.at(number - 1);
    return std::string_view(bytes_).substr(start, ends_.at(number) - start);
}

}  // namespace vlm::files
