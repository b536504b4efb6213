#include "Parameters.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <map>

#include "values/CodePage1252.h"
#include "values/Date.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

constexpr std::uint64_t kNull64 = 0xFFFFFFFFFFFFFFFF;
constexpr std::uint64_t kNull32 = 0xFFFFFFFF, kNull16 = 0xFFFF;
constexpr std::uint64_t kUnknownLength = kNull64 - 1;
constexpr int kMoneyDecimals = 4;
constexpr std::size_t kCollationBytes = 5;

enum class Family { Integer, Bit, Float, Money, Decimal, DateTime, Date, Time, DateTime2, Ansi, Wide, Binary };
enum class Length { Fixed, Byte, Two, Four };  // how a value's length is told

struct Type {
    int code;
    Family family;
    Length length;
    int width = 0;  // of a fixed one
};

constexpr Type kTypes[] = {
    {0x30, Family::Integer, Length::Fixed, 1},  {0x34, Family::Integer, Length::Fixed, 2},
    {0x38, Family::Integer, Length::Fixed, 4},  {0x7F, Family::Integer, Length::Fixed, 8},
    {0x32, Family::Bit, Length::Fixed, 1},      {0x3B, Family::Float, Length::Fixed, 4},
    {0x3E, Family::Float, Length::Fixed, 8},    {0x3C, Family::Money, Length::Fixed, 8},
    {0x7A, Family::Money, Length::Fixed, 4},    {0x3D, Family::DateTime, Length::Fixed, 8},
    {0x3A, Family::DateTime, Length::Fixed, 4}, {0x26, Family::Integer, Length::Byte},
    {0x68, Family::Bit, Length::Byte},          {0x6D, Family::Float, Length::Byte},
    {0x6E, Family::Money, Length::Byte},        {0x6A, Family::Decimal, Length::Byte},
    {0x6C, Family::Decimal, Length::Byte},      {0x6F, Family::DateTime, Length::Byte},
    {0x28, Family::Date, Length::Byte},         {0x29, Family::Time, Length::Byte},
    {0x2A, Family::DateTime2, Length::Byte},    {0xA7, Family::Ansi, Length::Two},
    {0xAF, Family::Ansi, Length::Two},          {0xE7, Family::Wide, Length::Two},
    {0xEF, Family::Wide, Length::Two},          {0xA5, Family::Binary, Length::Two},
    {0xAD, Family::Binary, Length::Two},        {0x23, Family::Ansi, Length::Four},
    {0x63, Family::Wide, Length::Four},         {0x22, Family::Binary, Length::Four},
};

/// A type with what its description says beyond its code.
struct TypeInfo {
    Type type;
    int scale = 0;
    bool pieces = false;  // a text without a limit
};

std::int64_t Signed(std::string_view bytes) {
    ByteReader reader(bytes);
    const int width = static_cast<int>(bytes.size());
    if (width != 1 && width != 2 && width != 4 && width != 8) throw ProtocolError("a number's width cannot be");
    const std::uint64_t value = reader.Number(width);
    const int unused = 64 - 8 * width;
    if (width == 1) return static_cast<std::int64_t>(value);  // the only one without a sign
    return static_cast<std::int64_t>(value << unused) >> unused;
}

