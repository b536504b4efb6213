#include "record/FieldFormat.h"

#include <algorithm>
#include <charconv>

#include "values/DateText.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

/// An ASCII text at the end of `width` bytes, zeros in front; its rightmost characters when it is longer.
void FillWithZeros(char* slot, int width, std::string_view value) noexcept {
    const auto full = static_cast<std::size_t>(width);
    if (value.size() > full) value.remove_prefix(value.size() - full);
    const std::size_t zeros = full - value.size();
    std::fill_n(slot, zeros, '0');
    value.copy(slot + zeros, value.size());
}

void AppendZeroFilled(std::string& out, std::string_view value, std::size_t width) {
    const std::size_t length = text::Length(value);
    if (length < width) out.append(width - length, '0');
    out += text::Right(value, width);
}

/// Digits only, as a whole number; anything else counts as nothing written.
std::int64_t Digits(std::string_view value) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc{} && end == value.data() + value.size() ? number : 0;
}

}  // namespace

void FieldFormat::AppendNumber(std::string& out, std::string_view value, int width) const {
    AppendZeroFilled(out, policy_.trimNumbers ? text::Trim(value) : value, static_cast<std::size_t>(width));
}

void FieldFormat::AppendNumber(std::string& out, std::int64_t value, int width) const {
    AppendZeroFilled(out, std::to_string(value), static_cast<std::size_t>(width));
}

void FieldFormat::AppendText(std::string& out, std::string_view value, int width) const {
    const std::string_view kept = text::Left(value, static_cast<std::size_t>(width));
    if (policy_.upperText) {
        out += text::ToUpper(kept);
    } else {
        out += kept;
    }
}

void FieldFormat::AppendDate(std::string& out, const std::optional<Date>& value, int width) const {
    const std::string written = value ? text::DdMmYyyy(*value) : std::string{};
    if (policy_.zeroDates) {
        AppendZeroFilled(out, written, std::max(static_cast<std::size_t>(width), written.size()));
    } else {
        out += written;
    }
}

void FieldFormat::AppendAmount(std::string& out, Currency value, int width) const {
    const std::size_t start = out.size();
    out.append(static_cast<std::size_t>(width), '0');
    FillAmount(out.data() + start, width, value);
}

void FieldFormat::FillAmount(char* slot, int width, Currency value) const {
    // Half a unit of the last decimal rounds away from zero.
    std::int64_t unit = Currency::kScale;
    for (int i = 0; i < policy_.amountDecimals; ++i) unit /= 10;
    const std::int64_t units = value.Units();
    const std::uint64_t magnitude =
        units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    std::uint64_t rest = (magnitude + static_cast<std::uint64_t>(unit) / 2) / static_cast<std::uint64_t>(unit);
    const bool negative = units < 0 && rest > 0;
    int left = width;
    const auto put = [&](char c) {
        if (left > 0) slot[--left] = c;
    };
    const auto putDigit = [&] {
        put(static_cast<char>('0' + rest % 10));
        rest /= 10;
    };
    for (int i = 0; i < policy_.amountDecimals; ++i) putDigit();
    if (policy_.amountComma) put(',');
    putDigit();
    while (rest > 0 && left > 0) putDigit();
    if (!negative || left == 0) return static_cast<void>(std::fill_n(slot, left, '0'));
    // The minus sign goes in front of the zeros.
    std::fill_n(slot, left, '0');
    slot[0] = '-';
}

void FieldFormat::Place(FixedLine& line, const FieldPlace& place, std::string_view value) const {
    if (place.rule == FieldRule::Text && !policy_.upperText) return line.Put(place, value);
    std::string written;
    if (place.rule == FieldRule::Number || (place.rule == FieldRule::Date && policy_.zeroDates)) {
        AppendNumber(written, value, place.length);
    } else if (place.rule == FieldRule::RightText) {
        const std::string_view kept = text::Left(value, static_cast<std::size_t>(place.length));
        written.append(static_cast<std::size_t>(place.length) - text::Length(kept), ' ').append(kept);
    } else if (place.rule == FieldRule::ShownDate) {
        written = DisplayDate(value);
    } else {
        AppendText(written, value, place.length);
    }
    line.Put(place, written);
}

