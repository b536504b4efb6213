#include "SqlDateLiteral.h"

#include <cstdio>

#include "values/Date.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

struct Digits {
    int value = 0;
    std::size_t count = 0;
};

/// Takes the leading digits, nine at most, off `rest`.
Digits TakeDigits(std::string_view& rest) {
    Digits digits;
    while (!rest.empty() && IsDigit(rest.front()) && digits.count < 9) {
        digits.value = digits.value * 10 + (rest.front() - '0');
        ++digits.count;
        rest.remove_prefix(1);
    }
    return digits;
}

bool TakeCharacter(std::string_view& rest, char c) {
    if (rest.empty() || rest.front() != c) return false;
    rest.remove_prefix(1);
    return true;
}

/// Takes the day off `rest`; false when it has not the shape of one.
bool TakeDay(std::string_view& rest, Date::Civil& day) {
    const Digits first = TakeDigits(rest);
    if (first.count == 8) {
        day.year = first.value / 10000;
        day.month = first.value / 100 % 100;
        day.day = first.value % 100;
        return true;
    }
    const char separator = rest.empty() ? '\0' : rest.front();
    if (first.count == 0 || (separator != '/' && separator != '-')) return false;
    rest.remove_prefix(1);
    const Digits second = TakeDigits(rest);
    if (second.count == 0 || !TakeCharacter(rest, separator)) return false;
    const Digits third = TakeDigits(rest);
    if (third.count == 0) return false;
    const bool yearFirst = first.count == 4;
    day.year = yearFirst ? first.value : third.value;
    day.month = yearFirst ? second.value : first.value;
    day.day = yearFirst ? third.value : second.value;
    return true;
}

/// `hh:mm[:ss[.fraction]] [AM|PM]`, the whole of `rest`.
bool TakeTime(std::string_view rest, Date::Civil& time, std::string& fraction) {
    const Digits hour = TakeDigits(rest);
    if (hour.count == 0 || hour.count > 2 || !TakeCharacter(rest, ':')) return false;
    const Digits minute = TakeDigits(rest);
    if (minute.count == 0) return false;
    Digits second;
    if (TakeCharacter(rest, ':')) {
        second = TakeDigits(rest);
        if (second.count == 0) return false;
        if (TakeCharacter(rest, '.')) {
            for (; !rest.empty() && IsDigit(rest.front()); rest.remove_prefix(1)) fraction += rest.front();
        }
    }
    while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();
    time.hour = hour.value;
    time.minute = minute.value;
    time.second = second.value;
    rest = text::Trim(rest);
    const bool morning = text::EqualNoCase(rest, "AM");
    const bool afternoon = text::EqualNoCase(rest, "PM");
    if (morning || afternoon) time.hour = time.hour % 12 + (afternoon ? 12 : 0);
    return (rest.empty() || morning || afternoon) && time.hour < 24 && time.minute < 60 && time.second < 60;
}

std::string Iso(const Date::Civil& civil, bool withTime) {
    char buffer[96];
    const int day = std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", civil.year, civil.month, civil.day);
    if (!withTime) return std::string(buffer, static_cast<std::size_t>(day));
    const int all = std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", civil.year, civil.month,
                                  civil.day, civil.hour, civil.minute, civil.second);
    return std::string(buffer, static_cast<std::size_t>(all));
}

}  // namespace

std::optional<SqlDateLiteral> ParseSqlDate(std::string_view literal) {
    std::string_view rest = text::Trim(literal);
    Date::Civil civil{0, 0, 0, 0, 0, 0};
    if (!TakeDay(rest, civil)) return std::nullopt;
    if (!rest.empty() && rest.front() != ' ' && rest.front() != 'T') return std::nullopt;
    if (!rest.empty()) rest.remove_prefix(1);
    std::string fraction;
    rest = text::Trim(rest);
    if ((!rest.empty() && !TakeTime(rest, civil, fraction)) || !Date::FromYmd(civil.year, civil.month, civil.day)) {
        throw Error("La data '" + std::string(literal) + "' dell'istruzione SQL non è valida.");
    }
    const bool midnight = civil.hour == 0 && civil.minute == 0 && civil.second == 0 && fraction.empty();
    SqlDateLiteral date{Iso(civil, !midnight), midnight};
    if (!fraction.empty()) date.iso += '.' + fraction;
    return date;
}

}  // namespace vlm::data
