#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/Date.h"

/// Texts and dates of a source as the element list keeps them.
namespace vlm {

/// The words of a text parted by single blanks; "" when there are fewer than two.
std::string JoinWords(std::string_view value);
/// The acute and the grave accent, written where an apostrophe is meant, become one.
std::string WithApostrophes(std::string_view value);
/// E1 to E5 as E01 to E05; any other code as it is.
std::string ExemptionCode(std::string_view value);

/// A date as a source writes it: day, month and year parted by "/", "-" or ".", or year (of four digits), month and
/// day; a time of day may follow. Years of two digits are those of the platform: 00 to 29 are 2000 to 2029, 30 to 99
/// are 1930 to 1999. Nothing when it is no date.
std::optional<Date> ParseSourceDate(std::string_view value);

/// Blanks, zeros and what parts them: a date that the source does not have.
bool IsBlankDate(std::string_view value) noexcept;

/// A date of a source as day, month and year parted by "/", by a template's `DATEFORMAT`; without one, or with one
/// that is not known, the text as it is.
std::string ConvertTemplateDate(std::string_view value, std::string_view dateFormat);

/// yyyymmdd and ddmmyyyy as dd/mm/yyyy; "" for a text of another length.
std::string DateFromYmd(std::string_view value);
std::string DateFromDmy(std::string_view value);

}  // namespace vlm
