#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vlm::files {

constexpr std::uint32_t kMaxRow = 1048576;
constexpr std::uint32_t kMaxColumn = 16384;

/// A cell's place; row and column count from 1.
struct CellPlace {
    std::uint32_t row = 0;
    std::uint32_t column = 0;
};

/// "A" gives 1, "AA" 27, up to "XFD"; small letters too. Nothing for anything else.
std::optional<std::uint32_t> ColumnNumber(std::string_view letters) noexcept;
/// "B5", with the row inside 1 to kMaxRow.
std::optional<CellPlace> ParseCellReference(std::string_view reference) noexcept;
std::string CellName(CellPlace place);

}  // namespace vlm::files
