#include "values/DateText.h"

#include <array>

#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::text {

std::string DdMmYyyy(Date date) { return DdMmYyyy(date.ToCivil()); }

std::string DdMmYyyy(const Date::Civil& date) {
    std::string result(8, '0');
    int rest = date.day * 1000000 + date.month * 10000 + date.year;  // the calendar ends with the year 9999
    for (std::size_t at = 8; rest > 0; rest /= 10) result[--at] = static_cast<char>('0' + rest % 10);
    return result;
}

std::string DdMmYyyySlashes(Date date) {
    const Date::Civil civil = date.ToCivil();
    return FormatZeros(civil.day, 2) + '/' + FormatZeros(civil.month, 2) + '/' + FormatZeros(civil.year, 4);
}

std::string LongDate(Date date) {
    static constexpr std::array<const char*, 7> kDays = {"lunedì",  "martedì", "mercoledì", "giovedì",
                                                         "venerdì", "sabato",  "domenica"};
    static constexpr std::array<const char*, 12> kMonths = {"gennaio",   "febbraio", "marzo",    "aprile",
                                                            "maggio",    "giugno",   "luglio",   "agosto",
                                                            "settembre", "ottobre",  "novembre", "dicembre"};
    const Date::Civil civil = date.ToCivil();
    return std::string(kDays.at(static_cast<std::size_t>(DayOfWeek(date) - 1))) + ' ' + FormatZeros(civil.day, 2) +
           ' ' + kMonths.at(static_cast<std::size_t>(civil.month - 1)) + ' ' + FormatZeros(civil.year, 4);
}

std::string MonthFirst(int month, int year) { return std::to_string(month) + "/1/" + std::to_string(year); }

std::optional<Date> ParseItalianDate(std::string_view value) {
    value = Trim(value);
    std::array<int, 3> parts{};
    std::array<std::size_t, 3> digits{};
    std::size_t part = 0;
    for (const char c : value) {
        if (c >= '0' && c <= '9') {
            if (++digits.at(part) > 4) return std::nullopt;
            parts.at(part) = parts.at(part) * 10 + (c - '0');
        } else if ((c == '/' || c == '-' || c == '.') && part < 2 && digits.at(part) > 0) {
            ++part;
        } else {
            return std::nullopt;
        }
    }
    if (digits[0] > 2 || digits[1] > 2 || digits[2] != 4) return std::nullopt;
    return Date::FromYmd(parts[2], parts[1], parts[0]);
}

}  // namespace vlm::text
