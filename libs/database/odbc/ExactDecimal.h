#pragma once

#include <string_view>

#include "values/Currency.h"

namespace vlm::data::odbc {

/// A number as a server writes it ("-1234.5600", with a point or a comma before the decimals and nothing between the
/// thousands), exact to four decimals; what is beyond rounds half to even. OverflowError or TypeMismatchError names the
/// column.
Currency ExactDecimal(std::string_view digits, std::string_view column);

}  // namespace vlm::data::odbc
