#pragma once

#include <optional>
#include <string_view>

#include "platform/text/Date.h"

namespace vlm {

/// A date as a source writes it: day, month and year parted by "/", "-" or ".", or year, month and day parted by "-";
/// a time of day may follow. Years of two digits are those of the platform: 00 to 29 are 2000 to 2029, 30 to 99 are
/// 1930 to 1999. Nothing when it is no date.
std::optional<Date> ParseSourceDate(std::string_view value);

/// Blanks, zeros and what parts them: a date that the source does not have.
bool IsBlankDate(std::string_view value) noexcept;

}  // namespace vlm
