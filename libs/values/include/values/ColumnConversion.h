#pragma once

#include <cstdint>
#include <string_view>

#include "values/Value.h"

/// The strict readings of one cell, shared by every row set. `column` names the column in the error's text.
namespace vlm::data {

/// TypeMismatchError: "Il valore 'abc' della colonna NumeroDocumento non è un numero."
[[noreturn]] void ThrowMismatch(std::string_view value, std::string_view column, std::string_view wanted);

/// A whole text as an integer; fractions round half to even. Digits alone keep all 64 bits.
std::int64_t ColumnInteger(std::string_view value, std::string_view column);
std::int64_t ColumnInteger(double value, std::string_view column);
std::int64_t ColumnInteger(const Value& value, std::string_view column);

Currency ColumnAmount(std::string_view value, std::string_view column);
Currency ColumnAmount(double value, std::string_view column);
Currency ColumnAmount(std::int64_t value, std::string_view column);

/// ISO form, or dd/mm/yyyy.
Date ColumnDate(std::string_view value, std::string_view column);
/// A serial (days since 30/12/1899) of the years 100 to 9999.
Date ColumnDate(double serial, std::string_view column);

/// The value as a column of that type keeps it; Null stays Null. TypeMismatchError or OverflowError when it cannot.
Value ConvertTo(FieldType type, const Value& value, std::string_view column);

}  // namespace vlm::data
