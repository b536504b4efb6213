#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vlm::data {

/// A date literal of a statement in the form in which dates are stored.
struct SqlDateLiteral {
    std::string iso;       // YYYY-MM-DD, followed by " HH:MM:SS" and the fraction when there is a time of day
    bool midnight = true;  // no time of day: stored as `iso` or as `iso` with " 00:00:00"
};

/// Month-first `m/d/yyyy`, `yyyy-mm-dd` and `yyyymmdd`, each with a time of day or without. Nothing when the text has
/// not the shape of a date; Error when it has it but there is no such day or time.
std::optional<SqlDateLiteral> ParseSqlDate(std::string_view literal);

}  // namespace vlm::data
