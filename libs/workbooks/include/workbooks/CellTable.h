#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "workbooks/CellReference.h"
#include "workbooks/TextPool.h"
#include "workbooks/Workbook.h"

namespace vlm::files {

/// A worksheet in memory: 16 bytes for each cell that has a value, whatever its row and column, and its texts. Cells
/// come in any order; of two values at one place the later counts.
class CellTable : public Worksheet {
public:
    /// `shared` are the texts that all sheets of the workbook use.
    explicit CellTable(std::shared_ptr<const TextPool> shared) : shared_(std::move(shared)) {}

    /// Throws WorkbookFault for a place outside a sheet and beyond the number of cells that a sheet may have here.
    void Put(CellPlace place, const SheetValue& value);
    /// Throws WorkbookFault when there is no such text.
    void PutShared(CellPlace place, std::uint32_t text);
    /// Call once, after the last cell.
    void Finish();

    std::uint32_t LastRow() const override { return lastRow_; }
    SheetValue Cell(std::uint32_t row, std::uint32_t column) const override;

private:
    enum class Kind : std::uint16_t { Empty, Boolean, Number, Date, OwnText, SharedText };
    struct Entry {
        std::uint32_t row;
        std::uint16_t column;
        Kind kind;
        std::uint64_t bits;  // the number itself, or the text's number
    };

    void Add(CellPlace place, Kind kind, std::uint64_t bits);
    static bool Before(const Entry& left, const Entry& right) noexcept;

    std::shared_ptr<const TextPool> shared_;
    TextPool own_;
    std::vector<Entry> entries_;
    bool inOrder_ = true;
    std::uint32_t lastRow_ = 0;
};

}  // namespace vlm::files
