#include "ColumnFormat.h"

#include <bit>
#include <charconv>
#include <chrono>

#include "sqlite/SqliteConnection.h"
#include "values/ColumnConversion.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

enum WireType {
    kText = 0x23,
    kNText = 0x63,
    kIntN = 0x26,
    kBitN = 0x68,
    kDecimalN = 0x6A,
    kFloatN = 0x6D,
    kMoneyN = 0x6E,
    kDateTimeN = 0x6F,
    kVarChar = 0xA7,
    kNVarChar = 0xE7,
};

constexpr int kNullableAndWritable = 0x09;
constexpr int kDecimalPrecision = 19, kDecimalScale = 4;
constexpr int kLongest = 8000;     // bytes of a text that is declared with a length
constexpr int kExpression = 4000;  // characters of a text that is declared nowhere
constexpr std::uint64_t kNoLargeText = 0xFFFFFFFFFFFFFFFF;

// A text without a limit is preceded by a place where it is stored and a moment; what they say counts for nobody.
constexpr std::string_view kStoredAt(
    "\x10"
    "asltds  asltds  "
    "asltds  ");

[[noreturn]] void Refuse(const data::Recordset& rows, int ordinal) {
    throw Error("Il valore della colonna " + std::string(rows.FieldName(ordinal)) + " non sta nel suo tipo.");
}

/// The number in "VARCHAR(30)"; 0 when there is none.
int DeclaredLength(std::string_view declared) {
    const std::size_t opening = declared.find('(');
    int length = 0;
    if (opening != std::string_view::npos) {
        const std::string_view rest = text::TrimLeft(declared.substr(opening + 1));
        std::from_chars(rest.data(), rest.data() + rest.size(), length);
    }
    return length;
}

}  // namespace

ColumnFormat::ColumnFormat(const data::Recordset& rows, int ordinal, bool largeTexts)
    : ordinal_(ordinal), name_(rows.FieldName(ordinal)), largeTexts_(largeTexts) {
    struct Form {
        Kind kind;
        int width;
    };
    static constexpr Form kForms[] = {{Kind::Bit, 1},   {Kind::Integer, 2}, {Kind::Integer, 4}, {Kind::Integer, 8},
                                      {Kind::Float, 8}, {Kind::Money, 8},   {Kind::DateTime, 8}};
    const std::string declared = text::ToUpper(data::DeclaredTypeOf(rows, ordinal));
    const data::FieldType type = rows.TypeOf(ordinal);
    if (type == data::FieldType::Text) {
        TakeTextType(declared);
        return;
    }
    kind_ = kForms[static_cast<int>(type)].kind;
    width_ = kForms[static_cast<int>(type)].width;
    if (kind_ == Kind::Money && (declared.starts_with("DEC") || declared.starts_with("NUM"))) {
        kind_ = Kind::Decimal;
        width_ = 9;
    }
}

void ColumnFormat::TakeTextType(std::string_view declared) {
    const bool wide = declared.empty() || declared.starts_with('N');
    kind_ = wide ? Kind::Wide : Kind::Ansi;
    const int length = declared.empty() ? kExpression : DeclaredLength(declared);
    const bool unlimited =
        declared.find("TEXT") != std::string_view::npos || declared.find("MAX") != std::string_view::npos;
    width_ = (wide ? 2 : 1) * length;
    if (width_ == 0) width_ = kLongest;  // a VARCHAR that says nothing
    if (unlimited || width_ > kLongest) width_ = 0;
}

void ColumnFormat::AddDescription(ByteString& out) const {
    out.Add(0, largeTexts_ ? 4 : 2);  // user type
    out.Add(kNullableAndWritable, 2);
    AddType(out);
    out.AddCounted(name_, 1);
}

void ColumnFormat::AddType(ByteString& out) const {
    static constexpr int kTypes[] = {kBitN, kIntN, kFloatN, kMoneyN, kDecimalN, kDateTimeN, kVarChar, kNVarChar};
    const bool oldText = width_ == 0 && !largeTexts_;
    const bool text = kind_ == Kind::Ansi || kind_ == Kind::Wide;
    out.Add(!oldText ? kTypes[static_cast<int>(kind_)] : kind_ == Kind::Ansi ? kText : kNText, 1);
    if (!text) {
        out.Add(width_, 1);
        if (kind_ == Kind::Decimal) out.Add(kDecimalPrecision | kDecimalScale << 8, 2);
        return;
    }
    if (oldText) {
        out.Add(0x7FFFFFFF, 4);
    } else {
        out.Add(width_ == 0 ? 0xFFFF : width_, 2);
    }
    out.Add(kLatinCollation);
    if (oldText) out.Add(0, 2);  // the table's name
}

