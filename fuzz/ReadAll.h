#pragma once

#include <string>

#include "detect/DetectingOpener.h"
#include "values/Error.h"

namespace vlm::fuzz {

/// Reads the first cells of every sheet. An Error is the one way to fail that is right.
inline void ReadAll(const std::string& path) {
    constexpr std::uint32_t kRows = 200;
    constexpr std::uint32_t kColumns = 16;
    try {
        const auto workbook = files::DetectingOpener().Open(path);
        for (int number = 1; number <= workbook->WorksheetCount() && number <= 8; ++number) {
            const files::Worksheet& sheet = workbook->Sheet(number);
            for (std::uint32_t row = 1; row <= sheet.LastRow() && row <= kRows; ++row) {
                for (std::uint32_t column = 1; column <= kColumns; ++column) files::TextOf(sheet.Cell(row, column));
            }
            files::TextOf(sheet.Cell(sheet.LastRow(), 1));
        }
    } catch (const Error&) {
    }
}

}  // namespace vlm::fuzz
