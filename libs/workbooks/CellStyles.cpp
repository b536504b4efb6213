#include "workbooks/CellStyles.h"

#include <algorithm>

namespace vlm::files {

namespace {

constexpr double kDaysFrom1900To1904 = 1462;
constexpr double kFirstDayAfterCalendar = 2958466;  // 01/01/10000
constexpr double kFalseLeapDay = 60;                // the sheet's 29/02/1900, which never was

constexpr std::string_view kDateLetters = "dmyhsDMYHS";

/// Formats that every workbook has without their code.
bool IsBuiltInDate(std::uint32_t format) noexcept {
    return (format >= 14 && format <= 22) || (format >= 27 && format <= 36) || (format >= 45 && format <= 47) ||
           (format >= 50 && format <= 58);
}

/// "[h]", "[mm]", "[ss]": time that goes on counting beyond its unit.
bool IsElapsedTime(std::string_view inBrackets) noexcept {
    return !inBrackets.empty() && inBrackets.find_first_not_of("hmsHMS") == std::string_view::npos;
}

}  // namespace

bool IsDateFormat(std::string_view code) noexcept {
    for (std::size_t at = 0; at < code.size(); ++at) {
        const char c = code[at];
        if (c == '\\' || c == '_' || c == '*') {
            ++at;
        } else if (c == '"') {
            at = std::min(code.find('"', at + 1), code.size());
        } else if (c == '[') {
            const std::size_t end = std::min(code.find(']', at), code.size());
            if (IsElapsedTime(code.substr(at + 1, end - at - 1))) return true;
            at = end;
        } else if (kDateLetters.find(c) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

void CellStyles::AddFormat(std::uint32_t format, std::string_view code) { formats_[format] = IsDateFormat(code); }

void CellStyles::AddStyle(std::uint32_t format) {
    const auto own = formats_.find(format);
    dates_.push_back(own != formats_.end() ? own->second : IsBuiltInDate(format));
}

SheetValue CellStyles::ValueOf(double number, std::size_t style) const {
    if (!IsDate(style)) return number;
    double serial = from1904_ ? number + kDaysFrom1900To1904 : number;
    if (!(serial >= 0 && serial < kFirstDayAfterCalendar)) return number;
    if (serial >= 1 && serial < kFalseLeapDay) serial += 1;
    return Date(serial);
}

}  // namespace vlm::files
