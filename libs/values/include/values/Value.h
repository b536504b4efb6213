#pragma once

#include <optional>
#include <string>
#include <variant>

#include "values/Currency.h"
#include "values/Date.h"

namespace vlm::data {

/// What a column is declared to hold.
enum class FieldType { Boolean, SmallInt, Integer, BigInt, Double, Currency, Date, Text };

/// One cell. std::monostate is Null.
using Value = std::variant<std::monostate, bool, std::int64_t, double, Currency, Date, std::string>;

inline bool IsNull(const Value& value) { return std::holds_alternative<std::monostate>(value); }

/// Null gives "". Truth values give "True" / "False", numbers Italian form, dates dd/mm/yyyy with HH:MM:SS when there
/// is a time of day.
std::string TextOf(const Value& value);
/// Null, empty text and text that is no number give 0; a truth value gives -1 or 0, a date its serial.
double NumberOf(const Value& value);
/// Strict: TypeMismatchError for a value that is no amount / no date; Null gives 0 / nothing. `what` names the value.
Currency AmountOf(const Value& value, std::string_view what);
std::optional<Date> DateOf(const Value& value, std::string_view what);

/// Order without regard to case for texts, by value for numbers of any kind; Null comes first and equals Null.
int Compare(const Value& left, const Value& right);

}  // namespace vlm::data
