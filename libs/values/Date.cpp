#include "values/Date.h"

#include <chrono>
#include <cmath>
#include <cstdint>

namespace vlm {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

constexpr std::chrono::sys_days kDayZero = std::chrono::year(1899) / 12 / 30;

/// On the Gregorian calendar, also before it was in use.
std::chrono::year_month_day DayOf(const Date::Civil& civil) {
    return std::chrono::year(civil.year) / civil.month / civil.day;
}

/// Far numbers are refused first: the calendar's own types would wrap them.
bool IsMoment(const Date::Civil& civil) {
    const auto within = [](int value, int first, int last) { return value >= first && value <= last; };
    return within(civil.year, 100, 9999) && within(civil.month, 1, 12) && within(civil.day, 1, 31) &&
           DayOf(civil).ok() && within(civil.hour, 0, 23) && within(civil.minute, 0, 59) && within(civil.second, 0, 59);
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
    const auto days = (std::chrono::sys_days(DayOf(civil)) - kDayZero).count();
    const double time =
        static_cast<double>(civil.hour * 3600 + civil.minute * 60 + civil.second) / static_cast<double>(kSecondsPerDay);
    return Date(static_cast<double>(days) + (days < 0 ? -time : time));
}

Date::Civil Date::ToCivil() const {
    auto days = static_cast<std::int64_t>(std::trunc(serial_));
    auto seconds = std::llround(std::abs(serial_ - std::trunc(serial_)) * static_cast<double>(kSecondsPerDay));
    if (seconds == kSecondsPerDay) {
        seconds = 0;
        ++days;
    }
    const std::chrono::year_month_day day(kDayZero + std::chrono::days(days));
    return {static_cast<int>(day.year()),
            static_cast<int>(static_cast<unsigned int>(day.month())),
            static_cast<int>(static_cast<unsigned int>(day.day())),
            static_cast<int>(seconds / 3600),
            static_cast<int>(seconds / 60 % 60),
            static_cast<int>(seconds % 60)};
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
