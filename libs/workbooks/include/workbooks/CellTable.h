#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "values/TextPool.h"
#include "workbooks/CellReference.h"
#include "workbooks/Workbook.h"

namespace vlm::files {

/// What a workbook's texts, or a sheet's own, may take: a small file can say of itself that it holds any amount.
inline constexpr std::uint64_t kMaxTextBytes = 512U << 20;

/// The texts that all sheets of a workbook use, asked for by their number from 0.
class SharedTexts {
public:
    /// OverflowError beyond the limits.
    void Add(std::string_view content);
    std::size_t Size() const noexcept { return places_.size(); }
    std::string_view At(std::uint32_t number) const { return texts_.At(places_.at(number)); }

private:
    TextPool texts_{kMaxTextBytes};
    std::vector<std::uint32_t> places_;
};

/// A worksheet in memory: 16 bytes for each cell that has a value, whatever its row and column, and its texts. Cells
/// come in any order; of two values at one place the later counts.
class CellTable : public Worksheet {
public:
    /// `shared` are the texts that all sheets of the workbook use.
    explicit CellTable(std::shared_ptr<const SharedTexts> shared) : shared_(std::move(shared)) {}

    /// Throws WorkbookFault for a place outside a sheet and beyond the number of cells that a sheet may have here,
    /// OverflowError beyond the texts.
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

    std::shared_ptr<const SharedTexts> shared_;
    TextPool own_{kMaxTextBytes};
    std::vector<Entry> entries_;
    bool inOrder_ = true;
    std::uint32_t lastRow_ = 0;
};

}  // namespace vlm::files
