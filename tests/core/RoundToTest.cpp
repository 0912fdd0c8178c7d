#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "core/Globals.h"

namespace zolmara {
namespace {

TEST(RoundTo, TakesAHalfAwayFromZero) {
    EXPECT_EQ(RoundTo(0.5, 0), 1);
    EXPECT_EQ(RoundTo(1.5, 0), 2);
    EXPECT_EQ(RoundTo(2.5, 0), 3);
    EXPECT_EQ(RoundTo(-0.5, 0), -1);
    EXPECT_EQ(RoundTo(-1.5, 0), -2);
    EXPECT_EQ(RoundTo(-2.5, 0), -3);
}

TEST(RoundTo, CountsWhatIsWithinAMillionthOfAHalfAsAHalf) {
    EXPECT_EQ(RoundTo(2.4999995, 0), 3);
    EXPECT_EQ(RoundTo(2.499998, 0), 2);
    EXPECT_EQ(RoundTo(2.5000005, 0), 3);
    EXPECT_EQ(RoundTo(2.500002, 0), 3);
    EXPECT_EQ(RoundTo(-2.4999995, 0), -3);
    EXPECT_EQ(RoundTo(-2.499998, 0), -2);
    EXPECT_EQ(RoundTo(-2.5000005, 0), -3);
    EXPECT_EQ(RoundTo(-2.500002, 0), -3);
}

TEST(RoundTo, GoesToTheNearestOtherwise) {
    EXPECT_EQ(RoundTo(1.2, 0), 1);
    EXPECT_EQ(RoundTo(1.8, 0), 2);
    EXPECT_EQ(RoundTo(-1.2, 0), -1);
    EXPECT_EQ(RoundTo(-1.8, 0), -2);
    EXPECT_EQ(RoundTo(7.0, 0), 7);
}

TEST(RoundTo, RoundsRatiosToSixDigits) {
    EXPECT_EQ(RoundTo(1.0 / 3, 6), 333333.0 / 1e6);
    EXPECT_EQ(RoundTo(2.0 / 3, 6), 666667.0 / 1e6);
    EXPECT_EQ(RoundTo(0.0000004, 6), 0);
}

TEST(RoundTo, MultipliesAHalfByTheNegativePower) {
    // 1.0000005 with six digits is 1000000.5, a half: 1000001 times 10^-6, which is one unit in
    // the last place off 1000001 over 10^6 where the two differ.
    EXPECT_EQ(RoundTo(1.0000005, 6), 1000001 * std::pow(10.0, -6));
    EXPECT_EQ(RoundTo(0.125, 2), 13 * std::pow(10.0, -2));
    EXPECT_EQ(RoundTo(-0.125, 2), -13 * std::pow(10.0, -2));
}

TEST(RoundTo, RoundsToTensWithNegativeDigits) {
    EXPECT_EQ(RoundTo(1234.0, -2), 12 / std::pow(10.0, -2));
}

TEST(RoundTo, HasNoNegativeZero) {
    EXPECT_FALSE(std::signbit(RoundTo(-0.3, 0)));
    EXPECT_FALSE(std::signbit(RoundTo(-0.0, 0)));
    EXPECT_EQ(NumberText(RoundTo(-0.3, 0)), "0");
}

TEST(RoundTo, LeavesWhatTheScaleCannotHold) { EXPECT_EQ(RoundTo(1e305, 6), 1e305); }

TEST(RoundTo, IsNullForWhatIsNotNumeric) {
    EXPECT_TRUE(RoundTo(Variant(), 0).IsNull());
    EXPECT_TRUE(RoundTo(Variant("Salaries"), 0).IsNull());
    EXPECT_TRUE(RoundTo(Variant(""), 0).IsNull());
    EXPECT_EQ(RoundTo(Variant("2.5"), 0), Variant(3.0));
    EXPECT_EQ(RoundTo(Variant(Currency(2.5)), 0), Variant(3.0));
}

RC_GTEST_PROP(RoundTo, IsOddAndItsOwnFixedPoint, ()) {
    const auto cents = *rc::gen::inRange<std::int64_t>(-1000000000, 1000000000);
    const double value = static_cast<double>(cents) / 100;
    const double whole = RoundTo(value, 0);
    RC_ASSERT(RoundTo(whole, 0) == whole);
    RC_ASSERT(RoundTo(-value, 0) == -whole);
    RC_ASSERT(std::abs(whole - value) <= 0.5);
}

TEST(IsExactTo, AllowsNoiseBelowATenThousandthOfTheLastDigit) {
    EXPECT_TRUE(IsExactTo(12, 0));
    EXPECT_TRUE(IsExactTo(12.00009, 0));
    EXPECT_FALSE(IsExactTo(12.0002, 0));
    EXPECT_FALSE(IsExactTo(12.5, 0));
    EXPECT_TRUE(IsExactTo(12.5, 1));
    EXPECT_TRUE(IsExactTo(-4.01, 2));
    EXPECT_FALSE(IsExactTo(-4.011, 2));
    EXPECT_TRUE(IsExactTo(0.123456, 6));
    EXPECT_FALSE(IsExactTo(0.1234565, 6));
}

}  // namespace
}  // namespace zolmara
