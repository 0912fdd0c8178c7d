#include <gtest/gtest.h>

#include "structure/CostCenterColumns.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

std::string FamiliesWith(double line) {
    std::string families;
    for (const Schedule& schedule : AllSchedules()) {
        if (TakesColumn(schedule, Currency(line))) families += std::string(schedule.Family) + " ";
    }
    return families;
}

TEST(Schedules, EachLineHasItsColumnsInTheSchedulesOfItsClass) {
    EXPECT_EQ(FamiliesWith(1), "Bp Cp C1p E E1p ");
    EXPECT_EQ(FamiliesWith(2.99), "Bp Cp C1p E E1p ");
    EXPECT_EQ(FamiliesWith(4), "Bp ");
    EXPECT_EQ(FamiliesWith(6.99), "Bp ");
    EXPECT_EQ(FamiliesWith(8), "B1p Dp D1p E E1p ");
    EXPECT_EQ(FamiliesWith(9.99), "B1p Dp D1p E E1p ");
    EXPECT_EQ(FamiliesWith(10), "B1p Dp D1p ");
    EXPECT_EQ(FamiliesWith(28.01), "B1p Dp D1p E E1p ");
    EXPECT_EQ(FamiliesWith(98.99), "B1p Dp D1p ");
}

TEST(Schedules, SubtotalsAndTotalsAreNoCostCenters) {
    for (const double line : {0.0, 0.99, 3.0, 3.5, 7.0, 7.99, 99.0, 100.0}) {
        EXPECT_EQ(ClassOfLine(Currency(line)), CostClass::None) << line;
        EXPECT_TRUE(TablesWithColumn(Currency(line)).empty()) << line;
    }
    EXPECT_EQ(ClassOfLine(Currency(27.99)), CostClass::AllOther);
    EXPECT_EQ(ClassOfLine(Currency(28.99)), CostClass::Interest);
    EXPECT_EQ(ClassOfLine(Currency(29.0)), CostClass::AllOther);
}

TEST(Schedules, AllOtherCostIsACondition) {
    EXPECT_EQ(ConditionFor(CostClass::AllOther),
              "(LineNum>=10 And LineNum<28) Or (LineNum>=29 And LineNum<99)");
}

TEST(Schedules, AScheduleIsFoundByItsTableOrFamilyInAnyCase) {
    EXPECT_EQ(FindSchedule("dp2")->Family, "Dp");
    EXPECT_EQ(FindSchedule("E")->Family, "E");
    EXPECT_EQ(FindSchedule("E1p3")->Family, "E1p");
    EXPECT_EQ(FindSchedule("E1"), nullptr);
    EXPECT_EQ(FindSchedule("A"), nullptr);
    EXPECT_EQ(TableOf(*FindSchedule("E"), 3), "E");
    EXPECT_EQ(TableOf(*FindSchedule("C1p2"), 3), "C1p3");
}

TEST(Schedules, PoolsAreNumberedAsOnWorksheetE) {
    EXPECT_EQ(PoolColumn(Currency(1.01)), Currency(3.01));
    EXPECT_EQ(PoolColumn(Currency(2.0)), Currency(4.0));
    EXPECT_EQ(PoolColumn(Currency(9.5)), Currency(6.5));
    EXPECT_EQ(PoolColumn(Currency(28.0)), Currency(8.0));
}

}  // namespace
}  // namespace zolmara
