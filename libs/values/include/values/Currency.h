#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace vlm {

/// Money: a 64-bit count of ten-thousandths (of a euro). Sums are exact; overflow throws OverflowError.
class Currency {
public:
    static constexpr std::int64_t kScale = 10000;

    constexpr Currency() = default;
    static constexpr Currency FromUnits(std::int64_t tenThousandths) {
        Currency value;
        value.units_ = tenThousandths;
        return value;
    }
    /// Rounds half to even at the fourth decimal.
    static Currency FromDouble(double value);
    static Currency FromInteger(std::int64_t value);

    constexpr std::int64_t Units() const noexcept { return units_; }
    double ToDouble() const noexcept;

    Currency operator+(Currency other) const;
    Currency operator-(Currency other) const;
    Currency operator-() const;
    Currency& operator+=(Currency other) { return *this = *this + other; }

    constexpr auto operator<=>(const Currency&) const = default;

private:
    std::int64_t units_ = 0;
};

}  // namespace vlm
