#include "values/Value.h"

#include "values/ColumnConversion.h"
#include "values/DateText.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

/// Null, then numbers, then texts.
int Rank(const Value& value) {
    if (IsNull(value)) return 0;
    return std::holds_alternative<std::string>(value) ? 2 : 1;
}

template <typename T>
int Order(const T& left, const T& right) {
    return left < right ? -1 : (right < left ? 1 : 0);
}

std::string DateAndTime(Date date) {
    std::string shown = text::DdMmYyyySlashes(date);
    const Date::Civil civil = date.ToCivil();
    if (civil.hour == 0 && civil.minute == 0 && civil.second == 0) return shown;
    shown += ' ' + text::FormatZeros(civil.hour, 2);
    shown += ':' + text::FormatZeros(civil.minute, 2);
    shown += ':' + text::FormatZeros(civil.second, 2);
    return shown;
}

struct TextForm {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool value) const { return value ? "True" : "False"; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return text::NumberText(value); }
    std::string operator()(Currency value) const { return text::NumberText(value); }
    std::string operator()(Date value) const { return DateAndTime(value); }
    std::string operator()(const std::string& value) const { return value; }
};

struct NumberForm {
    double operator()(std::monostate) const { return 0; }
    double operator()(bool value) const { return value ? -1 : 0; }
    double operator()(std::int64_t value) const { return static_cast<double>(value); }
    double operator()(double value) const { return value; }
    double operator()(Currency value) const { return value.ToDouble(); }
    double operator()(Date value) const { return value.Serial(); }
    double operator()(const std::string& value) const { return text::ParseNumber(value).value_or(0); }
};

}  // namespace

std::string TextOf(const Value& value) { return std::visit(TextForm{}, value); }

double NumberOf(const Value& value) { return std::visit(NumberForm{}, value); }

Currency AmountOf(const Value& value, std::string_view what) {
    if (const auto* amount = std::get_if<Currency>(&value)) return *amount;
    if (const auto* whole = std::get_if<std::int64_t>(&value)) return ColumnAmount(*whole, what);
    if (const auto* content = std::get_if<std::string>(&value)) return ColumnAmount(*content, what);
    return ColumnAmount(NumberOf(value), what);
}

std::optional<Date> DateOf(const Value& value, std::string_view what) {
    if (IsNull(value)) return std::nullopt;
    if (const auto* date = std::get_if<Date>(&value)) return *date;
    if (const auto* content = std::get_if<std::string>(&value)) return ColumnDate(*content, what);
    return ColumnDate(NumberOf(value), what);
}

int Compare(const Value& left, const Value& right) {
    const int rank = Rank(left);
    if (rank != Rank(right)) return Order(rank, Rank(right));
    if (rank == 0) return 0;
    if (rank == 2) return text::CompareNoCase(std::get<std::string>(left), std::get<std::string>(right));
    if (left.index() == right.index()) {
        if (const auto* whole = std::get_if<std::int64_t>(&left)) return Order(*whole, std::get<std::int64_t>(right));
        if (const auto* amount = std::get_if<Currency>(&left)) return Order(*amount, std::get<Currency>(right));
        if (const auto* date = std::get_if<Date>(&left)) return Order(*date, std::get<Date>(right));
    }
    return Order(NumberOf(left), NumberOf(right));
}

}  // namespace vlm::data
