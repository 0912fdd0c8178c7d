#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/Currency.h"

namespace zolmara {
namespace {

TEST(Currency, HoldsALineWithItsSubscriptExactly) {
    EXPECT_EQ(Currency(4.01).Units(), 40100);
    EXPECT_EQ(Currency(4.02) + kSubscriptStep, Currency(4.03));
    EXPECT_EQ(Currency(4.99) + kSubscriptStep, Currency::FromWhole(5));
}

TEST(Currency, RoundsToTheFourthDecimal) {
    EXPECT_EQ(Currency(1.00004).Units(), 10000);
    EXPECT_EQ(Currency(1.00006).Units(), 10001);
    EXPECT_EQ(Currency(-1.00006).Units(), -10001);
}

TEST(Currency, CutsItsWholePartTowardZero) {
    EXPECT_EQ(Currency(4.99).Whole(), 4);
    EXPECT_EQ(Currency(-4.99).Whole(), -4);
    EXPECT_TRUE(Currency::FromWhole(28).IsWhole());
    EXPECT_FALSE(Currency(28.01).IsWhole());
}

TEST(Currency, KnowsWhatItCannotHold) {
    EXPECT_TRUE(Currency::Holds(-9e14));
    EXPECT_FALSE(Currency::Holds(1e15));
    EXPECT_TRUE(Currency::Holds(919999999999999.75));
    EXPECT_FALSE(Currency::Holds(920000000000000));
    EXPECT_FALSE(Currency::Holds(-920000000000000));
    EXPECT_FALSE(Currency::Holds(std::nan("")));
}

RC_GTEST_PROP(Currency, ComesBackFromItsDouble, ()) {
    const auto units = *rc::gen::inRange<std::int64_t>(-99999999999, 99999999999);
    const Currency value = Currency::FromUnits(units);
    RC_ASSERT(Currency(value.ToDouble()) == value);
}

}  // namespace
}  // namespace zolmara
