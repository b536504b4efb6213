#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "values/Date.h"

namespace vlm::files {

/// What a cell holds. std::monostate is an empty cell; an error is its text ("#N/D").
using SheetValue = std::variant<std::monostate, bool, double, Date, std::string>;

inline bool IsEmpty(const SheetValue& value) { return std::holds_alternative<std::monostate>(value); }

/// The text that automation makes of a cell under Italian conventions. Empty gives "", numbers "12" or "12,5" (no
/// exponent below 10^15), dates dd/mm/yyyy with HH:MM:SS when there is a time of day, a time alone HH:MM:SS, truth
/// values "Vero" and "Falso".
std::string TextOf(const SheetValue& value);

/// The Italian name of an error that a file writes in English: "#N/A" gives "#N/D". Other texts stay as they are.
std::string_view ErrorText(std::string_view code) noexcept;

/// One sheet of cells as it stands in its file. Rows and columns count from 1.
class Worksheet {
public:
    virtual ~Worksheet() = default;
    /// The last row that has a cell, formatted empty cells included; 0 when the sheet has none.
    virtual std::uint32_t LastRow() const = 0;
    /// Empty where the file has no cell, whatever the row and column.
    virtual SheetValue Cell(std::uint32_t row, std::uint32_t column) const = 0;
};

class Workbook {
public:
    virtual ~Workbook() = default;
    /// Sheets of cells, hidden ones too, in the workbook's order; sheets that are one chart do not count.
    virtual int WorksheetCount() const = 0;
    /// Reads the sheet when it is first asked for; it lives as long as the workbook. `number` counts from 1. Throws
    /// Error naming the file when there is no such sheet or it cannot be read.
    virtual const Worksheet& Sheet(int number) = 0;
};

/// How the domain comes to a workbook.
class WorkbookOpener {
public:
    virtual ~WorkbookOpener() = default;
    /// Throws Error naming the file when it cannot be opened or is no workbook.
    virtual std::unique_ptr<Workbook> Open(const std::string& path) const = 0;
};

}  // namespace vlm::files
