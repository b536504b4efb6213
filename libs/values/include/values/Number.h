#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "values/Currency.h"

/// Numbers as text, in Italian form (decimal comma, full stop between thousands), fixed here and never taken from the
/// machine, and the automation rules of conversion.
namespace vlm::text {

/// A whole text as a number, in Italian form ("1.234,50") or plain form ("1234.5"); blanks around it do not count.
/// Points that part groups of exactly three digits are thousands ("1.234" is 1234). Nothing when it is no number.
std::optional<double> ParseNumber(std::string_view value);
/// The same, kept exact to four decimals; throws OverflowError outside Currency's range.
std::optional<Currency> ParseCurrency(std::string_view value);
/// The number that the leading digits give (a sign and blanks before them are read too); no digits give 0.
std::int64_t LeadingInteger(std::string_view value) noexcept;

/// A number as automation turns it into text under Italian conventions: 12 gives "12", 12.5 gives "12,5".
std::string NumberText(double value);
std::string NumberText(Currency value);

/// With a fixed number of decimals (0 to 4), rounded half away from zero; `grouped` puts "." between thousands.
std::string FormatDecimals(Currency value, int decimals, bool grouped);
std::string FormatInteger(std::int64_t value, bool grouped);
/// At least `digits` digits, zeros in front: the pattern "000".
std::string FormatZeros(std::int64_t value, int digits);

/// Half to even; OverflowError when the result does not fit. `what` names the value in the error's text.
std::int16_t ToInt16(double value, std::string_view what);
std::int32_t ToInt32(double value, std::string_view what);
std::int64_t ToInt64(double value, std::string_view what);

}  // namespace vlm::text
