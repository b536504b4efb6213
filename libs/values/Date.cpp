#include "values/Date.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace vlm {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

/// Days from 30/12/1899; the calendar is Gregorian throughout.
std::int64_t DaysFromCivil(int year, int month, int day) {
    const std::int64_t y = month <= 2 ? year - 1 : year;
    const std::int64_t era = y / 400;
    const std::int64_t yearOfEra = y - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 693899;
}

void CivilFromDays(std::int64_t days, Date::Civil& civil) {
    days += 693899;
    const std::int64_t era = days / 146097;
    const std::int64_t dayOfEra = days - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t month = (5 * dayOfYear + 2) / 153;
    civil.day = static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1);
    civil.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
    civil.year = static_cast<int>(yearOfEra + era * 400 + (civil.month <= 2 ? 1 : 0));
}

bool IsDay(int year, int month, int day) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return day <= kDays.at(static_cast<std::size_t>(month - 1)) + (month == 2 && leap ? 1 : 0);
}

bool IsMoment(const Date::Civil& civil) {
    return IsDay(civil.year, civil.month, civil.day) && civil.hour >= 0 && civil.hour <= 23 && civil.minute >= 0 &&
           civil.minute <= 59 && civil.second >= 0 && civil.second <= 59;
}

/// Seconds from 30/12/1899, the fraction counting forward on every day.
double Moment(double serial) {
    const double day = std::trunc(serial);
    return day + std::abs(serial - day);
}

bool ReadDigits(std::string_view text, std::size_t at, std::size_t count, int& value) {
    if (at + count > text.size()) return false;
    value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') return false;
        value = value * 10 + (text[i] - '0');
    }
    return true;
}

bool ReadTime(std::string_view text, Date::Civil& civil) {
    if (!ReadDigits(text, 0, 2, civil.hour) || text.size() < 5 || text[2] != ':' ||
        !ReadDigits(text, 3, 2, civil.minute)) {
        return false;
    }
    text.remove_prefix(5);
    if (!text.empty()) {
        if (text[0] != ':' || !ReadDigits(text, 1, 2, civil.second)) return false;
        text.remove_prefix(3);
        if (!text.empty() && (text[0] != '.' || text.find_first_not_of("0123456789", 1) != std::string_view::npos)) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::optional<Date> Date::FromCivil(const Civil& civil) {
    if (!IsMoment(civil)) return std::nullopt;
    const std::int64_t days = DaysFromCivil(civil.year, civil.month, civil.day);
    const double time =
        static_cast<double>(civil.hour * 3600 + civil.minute * 60 + civil.second) / static_cast<double>(kSecondsPerDay);
    return Date(static_cast<double>(days) + (days < 0 ? -time : time));
}

Date::Civil Date::ToCivil() const {
    Civil civil;
    auto days = static_cast<std::int64_t>(std::trunc(serial_));
    auto seconds = std::llround(std::abs(serial_ - std::trunc(serial_)) * static_cast<double>(kSecondsPerDay));
    if (seconds == kSecondsPerDay) {
        seconds = 0;
        ++days;
    }
    CivilFromDays(days, civil);
    civil.hour = static_cast<int>(seconds / 3600);
    civil.minute = static_cast<int>(seconds / 60 % 60);
    civil.second = static_cast<int>(seconds % 60);
    return civil;
}

std::partial_ordering Date::operator<=>(const Date& other) const { return Moment(serial_) <=> Moment(other.serial_); }

std::optional<Date::Civil> ParseIsoCivil(std::string_view text) {
    Date::Civil civil;
    if (text.size() < 10 || text[4] != '-' || text[7] != '-' || !ReadDigits(text, 0, 4, civil.year) ||
        !ReadDigits(text, 5, 2, civil.month) || !ReadDigits(text, 8, 2, civil.day)) {
        return std::nullopt;
    }
    if (text.size() > 10) {
        if ((text[10] != ' ' && text[10] != 'T') || !ReadTime(text.substr(11), civil)) return std::nullopt;
    }
    return IsMoment(civil) ? std::optional(civil) : std::nullopt;
}

std::optional<Date> ParseIsoDate(std::string_view text) {
    const std::optional<Date::Civil> civil = ParseIsoCivil(text);
    return civil ? Date::FromCivil(*civil) : std::nullopt;
}

std::string IsoDate(Date date) {
    const Date::Civil civil = date.ToCivil();
    const auto put = [](std::string& out, int value, int digits) {
        const std::string text = std::to_string(value);
        out.append(static_cast<std::size_t>(digits) - text.size(), '0').append(text);
    };
    std::string result;
    put(result, civil.year, 4);
    put(result += '-', civil.month, 2);
    put(result += '-', civil.day, 2);
    if (civil.hour != 0 || civil.minute != 0 || civil.second != 0) {
        put(result += ' ', civil.hour, 2);
        put(result += ':', civil.minute, 2);
        put(result += ':', civil.second, 2);
    }
    return result;
}

int DayOfWeek(Date date) {
    // 30/12/1899 was a Saturday.
    const auto days = static_cast<std::int64_t>(std::trunc(date.Serial()));
    return static_cast<int>(((days + 5) % 7 + 7) % 7) + 1;
}

}  // namespace vlm
