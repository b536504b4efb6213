#include "values/DateText.h"

#include <array>

#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::text {

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"gennaio",   "febbraio", "marzo",    "aprile",
                                                      "maggio",    "giugno",   "luglio",   "agosto",
                                                      "settembre", "ottobre",  "novembre", "dicembre"};

/// Takes a date apart from its beginning on.
class DateReader {
public:
    explicit DateReader(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }
    bool Accept(std::string_view oneOf) {
        if (rest_.empty() || oneOf.find(rest_.front()) == std::string_view::npos) return false;
        rest_.remove_prefix(1);
        return true;
    }
    /// Up to four digits; -1 for none and for more.
    int Number() {
        std::size_t digits = 0;
        int number = 0;
        for (; digits < rest_.size() && rest_[digits] >= '0' && rest_[digits] <= '9'; ++digits) {
            if (digits == 4) return -1;
            number = number * 10 + (rest_[digits] - '0');
        }
        rest_.remove_prefix(digits);
        return digits == 0 ? -1 : number;
    }
    /// A month by its number, or by its name or the first three and more of its letters.
    int Month() {
        const std::string_view word = rest_.substr(0, rest_.find_first_of(" /-.0123456789"));
        if (word.empty()) return Number();
        for (std::size_t month = 0; month < kMonths.size(); ++month) {
            if (word.size() < 3 || !EqualNoCase(Left(kMonths[month], word.size()), word)) continue;
            rest_.remove_prefix(word.size());
            return static_cast<int>(month) + 1;
        }
        return -1;
    }
    void SkipBlanks() { rest_ = TrimLeft(rest_); }

private:
    std::string_view rest_;
};

/// The hundred years of a year of two digits.
int FullYear(int year) { return year < 0 || year > 99 ? year : year + (year < 30 ? 2000 : 1900); }

std::optional<Date> DayOf(DateReader& reader) {
    constexpr std::string_view kSeparators = "/-. ";
    const int first = reader.Number();
    if (!reader.Accept(kSeparators)) return std::nullopt;
    const int second = reader.Month();
    if (!reader.Accept(kSeparators)) return std::nullopt;
    const int third = reader.Number();
    if (first < 0 || second < 0 || third < 0) return std::nullopt;
    if (first > 99) return Date::FromYmd(first, second, third);
    const auto date = Date::FromYmd(FullYear(third), second, first);
    return date ? date : Date::FromYmd(FullYear(third), first, second);  // a month first, when nothing else fits
}

/// "HH:MM:SS" of what is left; "" when it is no time of day.
std::string TimeOf(DateReader& reader) {
    std::string time;
    for (int part = 0; part < 3; ++part) {
        if (part == 2 && reader.AtEnd()) return time + ":00";
        if (part > 0 && !reader.Accept(":.")) return {};
        const int number = reader.Number();
        if (number < 0 || number > 59) return {};
        time += (part == 0 ? "" : ":") + FormatZeros(number, 2);
    }
    return reader.AtEnd() ? time : std::string();
}

}  // namespace

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
    const Date::Civil civil = date.ToCivil();
    return std::string(kDays.at(static_cast<std::size_t>(DayOfWeek(date) - 1))) + ' ' + FormatZeros(civil.day, 2) +
           ' ' + std::string(kMonths.at(static_cast<std::size_t>(civil.month - 1))) + ' ' + FormatZeros(civil.year, 4);
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

std::optional<Date> ParseDateText(std::string_view value) {
    value = Trim(value);
    if (const auto date = ParseIsoDate(value)) return date;
    DateReader reader(value);
    const std::optional<Date> day = DayOf(reader);
    if (!day || reader.AtEnd()) return day;
    if (!reader.Accept(" ")) return std::nullopt;
    reader.SkipBlanks();
    const std::string time = TimeOf(reader);
    return time.empty() ? std::nullopt : ParseIsoDate(IsoDate(*day) + ' ' + time);
}

}  // namespace vlm::text
