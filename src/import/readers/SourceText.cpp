#include "SourceText.h"

#include <array>

#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr int kLastYearOf2000 = 29;

/// Takes up to `longest` digits off `rest`; nothing, and nothing taken, when there are none or more.
struct Digits {
    int value = 0;
    int count = 0;
};
Digits TakeDigits(std::string_view& rest, int longest) {
    Digits digits;
    while (!rest.empty() && rest.front() >= '0' && rest.front() <= '9' && digits.count <= longest) {
        digits.value = digits.value * 10 + (rest.front() - '0');
        ++digits.count;
        rest.remove_prefix(1);
    }
    return digits.count > longest ? Digits{} : digits;
}

int FullYear(Digits year) {
    if (year.count > 2) return year.value;
    return year.value + (year.value <= kLastYearOf2000 ? 2000 : 1900);
}

/// "HH:MM", "HH:MM:SS" (points are as good as colons).
bool TakeTime(std::string_view rest, Date::Civil& date) {
    rest = text::Trim(rest);
    const std::array<int*, 3> parts = {&date.hour, &date.minute, &date.second};
    std::size_t part = 0;
    while (part < parts.size()) {
        const Digits digits = TakeDigits(rest, 2);
        if (digits.count == 0) return false;
        *parts[part++] = digits.value;
        if (rest.empty()) return part > 1;
        if (rest.front() != ':' && rest.front() != '.') return false;
        rest.remove_prefix(1);
    }
    return false;
}

/// Where day, month and year stand in a source's text, in characters from 1. A length of 0 goes on to the end.
struct DateLayout {
    std::string_view name;
    struct Slice {
        std::size_t position, length;
    } day, month, year;
};

constexpr std::array<DateLayout, 6> kDateLayouts = {{
    {"GGMMAA", {1, 2}, {3, 2}, {5, 0}},
    {"GGMMAAAA", {1, 2}, {3, 2}, {5, 0}},
    {"MMGGAA", {3, 2}, {1, 2}, {5, 0}},
    {"MMGGAAAA", {3, 2}, {1, 2}, {5, 0}},
    {"AAMMGG", {5, 2}, {3, 2}, {1, 2}},
    {"AAAAMMGG", {7, 2}, {5, 2}, {1, 4}},
}};

std::string_view Cut(std::string_view value, DateLayout::Slice slice) {
    return text::Mid(value, slice.position, slice.length == 0 ? std::string_view::npos : slice.length);
}

std::string Slashed(std::string_view day, std::string_view month, std::string_view year) {
    std::string date(text::Trim(day));
    return date.append("/").append(text::Trim(month)).append("/").append(year);
}

}  // namespace

std::string JoinWords(std::string_view value) {
    std::string joined;
    int words = 0;
    for (value = text::Trim(value); !value.empty(); value = text::TrimLeft(value)) {
        const std::string_view word = value.substr(0, value.find(' '));
        if (words++ > 0) joined += ' ';
        joined += word;
        value.remove_prefix(word.size());
    }
    return words > 1 ? joined : std::string();
}

std::string WithApostrophes(std::string_view value) {
    std::string result;
    while (!value.empty()) {
        const char32_t character = text::Decode(value);
        text::Encode(character == 0xB4 || character == U'`' ? U'\'' : character, result);
    }
    return result;
}

std::string ExemptionCode(std::string_view value) {
    const bool isShort = value.size() == 2 && value[0] == 'E' && value[1] >= '1' && value[1] <= '5';
    return isShort ? std::string("E0") + value[1] : std::string(value);
}

std::optional<Date> ParseSourceDate(std::string_view value) {
    value = text::Trim(value);
    std::array<Digits, 3> parts;
    for (std::size_t part = 0; part < parts.size(); ++part) {
        parts[part] = TakeDigits(value, 4);
        if (parts[part].count == 0) return std::nullopt;
        if (part == 2) break;
        if (value.empty() || (value.front() != '/' && value.front() != '-' && value.front() != '.'))
            return std::nullopt;
        value.remove_prefix(1);
    }
    const bool yearFirst = parts[0].count == 4;
    const Digits& day = parts[yearFirst ? 2 : 0];
    const Digits& year = parts[yearFirst ? 0 : 2];
    if (day.count > 2 || parts[1].count > 2 || year.count == 3) return std::nullopt;
    Date::Civil date{FullYear(year), parts[1].value, day.value, 0, 0, 0};
    if (!value.empty() && (value.front() != ' ' || !TakeTime(value, date))) return std::nullopt;
    return Date::FromCivil(date);
}

bool IsBlankDate(std::string_view value) noexcept { return value.find_first_not_of(" 0/-.") == std::string_view::npos; }

std::string ConvertTemplateDate(std::string_view value, std::string_view dateFormat) {
    for (const DateLayout& layout : kDateLayouts) {
        if (layout.name != dateFormat) continue;
        std::string date(Cut(value, layout.day));
        date.append("/").append(Cut(value, layout.month)).append("/").append(Cut(value, layout.year));
        return date;
    }
    return std::string(value);
}

std::string DateFromYmd(std::string_view value) {
    if (value.size() != 8 || text::Length(value) != 8) return {};
    return Slashed(value.substr(6, 2), value.substr(4, 2), value.substr(0, 4));
}

std::string DateFromDmy(std::string_view value) {
    if (value.size() != 8 || text::Length(value) != 8) return {};
    return Slashed(value.substr(0, 2), value.substr(2, 2), value.substr(4, 4));
}

}  // namespace vlm