void ColumnFormat::AddNull(ByteString& out) const {
    if (kind_ != Kind::Ansi && kind_ != Kind::Wide) return out.Add(0, 1);
    if (width_ != 0) return out.Add(0xFFFF, 2);
    largeTexts_ ? out.Add(kNoLargeText, 8) : out.Add(0, 1);
}

void ColumnFormat::AddCell(const data::Recordset& rows, ByteString& out) const {
    if (rows.IsNull(ordinal_)) return AddNull(out);
    switch (kind_) {
        case Kind::Bit:
            out.Add(1, 1);
            return out.Add(rows.IntegerOf(ordinal_) != 0, 1);
        case Kind::Integer:
            return AddInteger(rows, out);
        case Kind::Float:
            return AddFloat(rows, out);
        case Kind::Money:
        case Kind::Decimal:
            return AddMoney(rows, out);
        case Kind::DateTime:
            return AddDateTime(rows, out);
        case Kind::Ansi:
        case Kind::Wide:
            return AddText(rows, out);
    }
}

void ColumnFormat::AddInteger(const data::Recordset& rows, ByteString& out) const {
    out.Add(width_, 1);
    if (width_ == 2) return out.Add(rows.Int16Of(ordinal_), 2);
    if (width_ == 4) return out.Add(rows.Int32Of(ordinal_), 4);
    out.Add(rows.IntegerOf(ordinal_), 8);
}

void ColumnFormat::AddFloat(const data::Recordset& rows, ByteString& out) const {
    const data::Value value = rows.ValueOf(ordinal_);
    if (std::holds_alternative<std::string>(value)) {
        data::ThrowMismatch(std::get<std::string>(value), rows.FieldName(ordinal_), "un numero");
    }
    out.Add(width_, 1);
    out.Add(std::bit_cast<std::uint64_t>(data::NumberOf(value)), 8);
}

/// Money has its high half first.
void ColumnFormat::AddMoney(const data::Recordset& rows, ByteString& out) const {
    const std::int64_t units = rows.AmountOf(ordinal_).Units();
    const auto bits = static_cast<std::uint64_t>(units);
    out.Add(width_, 1);
    if (kind_ == Kind::Money) {
        out.Add(bits >> 32, 4);
        return out.Add(bits, 4);
    }
    out.Add(units >= 0, 1);
    out.Add(units >= 0 ? bits : 0 - bits, 8);
}

/// Days since 1/1/1900 and three hundredths of a second.
void ColumnFormat::AddDateTime(const data::Recordset& rows, ByteString& out) const {
    using namespace std::chrono;
    const Date::Civil civil = *rows.CivilOf(ordinal_);
    if (civil.year < 1753) Refuse(rows, ordinal_);
    const sys_days day = year(civil.year) / civil.month / civil.day;
    out.Add(width_, 1);
    out.Add(static_cast<std::uint64_t>((day - sys_days(year(1900) / 1 / 1)).count()), 4);
    out.Add(std::uint64_t{300} * static_cast<std::uint64_t>((civil.hour * 60 + civil.minute) * 60 + civil.second), 4);
}

void ColumnFormat::AddText(const data::Recordset& rows, ByteString& out) const {
    const bool pieces = width_ == 0 && largeTexts_;
    if (pieces) out.Add(kNoLargeText - 1, 8);  // a length that is not told beforehand
    if (width_ == 0 && !largeTexts_) out.Add(kStoredAt);
    const int counter = width_ == 0 ? 4 : 2;
    const std::size_t count = out.Reserve(counter);
    kind_ == Kind::Ansi ? out.AddAnsi(rows.TextOf(ordinal_)) : out.AddWide(rows.TextOf(ordinal_));
    const std::size_t bytes = out.Size() - count - static_cast<std::size_t>(counter);
    if (width_ != 0 && bytes > static_cast<std::size_t>(width_)) Refuse(rows, ordinal_);
    out.Fill(count, bytes, counter);
    if (pieces && bytes > 0) out.Add(0, 4);
}

}  // namespace vlm::host::tds