void FieldFormat::PlaceInteger(FixedLine& line, const FieldPlace& place, std::int64_t value) const {
    if (place.rule != FieldRule::Number) return line.Put(place, std::to_string(value));
    char* const slot = line.Slot(place);
    if (value < 0) return FillWithZeros(slot, place.length, std::to_string(value));
    for (int i = place.length; i > 0; value /= 10) slot[--i] = static_cast<char>('0' + value % 10);
}

void FieldFormat::Place(FixedLine& line, const FieldPlace& place, double value) const {
    Place(line, place, std::string_view(text::NumberText(value)));
}

void FieldFormat::Place(FixedLine& line, const FieldPlace& place, const std::optional<Date>& value) const {
    std::string written;
    AppendDate(written, value, place.length);
    line.Put(place, written);
}

void FieldFormat::Place(FixedLine& line, const FieldPlace& place, Currency value) const {
    if (place.rule == FieldRule::ShownAmount) return line.Put(place, DisplayAmount(value, place.length));
    FillAmount(line.Slot(place), place.length, value);
}

std::string FieldFormat::FormatField(const data::Value& value, int width, FieldMode mode) const {
    std::string out;
    switch (mode) {
        case FieldMode::Number:
            AppendNumber(out, data::TextOf(value), width);
            break;
        case FieldMode::Text:
            AppendText(out, data::TextOf(value), width);
            break;
        case FieldMode::Date:
            AppendDate(out, text::Trim(data::TextOf(value)).empty() ? std::nullopt : data::DateOf(value, "data"),
                       width);
            break;
        case FieldMode::Amount:
            AppendAmount(out, data::AmountOf(value, "importo"), width);
            break;
    }
    return out;
}

std::string FieldFormat::FormatAmount(Currency value) const {
    return text::FormatDecimals(value, policy_.amountDecimals, true);
}

std::string FieldFormat::DisplayDate(std::string_view field) const {
    if (!policy_.shortShownYears && field == "00000000") return {};
    std::string shown(text::Mid(field, 1, 2));
    shown.append("/").append(text::Mid(field, 3, 2)).append("/");
    return shown.append(text::Right(field, policy_.shortShownYears ? 2 : 4));
}

std::string FieldFormat::DisplayAmount(Currency value, int width) const {
    std::string shown = text::FormatDecimals(value, 2, false);
    const auto full = static_cast<std::size_t>(width);
    if (width > 0 && shown.size() > full) return shown.substr(shown.size() - full);
    if (shown.size() < full) shown.insert(0, full - shown.size(), ' ');
    return shown;
}

std::string FieldFormat::DisplayField(std::string_view text, int width, FieldMode mode) const {
    if (mode == FieldMode::Date) return DisplayDate(text);
    if (mode == FieldMode::Amount) return DisplayAmount(text::ParseCurrency(text).value_or(Currency{}), width);
    return {};
}

Currency FieldFormat::ParseAmount(std::string_view field) const {
    field = text::Trim(field);
    const bool negative = !field.empty() && field.front() == '-';
    if (negative) field.remove_prefix(1);
    const auto decimals = std::min(static_cast<std::size_t>(policy_.amountDecimals), field.size());
    std::string_view whole = field.substr(0, field.size() - decimals);
    if (!whole.empty() && whole.back() == ',') whole.remove_suffix(1);
    std::int64_t scale = Currency::kScale;  // of the last decimal, also where a line ends before the field does
    for (int i = 0; i < policy_.amountDecimals; ++i) scale /= 10;
    const Currency value = Currency::FromInteger(Digits(whole)) +
                           Currency::FromUnits(Digits(field.substr(field.size() - decimals)) * scale);
    return negative ? -value : value;
}

}  // namespace vlm
