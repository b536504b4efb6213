#include "values/ColumnConversion.h"

#include <charconv>
#include <string>

#include "values/DateText.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

constexpr std::string_view kNumber = "un numero";
constexpr std::string_view kAmount = "un importo";
constexpr std::string_view kDate = "una data";
constexpr std::string_view kTruth = "un valore vero/falso";

constexpr double kFirstSerial = -657434;  // 1/1/100
constexpr double kEndSerial = 2958466;    // 1/1/10000

/// A cell may hold pages of text; a message shows its beginning.
constexpr std::size_t kShownCharacters = 40;

[[noreturn]] void ThrowTooLarge(std::string_view value, std::string_view column) {
    throw OverflowError("Il valore '" + std::string(value) + "' della colonna " + std::string(column) +
                        " è troppo grande.");
}

bool ConvertToBoolean(const Value& value, std::string_view column) {
    if (const auto* truth = std::get_if<bool>(&value)) return *truth;
    if (const auto* content = std::get_if<std::string>(&value)) {
        if (text::EqualNoCase(*content, "True") || text::EqualNoCase(*content, "Vero")) return true;
        if (text::EqualNoCase(*content, "False") || text::EqualNoCase(*content, "Falso")) return false;
        const auto number = text::ParseNumber(*content);
        if (!number) ThrowMismatch(*content, column, kTruth);
        return *number != 0;
    }
    return NumberOf(value) != 0;
}

double ConvertToDouble(const Value& value, std::string_view column) {
    if (const auto* content = std::get_if<std::string>(&value)) {
        const auto number = text::ParseNumber(*content);
        if (!number) ThrowMismatch(*content, column, kNumber);
        return *number;
    }
    return NumberOf(value);
}

std::int64_t ConvertToWidth(FieldType type, const Value& value, std::string_view column) {
    const std::int64_t whole = ColumnInteger(value, column);
    if ((type == FieldType::SmallInt && whole != static_cast<std::int16_t>(whole)) ||
        (type == FieldType::Integer && whole != static_cast<std::int32_t>(whole))) {
        ThrowTooLarge(std::to_string(whole), column);
    }
    return whole;
}

}  // namespace

void ThrowMismatch(std::string_view value, std::string_view column, std::string_view wanted) {
    const std::string_view shown = text::Left(value, kShownCharacters);
    throw TypeMismatchError("Il valore '" + std::string(shown) + (shown.size() < value.size() ? "..." : "") +
                            "' della colonna " + std::string(column) + " non è " + std::string(wanted) + ".");
}

std::int64_t ColumnInteger(std::string_view value, std::string_view column) {
    std::int64_t whole = 0;
    const auto [end, failure] = std::from_chars(value.data(), value.data() + value.size(), whole);
    if (failure == std::errc() && end == value.data() + value.size()) return whole;
    const auto number = text::ParseNumber(value);
    if (!number) ThrowMismatch(value, column, kNumber);
    return ColumnInteger(*number, column);
}

std::int64_t ColumnInteger(double value, std::string_view column) { return text::ToInt64(value, column); }

std::int64_t ColumnInteger(const Value& value, std::string_view column) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) return *whole;
    if (const auto* content = std::get_if<std::string>(&value))
        return ColumnInteger(std::string_view(*content), column);
    return ColumnInteger(NumberOf(value), column);
}

Currency ColumnAmount(std::string_view value, std::string_view column) {
    try {
        if (const auto amount = text::ParseCurrency(value)) return *amount;
    } catch (const OverflowError&) {
        ThrowTooLarge(value, column);
    }
    ThrowMismatch(value, column, kAmount);
}

Currency ColumnAmount(double value, std::string_view column) {
    try {
        return Currency::FromDouble(value);
    } catch (const OverflowError&) {
        ThrowTooLarge(text::NumberText(value), column);
    }
}

Currency ColumnAmount(std::int64_t value, std::string_view column) {
    try {
        return Currency::FromInteger(value);
    } catch (const OverflowError&) {
        ThrowTooLarge(std::to_string(value), column);
    }
}

Date ColumnDate(std::string_view value, std::string_view column) {
    if (const auto date = ParseIsoDate(value)) return *date;
    if (const auto date = text::ParseItalianDate(value)) return *date;
    ThrowMismatch(value, column, kDate);
}

Date ColumnDate(double serial, std::string_view column) {
    if (!(serial >= kFirstSerial && serial < kEndSerial)) ThrowMismatch(text::NumberText(serial), column, kDate);
    return Date(serial);
}

Value ConvertTo(FieldType type, const Value& value, std::string_view column) {
    if (IsNull(value)) return value;
    switch (type) {
        case FieldType::Boolean:
            return ConvertToBoolean(value, column);
        case FieldType::SmallInt:
        case FieldType::Integer:
        case FieldType::BigInt:
            return ConvertToWidth(type, value, column);
        case FieldType::Double:
            return ConvertToDouble(value, column);
        case FieldType::Currency:
            return AmountOf(value, column);
        case FieldType::Date:
            return *DateOf(value, column);
        case FieldType::Text:
            break;
    }
    return TextOf(value);
}

}  // namespace vlm::data
