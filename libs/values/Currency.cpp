#include "values/Currency.h"

#include <cmath>
#include <limits>

#include "values/Error.h"

namespace vlm {

namespace {

[[noreturn]] void ThrowOverflow() { throw OverflowError("Overflow: importo fuori dai limiti."); }

}  // namespace

Currency Currency::FromDouble(double value) {
    constexpr double kLimit = 9223372036854775808.0;  // 2 to the 63rd
    const double scaled = std::nearbyint(value * static_cast<double>(kScale));
    if (!(scaled >= -kLimit && scaled < kLimit)) ThrowOverflow();
    return FromUnits(static_cast<std::int64_t>(scaled));
}

Currency Currency::FromInteger(std::int64_t value) {
    std::int64_t units = 0;
    if (__builtin_mul_overflow(value, kScale, &units)) ThrowOverflow();
    return FromUnits(units);
}

double Currency::ToDouble() const noexcept { return static_cast<double>(units_) / static_cast<double>(kScale); }

Currency Currency::operator+(Currency other) const {
    std::int64_t units = 0;
    if (__builtin_add_overflow(units_, other.units_, &units)) ThrowOverflow();
    return FromUnits(units);
}

Currency Currency::operator-(Currency other) const {
    std::int64_t units = 0;
    if (__builtin_sub_overflow(units_, other.units_, &units)) ThrowOverflow();
    return FromUnits(units);
}

Currency Currency::operator-() const { return Currency{} - *this; }

}  // namespace vlm
