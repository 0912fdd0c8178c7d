#include <gtest/gtest.h>

#include "core/Clock.h"
#include "support/ScriptedHost.h"

namespace zolmara::test {
namespace {

class Clock : public ::testing::Test {
protected:
    Clock() { ResetClock(); }
    ~Clock() override { ResetClock(); }

    ScriptedHost host;
};

TEST_F(Clock, GoesWithTheMachines) {
    host.Clock = DateTime(2024, 3, 15, 14, 5, 42);
    EXPECT_EQ(Now(), DateTime(2024, 3, 15, 14, 5, 42));
}

TEST_F(Clock, GoesOnFromWhereItWasSet) {
    host.Clock = DateTime(2024, 3, 15, 14, 5, 42);
    EXPECT_TRUE(SetClock(DateTime(2024, 3, 15, 14, 5, 0)));
    EXPECT_EQ(Now(), DateTime(2024, 3, 15, 14, 5, 0));
    host.Clock = DateTime(2024, 3, 15, 14, 5, 52);
    EXPECT_EQ(Now(), DateTime(2024, 3, 15, 14, 5, 10));
}

TEST_F(Clock, OnlyTheTimeOfDayIsSet) {
    host.Clock = DateTime(2024, 3, 15, 14, 5, 42);
    EXPECT_TRUE(SetClock(DateTime(1999, 1, 1, 14, 0, 0)));
    EXPECT_EQ(Now(), DateTime(2024, 3, 15, 14, 0, 0));
}

TEST_F(Clock, MidnightBetweenCostsNoDay) {
    host.Clock = DateTime(2024, 3, 16, 0, 0, 10);
    EXPECT_TRUE(SetClock(DateTime(2024, 3, 15, 23, 59, 55)));
    EXPECT_EQ(Now(), DateTime(2024, 3, 15, 23, 59, 55));
    EXPECT_TRUE(SetClock(DateTime(2024, 3, 16, 0, 0, 10)));
    EXPECT_EQ(Now(), host.Clock);
}

TEST_F(Clock, StaysWhereItIsWhenItMayNotBeSet) {
    host.ClockCanBeSet = false;
    EXPECT_FALSE(SetClock(DateTime(2024, 2, 1, 10, 0, 0)));
    EXPECT_EQ(Now(), host.Clock);
}

TEST_F(Clock, ResettingPutsItRight) {
    SetClock(DateTime(2024, 2, 1, 9, 0, 0));
    ResetClock();
    EXPECT_EQ(Now(), host.Clock);
}

}  // namespace
}  // namespace zolmara::test
