#include "TSqlLiteral.h"

#include <algorithm>
#include <optional>

#include "database/SqlTokens.h"
#include "values/Date.h"
#include "values/Error.h"
#include "values/Number.h"

namespace vlm::host {

namespace {

[[noreturn]] void Refuse(const Column& column) {
    throw Error("Valore non valido per la colonna " + std::string(column.name) + ".");
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string TextOf(std::string_view text) { return (IsAscii(text) ? "" : "N") + data::SqlTextLiteral(text); }

std::string MomentOf(std::string_view text, const Column& column) {
    const std::optional<Date::Civil> moment = ParseIsoCivil(text);
    if (!moment) Refuse(column);
    const auto two = [](int number) { return text::FormatZeros(number, 2); };
    std::string day = "'" + text::FormatZeros(moment->year, 4) + two(moment->month) + two(moment->day);
    if (moment->hour != 0 || moment->minute != 0 || moment->second != 0)
        day += " " + two(moment->hour) + ":" + two(moment->minute) + ":" + two(moment->second);
    return day += "'";
}

/// The sign apart, so that the smallest amount is written too.
std::string AmountOf(Currency amount) {
    const bool negative = amount.Units() < 0;
    const auto units = static_cast<std::uint64_t>(amount.Units());
    const std::uint64_t magnitude = negative ? 0 - units : units;
    std::string fraction = std::to_string(magnitude % Currency::kScale);
    fraction.insert(0, 4 - fraction.size(), '0');
    return (negative ? "-" : "") + std::to_string(magnitude / Currency::kScale) + "." + fraction;
}

std::string NumberOf(std::int64_t number, const Column& column) {
    switch (column.type) {
        case ColumnType::Bit:
            return number == 0 ? "0" : "1";
        case ColumnType::Money:
            return AmountOf(Currency::FromInteger(number));
        case ColumnType::VarChar:
            return "'" + std::to_string(number) + "'";
        case ColumnType::DateTime:
            Refuse(column);
        case ColumnType::Int:
        case ColumnType::SmallInt:
            break;
    }
    return std::to_string(number);
}

}  // namespace

std::string TSqlLiteral(const DatabaseWriter::Cell& cell, const Column& column) {
    const DatabaseWriter::Cell::Content& content = cell.Get();
    if (const auto* number = std::get_if<std::int64_t>(&content)) return NumberOf(*number, column);
    if (const auto* text = std::get_if<std::string_view>(&content)) {
        if (column.type == ColumnType::DateTime) return MomentOf(*text, column);
        if (column.type == ColumnType::VarChar) return TextOf(*text);
        Refuse(column);
    }
    if (const auto* amount = std::get_if<Currency>(&content)) {
        if (column.type != ColumnType::Money) Refuse(column);
        return AmountOf(*amount);
    }
    if (column.key) Refuse(column);
    return "NULL";
}

}  // namespace vlm::host
