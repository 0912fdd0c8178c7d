#pragma once

#include <cmath>
#include <compare>
#include <cstdint>

namespace zolmara {

/// A fixed-point number with four decimals: the type of every line number,
/// so that a subscripted line such as 4.01 is held and compared exactly.
class Currency {
public:
    static constexpr std::int64_t kScale = 10000;

    constexpr Currency() = default;

    /// The nearest value with four decimals; a half goes to the even digit.
    explicit Currency(double value) : units_(std::llrint(value * kScale)) {}

    static constexpr Currency FromUnits(std::int64_t units) {
        Currency result;
        result.units_ = units;
        return result;
    }
    static constexpr Currency FromWhole(std::int64_t whole) { return FromUnits(whole * kScale); }

    constexpr std::int64_t Units() const { return units_; }

    /// The double nearest to the decimal value: equal Currency values give equal doubles.
    constexpr double ToDouble() const { return static_cast<double>(units_) / kScale; }

    /// The whole part, cut toward zero.
    constexpr std::int64_t Whole() const { return units_ / kScale; }
    constexpr bool IsWhole() const { return units_ % kScale == 0; }

    constexpr auto operator<=>(const Currency&) const = default;

    constexpr Currency operator+(Currency other) const { return FromUnits(units_ + other.units_); }
    constexpr Currency operator-(Currency other) const { return FromUnits(units_ - other.units_); }
    constexpr Currency operator-() const { return FromUnits(-units_); }
    constexpr Currency& operator+=(Currency other) { return *this = *this + other; }

    /// True where four decimals of the value fit the type.
    static bool Holds(double value) { return std::abs(value) < 9.2e14; }

private:
    std::int64_t units_ = 0;
};

/// One hundredth: the step from one subscript of a line to the next.
inline constexpr Currency kSubscriptStep = Currency::FromUnits(100);
inline constexpr Currency kWholeStep = Currency::FromWhole(1);

}  // namespace zolmara
