#include "values/Number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::text {

namespace {

bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// "1.234.567": every point is followed by exactly three digits, and one to three digits stand before the first.
bool PointsAreThousands(std::string_view whole) noexcept {
    const std::size_t first = whole.find('.');
    if (first == std::string_view::npos || first == 0 || first > 3) return false;
    for (std::size_t at = first; at < whole.size(); at += 4) {
        if (whole[at] != '.' || at + 4 > whole.size()) return false;
        for (std::size_t i = at + 1; i < at + 4; ++i) {
            if (!IsDigit(whole[i])) return false;
        }
    }
    return true;
}

/// Digits alone, few enough to be exact as a number with decimals.
bool IsPlainInteger(std::string_view value) noexcept {
    return !value.empty() && value.size() <= 15 && std::all_of(value.begin(), value.end(), IsDigit);
}

bool IsWhole(double value) noexcept {
    return value > -1e15 && value < 1e15 && value == static_cast<double>(static_cast<std::int64_t>(value));
}

/// The text as sign, digits, ".", digits (and an exponent), or empty when it is no number.
std::string PlainForm(std::string_view value) {
    value = Trim(value);
    std::string plain;
    if (!value.empty() && (value.front() == '-' || value.front() == '+')) {
        if (value.front() == '-') plain += '-';
        value.remove_prefix(1);
    }
    const std::size_t comma = value.find(',');
    const bool italian = comma != std::string_view::npos || PointsAreThousands(value);
    bool digits = false;
    bool point = false;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (IsDigit(c)) {
            digits = true;
            plain += c;
        } else if (c == '.' && italian && (comma == std::string_view::npos || i < comma) && digits) {
            continue;
        } else if ((c == '.' || c == ',') && !point) {
            point = true;
            plain += '.';
        } else if ((c == 'e' || c == 'E') && digits && i + 1 < value.size()) {
            plain += value.substr(i);
            break;
        } else {
            return {};
        }
    }
    return digits ? plain : std::string{};
}

std::string NumberOutside(double value, std::string_view what) {
    return "Overflow: il valore " + NumberText(value) + " di " + std::string(what) + " è fuori dai limiti.";
}

[[noreturn]] void ThrowAmountOverflow() { throw OverflowError("Overflow: importo fuori dai limiti."); }

template <class Integer>
Integer ToInteger(double value, std::string_view what) {
    const double rounded = IsWhole(value) ? value : std::nearbyint(value);
    constexpr double kMinimum = static_cast<double>(std::numeric_limits<Integer>::min());
    if (!(rounded >= kMinimum && rounded < -kMinimum)) throw OverflowError(NumberOutside(value, what));
    return static_cast<Integer>(rounded);
}

}  // namespace

std::optional<double> ParseNumber(std::string_view value) {
    if (IsPlainInteger(value)) return static_cast<double>(LeadingInteger(value));
    const std::string plain = PlainForm(value);
    if (plain.empty()) return std::nullopt;
    double number = 0;
    const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
    if (error != std::errc{} || end != plain.data() + plain.size()) return std::nullopt;
    return number;
}

std::optional<Currency> ParseCurrency(std::string_view value) {
    const std::string plain = PlainForm(value);
    if (plain.empty()) return std::nullopt;
    if (plain.find_first_of("eE") != std::string::npos) {
        const std::optional<double> number = ParseNumber(value);
        return number ? std::optional(Currency::FromDouble(*number)) : std::nullopt;
    }
    const std::size_t point = plain.find('.');
    std::string units = plain.substr(0, point);
    std::string decimals = point == std::string::npos ? std::string{} : plain.substr(point + 1);
    decimals.resize(std::max<std::size_t>(decimals.size(), 4), '0');
    units.append(decimals, 0, 4);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(units.data(), units.data() + units.size(), number);
    if (error == std::errc::result_out_of_range) ThrowAmountOverflow();
    if (end != units.data() + units.size()) return std::nullopt;
    const int rest = decimals.substr(4).compare("5");
    const bool half = rest >= 0 && decimals.find_first_not_of('0', 5) == std::string::npos && decimals[4] == '5';
    if (half ? number % 2 != 0 : rest > 0) {
        if (__builtin_add_overflow(number, plain.front() == '-' ? -1 : 1, &number)) ThrowAmountOverflow();
    }
    return Currency::FromUnits(number);
}

std::int64_t LeadingInteger(std::string_view value) noexcept {
    value = TrimLeft(value);
    const bool negative = !value.empty() && value.front() == '-';
    if (!value.empty() && (value.front() == '-' || value.front() == '+')) value.remove_prefix(1);
    std::int64_t result = 0;
    for (const char c : value) {
        if (!IsDigit(c) || result > 99999999999999999) break;
        result = result * 10 + (c - '0');
    }
    return negative ? -result : result;
}

std::string NumberText(double value) {
    if (IsWhole(value)) return std::to_string(static_cast<std::int64_t>(value));
    std::array<char, 40> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 15);
    std::string result(buffer.data(), end);
    for (char& c : result) {
        if (c == '.') c = ',';
        if (c == 'e') c = 'E';
    }
    return result == "-0" ? "0" : result;
}

std::string NumberText(Currency value) {
    std::string result = FormatDecimals(value, 4, false);
    while (result.back() == '0') result.pop_back();
    if (result.back() == ',') result.pop_back();
    return result;
}

std::string FormatDecimals(Currency value, int decimals, bool grouped) {
    std::int64_t step = 1;  // ten-thousandths in one unit of the last decimal
    for (int i = decimals; i < 4; ++i) step *= 10;
    const std::int64_t units = value.Units();
    const std::uint64_t magnitude =
        units < 0 ? ~static_cast<std::uint64_t>(units) + 1 : static_cast<std::uint64_t>(units);
    const std::uint64_t rounded =
        magnitude / step + (magnitude % step >= static_cast<std::uint64_t>(step + 1) / 2 ? 1 : 0);

    std::array<char, 32> buffer{};
    char* const last = buffer.data() + buffer.size();
    char* at = last;
    std::uint64_t rest = rounded;
    int digits = 0;
    do {
        if (digits == decimals && decimals > 0) *--at = ',';
        if (grouped && digits > decimals && (digits - decimals) % 3 == 0) *--at = '.';
        *--at = static_cast<char>('0' + rest % 10);
        rest /= 10;
        ++digits;
    } while (rest != 0 || digits <= decimals);
    if (units < 0 && rounded != 0) *--at = '-';
    return {at, last};
}

std::string FormatInteger(std::int64_t value, bool grouped) {
    std::string result = std::to_string(value);
    if (!grouped) return result;
    const std::size_t first = value < 0 ? 1 : 0;
    for (std::size_t at = result.size(); at > first + 3;) {
        at -= 3;
        result.insert(at, 1, '.');
    }
    return result;
}

std::string FormatZeros(std::int64_t value, int digits) {
    std::string result = std::to_string(value < 0 ? -value : value);
    if (result.size() < static_cast<std::size_t>(digits)) {
        result.insert(0, static_cast<std::size_t>(digits) - result.size(), '0');
    }
    return value < 0 ? "-" + result : result;
}

std::int16_t ToInt16(double value, std::string_view what) { return ToInteger<std::int16_t>(value, what); }
std::int32_t ToInt32(double value, std::string_view what) { return ToInteger<std::int32_t>(value, what); }
std::int64_t ToInt64(double value, std::string_view what) { return ToInteger<std::int64_t>(value, what); }

}  // namespace vlm::text
