#include "ExactDecimal.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "values/ColumnConversion.h"

namespace vlm::data::odbc {

namespace {

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

Currency ExactDecimal(std::string_view digits, std::string_view column) {
    std::int64_t units = 0;
    if (ReadPlain(digits, units)) return Currency::FromUnits(units);
    // A comma is never taken for one between thousands.
    std::string decimal(digits);
    std::replace(decimal.begin(), decimal.end(), '.', ',');
    return ColumnAmount(std::string_view(decimal), column);
}

}  // namespace vlm::data::odbc
