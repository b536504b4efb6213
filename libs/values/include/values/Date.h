#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace vlm {

/// An automation date: days since 30/12/1899, the fraction being the time of day (also before that day, where the
/// whole part is negative and the fraction still counts forward). "No date" is std::optional's business.
class Date {
public:
    struct Civil {
        int year = 1899, month = 12, day = 30;
        int hour = 0, minute = 0, second = 0;
        auto operator<=>(const Civil&) const = default;
    };

    constexpr Date() = default;
    constexpr explicit Date(double serial) : serial_(serial) {}
    /// Nothing for a day that the calendar does not have (31/02, year outside 100 to 9999).
    static std::optional<Date> FromCivil(const Civil& civil);
    static std::optional<Date> FromYmd(int year, int month, int day) { return FromCivil({year, month, day, 0, 0, 0}); }

    constexpr double Serial() const noexcept { return serial_; }
    Civil ToCivil() const;

    /// Orders by the moment, not by the serial's arithmetic.
    std::partial_ordering operator<=>(const Date& other) const;
    bool operator==(const Date& other) const { return serial_ == other.serial_; }

private:
    double serial_ = 0;
};

/// A day and time of day as `YYYY-MM-DD` text says it, see ParseIsoDate, without the arithmetic of a serial.
std::optional<Date::Civil> ParseIsoCivil(std::string_view text);
/// `YYYY-MM-DD`, alone or followed by " HH:MM:SS" (or "T", or with "HH:MM", or with a fraction, which is dropped).
std::optional<Date> ParseIsoDate(std::string_view text);
/// `YYYY-MM-DD`, with " HH:MM:SS" only when the date has a time of day.
std::string IsoDate(Date date);

/// 1 to 7, Monday first.
int DayOfWeek(Date date);

}  // namespace vlm