std::string FloatText(std::string_view bytes) {
    double value = 0;
    if (bytes.size() == 8) {
        value = std::bit_cast<double>(ByteReader(bytes).Number(8));
    } else if (bytes.size() == 4) {
        value = std::bit_cast<float>(static_cast<std::uint32_t>(ByteReader(bytes).Number(4)));
    } else {
        throw ProtocolError("a number's width cannot be");
    }
    if (!std::isfinite(value)) throw Error("Un parametro non è un numero.");
    char digits[40];
    std::string text(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    if (text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

/// A whole number of which the last `scale` digits are decimals.
std::string Scaled(std::string digits, int scale, bool negative) {
    const auto decimals = static_cast<std::size_t>(scale);
    if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
    if (decimals > 0) digits.insert(digits.size() - decimals, 1, '.');
    return (negative ? "-" : "") + digits;
}

std::string MoneyText(std::string_view bytes) {
    std::int64_t units = Signed(bytes);
    if (bytes.size() == 8) {  // the high half comes first
        const auto turned = std::rotl(static_cast<std::uint64_t>(units), 32);
        units = static_cast<std::int64_t>(turned);
    }
    const auto bits = static_cast<std::uint64_t>(units);
    return Scaled(std::to_string(units < 0 ? 0 - bits : bits), kMoneyDecimals, units < 0);
}

/// A sign (1 for plus) and up to sixteen bytes of digits.
std::string DecimalText(std::string_view bytes, int scale) {
    if (bytes.size() > 17) throw ProtocolError("a number's width cannot be");
    std::string digits;  // the last one first
    for (std::size_t at = bytes.size(); at-- > 1;) {
        unsigned carried = static_cast<unsigned char>(bytes[at]);
        for (char& digit : digits) {
            carried += static_cast<unsigned>(digit - '0') * 256;
            digit = static_cast<char>('0' + carried % 10);
            carried /= 10;
        }
        for (; carried > 0; carried /= 10) digits += static_cast<char>('0' + carried % 10);
    }
    std::reverse(digits.begin(), digits.end());
    return Scaled(digits.empty() ? "0" : digits, scale, bytes.front() == 0);
}

std::string Padded(unsigned value, std::size_t width) {
    std::string digits = std::to_string(value);
    return digits.insert(0, width > digits.size() ? width - digits.size() : 0, '0');
}

std::string DayText(std::int64_t days, std::chrono::sys_days start) {
    if (days < -1'000'000 || days > 4'000'000) throw ProtocolError("a date cannot be");
    const std::chrono::year_month_day day = start + std::chrono::days(days);
    return Padded(static_cast<unsigned>(static_cast<int>(day.year())), 4) + "-" +
           Padded(static_cast<unsigned>(day.month()), 2) + "-" + Padded(static_cast<unsigned>(day.day()), 2);
}

/// Nothing for midnight.
std::string TimeText(std::uint64_t seconds) {
    if (seconds >= 86400) throw ProtocolError("a time of day cannot be");
    const auto whole = static_cast<unsigned>(seconds);
    if (whole == 0) return {};
    return " " + Padded(whole / 3600, 2) + ":" + Padded(whole / 60 % 60, 2) + ":" + Padded(whole % 60, 2);
}

/// Three to five bytes of fractions of a second, as many as `scale` says.
std::string FractionText(std::string_view bytes, int scale) {
    if (bytes.size() < 3 || bytes.size() > 5) throw ProtocolError("a time's width cannot be");
    std::uint64_t value = ByteReader(bytes).Number(static_cast<int>(bytes.size()));
    for (; scale > 0; --scale) value /= 10;
    return TimeText(value);
}

std::string DateTimeText(std::string_view bytes) {
    using namespace std::chrono;
    static constexpr sys_days kStart = year(1900) / 1 / 1;
    ByteReader reader(bytes);
    if (bytes.size() == 4) {
        const std::uint64_t days = reader.Number(2);
        return DayText(static_cast<std::int64_t>(days), kStart) + TimeText(60 * reader.Number(2));
    }
    if (bytes.size() != 8) throw ProtocolError("a date's width cannot be");
    const std::int64_t days = Signed(reader.Take(4));
    return DayText(days, kStart) + TimeText((reader.Number(4) + 150) / 300 % 86400);
}

std::string DateText(std::string_view bytes) {
    using namespace std::chrono;
    static constexpr sys_days kStart = year(1) / 1 / 1;
    if (bytes.size() != 3) throw ProtocolError("a date's width cannot be");
    return DayText(static_cast<std::int64_t>(ByteReader(bytes).Number(3)), kStart);
}

std::string DateTime2Text(std::string_view bytes, int scale) {
    if (bytes.size() < 3) throw ProtocolError("a date's width cannot be");
    const std::size_t time = bytes.size() - 3;
    return DateText(bytes.substr(time)) + FractionText(bytes.substr(0, time), scale);
}

const Type& TypeOf(int code) {
    for (const Type& type : kTypes) {
        if (type.code == code) return type;
    }
    throw Error("Un parametro ha un tipo che il server non conosce (" + std::to_string(code) + ").");
}

TypeInfo ReadTypeInfo(ByteReader& reader, bool largeTexts) {
    TypeInfo info{TypeOf(reader.Byte())};
    const Family family = info.type.family;
    if (info.type.length == Length::Two) info.pieces = reader.Number(2) == kNull16 && largeTexts;
    if (info.type.length == Length::Four) reader.Take(4);
    const bool scaled = family == Family::Time || family == Family::DateTime2;
    if (info.type.length == Length::Byte && family != Family::Date && !scaled) reader.Take(1);
    if (family == Family::Decimal) reader.Take(1);  // precision
    if (family == Family::Decimal || scaled) info.scale = reader.Byte();
    if (family == Family::Ansi || family == Family::Wide) reader.Take(kCollationBytes);
    return info;
}

std::optional<std::string> ReadPieces(ByteReader& reader) {
    const std::uint64_t total = reader.Number(8);
    if (total == kNull64) return std::nullopt;
    std::string bytes;
    while (const std::uint64_t length = reader.Number(4)) bytes += reader.Take(length);
    if (total != kUnknownLength && total != bytes.size()) throw ProtocolError("a text's length is not its own");
    return bytes;
}

std::optional<std::string> ReadBytes(ByteReader& reader, const TypeInfo& info) {
    if (info.pieces) return ReadPieces(reader);
    const auto bytes = [&](std::uint64_t length, std::uint64_t null) -> std::optional<std::string> {
        if (length == null) return std::nullopt;
        return std::string(reader.Take(length));
    };
    switch (info.type.length) {
        case Length::Fixed:
            return bytes(static_cast<std::uint64_t>(info.type.width), kNull64);
        case Length::Byte:
            return bytes(reader.Number(1), 0);
        case Length::Two:
            return bytes(reader.Number(2), kNull16);
        case Length::Four:
            return bytes(reader.Number(4), kNull32);
    }
    return std::nullopt;
}

std::string ValueText(const std::string& bytes, const TypeInfo& info) {
    switch (info.type.family) {
        case Family::Integer:
            return std::to_string(Signed(bytes));
        case Family::Bit:
            return bytes.front() != 0 ? "1" : "0";
        case Family::Float:
            return FloatText(bytes);
        case Family::Money:
            return MoneyText(bytes);
        case Family::Decimal:
            return DecimalText(bytes, info.scale);
        case Family::DateTime:
            return DateTimeText(bytes);
        case Family::Date:
            return DateText(bytes);
        case Family::Time:
            return "1899-12-30" + FractionText(bytes, info.scale);
        case Family::DateTime2:
            return DateTime2Text(bytes, info.scale);
        case Family::Ansi:
            return text::FromAnsi(bytes);
        case Family::Wide:
            return FromWide(bytes);
        case Family::Binary:
            break;
    }
    throw Error("Un parametro contiene dati binari, che il server non conosce.");
}

}  // namespace

data::SqlToken Parameter::Literal() const {
    if (!value) return {data::SqlTokenKind::Name, "NULL", "NULL", false};
    if (isText) return {data::SqlTokenKind::Text, data::SqlTextLiteral(*value), *value, false};
    return {data::SqlTokenKind::Number, *value, *value, false};
}

Parameter ReadParameter(ByteReader& reader, bool largeTexts) {
    Parameter parameter;
    parameter.name = reader.Wide(reader.Byte());
    if (parameter.name.starts_with('@')) parameter.name.erase(0, 1);
    reader.Take(1);  // whether the caller wants it back
    const TypeInfo info = ReadTypeInfo(reader, largeTexts);
    parameter.isText = info.type.family >= Family::DateTime;
    if (const auto bytes = ReadBytes(reader, info)) parameter.value = ValueText(*bytes, info);
    return parameter;
}

Tokens WithParameters(Tokens statement, const Tokens& definitions, const std::vector<Parameter>& values) {
    std::map<std::string, const Parameter*> byName;
    std::size_t next = 0;
    for (std::size_t at = 0; at < definitions.size() && next < values.size(); ++at) {
        const std::string_view name = VariableAt(definitions, at);
        if (!name.empty()) byName[text::FoldCase(name)] = &values[next++];
    }
    for (const Parameter& value : values) {
        if (!value.name.empty()) byName[text::FoldCase(value.name)] = &value;
    }
    Tokens replaced;
    replaced.reserve(statement.size());
    for (std::size_t at = 0; at < statement.size(); ++at) {
        const std::string_view name = VariableAt(statement, at);
        const bool system = at > 0 && statement[at - 1].IsSymbol("@");  // "@@TRANCOUNT"
        const auto found = name.empty() || system ? byName.end() : byName.find(text::FoldCase(name));
        if (found == byName.end()) {
            replaced.push_back(std::move(statement[at]));
        } else {
            replaced.push_back(found->second->Literal());
            ++at;
        }
    }
    return replaced;
}

}  // namespace vlm::host::tds
