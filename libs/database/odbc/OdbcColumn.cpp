#include "OdbcColumn.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "values/ColumnConversion.h"

namespace vlm::data::odbc {

namespace {

/// The longest text that a declared width may have without being one of the unlimited types.
constexpr SQLULEN kLongestText = 8000;
/// Sign, point, leading zero and closing zero beside the digits of the widest number.
constexpr std::size_t kDecimalWidth = 48;

OdbcColumn TextColumn(SQLULEN characters) {
    if (characters == 0 || characters > kLongestText) return {{}, FieldType::Text, CellKind::Text, true, 0, 0};
    return {{}, FieldType::Text, CellKind::Text, false, (characters + 1) * sizeof(SQLWCHAR), 0};
}

template <typename Cell>
OdbcColumn Fixed(FieldType type, CellKind kind) {
    return {{}, type, kind, false, sizeof(Cell), 0};
}

OdbcColumn ColumnOf(SQLSMALLINT type, SQLULEN size) {
    switch (type) {
        case SQL_BIT:
            return Fixed<SQLCHAR>(FieldType::Boolean, CellKind::Boolean);
        case SQL_TINYINT:
        case SQL_SMALLINT:
            return Fixed<SQLSMALLINT>(FieldType::SmallInt, CellKind::Short);
        case SQL_INTEGER:
            return Fixed<SQLINTEGER>(FieldType::Integer, CellKind::Integer);
        case SQL_BIGINT:
            return Fixed<SQLBIGINT>(FieldType::BigInt, CellKind::Big);
        case SQL_FLOAT:
        case SQL_REAL:
        case SQL_DOUBLE:
            return Fixed<SQLDOUBLE>(FieldType::Double, CellKind::Double);
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            return {{}, FieldType::Currency, CellKind::Decimal, false, kDecimalWidth, 0};
        case SQL_TYPE_DATE:
        case SQL_TYPE_TIMESTAMP:
        case SQL_DATETIME:
        case SQL_TIMESTAMP:
            return Fixed<SQL_TIMESTAMP_STRUCT>(FieldType::Date, CellKind::Moment);
        case SQL_CHAR:
        case SQL_VARCHAR:
        case SQL_WCHAR:
        case SQL_WVARCHAR:
            return TextColumn(size);
        case SQL_BINARY:
        case SQL_VARBINARY:
            return TextColumn(size * 2);  // as hexadecimal digits
        default:
            return TextColumn(0);
    }
}

constexpr std::size_t kSafeDigits = 18;  // of which four are decimals
constexpr int kDecimals = 4;

/// The usual number, which needs neither rounding nor a check of its size. False for any other.
bool ReadPlain(std::string_view digits, std::int64_t& units) {
    const bool negative = digits.starts_with('-');
    if (negative) digits.remove_prefix(1);
    if (digits.empty() || digits.size() > kSafeDigits - kDecimals) return false;
    int decimals = -1;  // no point yet
    units = 0;
    for (const char c : digits) {
        if (c >= '0' && c <= '9' && decimals < kDecimals) {
            units = units * 10 + (c - '0');
            if (decimals >= 0) ++decimals;
        } else if ((c == '.' || c == ',') && decimals < 0) {
            decimals = 0;
        } else {
            return false;
        }
    }
    for (int missing = kDecimals - std::max(decimals, 0); missing > 0; --missing) units *= 10;
    if (negative) units = -units;
    return true;
}

}  // namespace

OdbcColumn OdbcColumn::Describe(const OdbcStatement& statement, int number) {
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT length = 0, type = 0, digits = 0, nullable = 0;
    SQLULEN size = 0;
    statement.Check(SQLDescribeColW(statement.Handle(), static_cast<SQLUSMALLINT>(number), name.data(),
                                    static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &digits, &nullable));
    OdbcColumn column = ColumnOf(type, size);
    column.name = text::FromUtf16(WideView(name.data()));
    return column;
}

SQLSMALLINT OdbcColumn::BufferType() const {
    switch (kind) {
        case CellKind::Boolean:
            return SQL_C_BIT;
        case CellKind::Short:
            return SQL_C_SSHORT;
        case CellKind::Integer:
            return SQL_C_SLONG;
        case CellKind::Big:
            return SQL_C_SBIGINT;
        case CellKind::Double:
            return SQL_C_DOUBLE;
        case CellKind::Decimal:
            return SQL_C_CHAR;
        case CellKind::Moment:
            return SQL_C_TYPE_TIMESTAMP;
        case CellKind::Text:
            break;
    }
    return SQL_C_WCHAR;
}

Currency ExactDecimal(std::string_view digits, std::string_view column) {
    std::int64_t units = 0;
    if (ReadPlain(digits, units)) return Currency::FromUnits(units);
    // A comma is never taken for one between thousands.
    std::string decimal(digits);
    std::replace(decimal.begin(), decimal.end(), '.', ',');
    return ColumnAmount(std::string_view(decimal), column);
}

}  // namespace vlm::data::odbc
