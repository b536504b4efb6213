#include "workbooks/CellReference.h"

#include <algorithm>
#include <charconv>

namespace vlm::files {

std::optional<std::uint32_t> ColumnNumber(std::string_view letters) noexcept {
    if (letters.empty() || letters.size() > 3) return std::nullopt;
    std::uint32_t column = 0;
    for (const char letter : letters) {
        const char upper = letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
        if (upper < 'A' || upper > 'Z') return std::nullopt;
        column = column * 26 + static_cast<std::uint32_t>(upper - 'A' + 1);
    }
    return column <= kMaxColumn ? std::optional(column) : std::nullopt;
}

std::optional<CellPlace> ParseCellReference(std::string_view reference) noexcept {
    const std::size_t digits = std::min(reference.find_first_of("0123456789"), reference.size());
    const auto column = ColumnNumber(reference.substr(0, digits));
    std::uint32_t row = 0;
    const char* const end = reference.data() + reference.size();
    const auto [stop, error] = std::from_chars(reference.data() + digits, end, row);
    if (!column || error != std::errc{} || stop != end || row < 1 || row > kMaxRow) return std::nullopt;
    return CellPlace{row, *column};
}

std::string CellName(CellPlace place) {
    std::string letters;
    for (std::uint32_t rest = place.column; rest > 0; rest = (rest - 1) / 26) {
        letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % 26));
    }
    return letters + std::to_string(place.row);
}

}  // namespace vlm::files
