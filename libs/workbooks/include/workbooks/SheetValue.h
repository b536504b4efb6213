#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "values/Date.h"

namespace vlm::files {

/// What a cell holds. std::monostate is an empty cell; an error is its text ("#N/D").
using SheetValue = std::variant<std::monostate, bool, double, Date, std::string>;

inline bool IsEmpty(const SheetValue& value) { return std::holds_alternative<std::monostate>(value); }

/// The text that automation makes of a cell under Italian conventions. Empty gives "", numbers "12" or "12,5" (no
/// exponent below 10^15), dates dd/mm/yyyy with HH:MM:SS when there is a time of day, a time alone HH:MM:SS, truth
/// values "Vero" and "Falso".
std::string TextOf(const SheetValue& value);

/// The Italian name of an error that a file writes in English: "#N/A" gives "#N/D". Other texts stay as they are.
std::string_view ErrorText(std::string_view code) noexcept;

}  // namespace vlm::files
