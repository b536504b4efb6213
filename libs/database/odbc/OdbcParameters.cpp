#include "OdbcParameters.h"

#include <algorithm>

namespace vlm::data::odbc {

namespace {

// The longest text that travels as one of limited width, and the digits of each kind of number.
constexpr SQLULEN kLimitedText = 4000;
constexpr SQLULEN kWholeDigits = 19, kDoubleDigits = 53, kAmountDigits = 19, kMomentCharacters = 23;
constexpr SQLSMALLINT kAmountDecimals = 4, kMomentDecimals = 3;

/// "-12.3400": the ten-thousandths as they are counted, with a point.
std::string DecimalDigits(Currency amount) {
    const bool negative = amount.Units() < 0;
    std::string digits = std::to_string(amount.Units()).substr(negative ? 1 : 0);
    digits.insert(0, digits.size() > kAmountDecimals ? 0 : kAmountDecimals + 1 - digits.size(), '0');
    digits.insert(digits.size() - kAmountDecimals, ".");
    return (negative ? "-" : "") + digits;
}

SQL_TIMESTAMP_STRUCT MomentOf(Date date) {
    const Date::Civil civil = date.ToCivil();
    SQL_TIMESTAMP_STRUCT moment{};
    moment.year = static_cast<SQLSMALLINT>(civil.year);
    moment.month = static_cast<SQLUSMALLINT>(civil.month);
    moment.day = static_cast<SQLUSMALLINT>(civil.day);
    moment.hour = static_cast<SQLUSMALLINT>(civil.hour);
    moment.minute = static_cast<SQLUSMALLINT>(civil.minute);
    moment.second = static_cast<SQLUSMALLINT>(civil.second);
    return moment;
}

}  // namespace

void OdbcParameters::Bind(const Form& form, Parameter& parameter, SQLPOINTER content, std::size_t bytes) {
    const auto size = static_cast<SQLLEN>(bytes);
    if (parameter.length != SQL_NULL_DATA) parameter.length = size;
    statement_->Check(SQLBindParameter(statement_->Handle(), static_cast<SQLUSMALLINT>(parameters_.size()),
                                       SQL_PARAM_INPUT, form.bufferType, form.sqlType, form.size, form.decimals,
                                       content, size, &parameter.length));
}

void OdbcParameters::Add(const Value& value, FieldType type) {
    Parameter& each = parameters_.emplace_back();
    each.length = data::IsNull(value) ? SQL_NULL_DATA : 0;
    switch (type) {
        case FieldType::Boolean:
            if (const auto* truth = std::get_if<bool>(&value)) each.truth = *truth ? 1 : 0;
            return Bind({SQL_C_BIT, SQL_BIT, 1}, each, &each.truth, sizeof each.truth);
        case FieldType::SmallInt:
        case FieldType::Integer:
        case FieldType::BigInt:
            if (const auto* whole = std::get_if<std::int64_t>(&value)) each.whole = *whole;
            return Bind({SQL_C_SBIGINT, SQL_BIGINT, kWholeDigits}, each, &each.whole, sizeof each.whole);
        case FieldType::Double:
            if (const auto* number = std::get_if<double>(&value)) each.number = *number;
            return Bind({SQL_C_DOUBLE, SQL_DOUBLE, kDoubleDigits}, each, &each.number, sizeof each.number);
        case FieldType::Currency:
            if (const auto* amount = std::get_if<Currency>(&value)) each.digits = DecimalDigits(*amount);
            return Bind({SQL_C_CHAR, SQL_DECIMAL, kAmountDigits, kAmountDecimals}, each, each.digits.data(),
                        each.digits.size());
        case FieldType::Date:
            if (const auto* date = std::get_if<Date>(&value)) each.moment = MomentOf(*date);
            return Bind({SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, kMomentCharacters, kMomentDecimals}, each,
                        &each.moment, sizeof each.moment);
        case FieldType::Text:
            break;
    }
    each.text = Wide(TextOf(value));
    const bool limited = each.text.size() <= kLimitedText;
    const SQLULEN characters = std::max<SQLULEN>(each.text.size(), 1);
    Bind({SQL_C_WCHAR, static_cast<SQLSMALLINT>(limited ? SQL_WVARCHAR : SQL_WLONGVARCHAR), characters}, each,
         each.text.data(), each.text.size() * sizeof(SQLWCHAR));
}

}  // namespace vlm::data::odbc
