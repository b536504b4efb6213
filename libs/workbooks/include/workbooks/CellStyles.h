#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbooks/Workbook.h"

namespace vlm::files {

/// Tells which numbers of a workbook are dates: a cell's style names a number format, and the format's code decides.
class CellStyles {
public:
    /// Days count from 1904 instead of 1900.
    void CountFrom1904(bool yes) { from1904_ = yes; }
    void AddFormat(std::uint32_t format, std::string_view code);
    /// The next style, in the order that cells count them.
    void AddStyle(std::uint32_t format);

    /// A style that the workbook does not have formats nothing.
    bool IsDate(std::size_t style) const noexcept { return style < dates_.size() && dates_[style]; }
    /// The number, or the date it stands for; outside the calendar (0 to 31/12/9999) it stays a number.
    SheetValue ValueOf(double number, std::size_t style) const;

private:
    std::unordered_map<std::uint32_t, bool> formats_;
    std::vector<bool> dates_;
    bool from1904_ = false;
};

/// The code of a number format shows days, months, years, hours, minutes or seconds, apart from quoted and escaped
/// characters and from colours, conditions and languages in brackets; "[h]:mm" does.
bool IsDateFormat(std::string_view code) noexcept;

}  // namespace vlm::files
