#include <gtest/gtest.h>

#include "editchecks/Cells.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

TEST(Amounts, AreComparedAtFourDecimals) {
    EXPECT_FALSE(Differ(0.1 + 0.2, 0.3));
    EXPECT_FALSE(Differ(1, 1.00004));
    EXPECT_TRUE(Differ(1, 1.0001));
    EXPECT_TRUE(IsZero(-0.00004));
    EXPECT_TRUE(IsBelowZero(-0.0001));
    EXPECT_FALSE(IsBelowZero(-0.00004));
    EXPECT_TRUE(IsAboveZero(0.0001));
    EXPECT_FALSE(IsAboveZero(0.00004));
}

TEST(Amounts, TooLargeForFourDecimalsAreComparedAsTheyAre) {
    EXPECT_TRUE(Differ(1e20, 2e20));
    EXPECT_FALSE(Differ(1e20, 1e20));
    EXPECT_TRUE(IsBelowZero(-1e300));
}

class Lines : public test::CheckedCrf {};

TEST_F(Lines, ALineThatIsNotThereIsNull) {
    const Line line("Select * From G Where LineNum=77;");
    EXPECT_EQ(line.Count(), 3u);
    EXPECT_EQ(line.Number("Col_1"), 0);
    EXPECT_EQ(line.Text("Description"), "");
    EXPECT_TRUE(line.Value("LineNum").IsNull());
    EXPECT_TRUE(line.Value("Col_2").IsNull());  // no such field
}

TEST_F(Lines, CostCenterCellsKeepTheirOrder) {
    SetRow("Cp3", 52, {{"CC_200", 5}});
    const auto cells = CostCenterCells("Select * From Cp3 Where LineNum=52;");
    ASSERT_EQ(cells.size(), 2u);
    EXPECT_EQ(cells[0].Column(), "1");
    EXPECT_EQ(cells[0].Amount, 0);
    EXPECT_EQ(cells[1].Field, "CC_200");
    EXPECT_EQ(cells[1].Amount, 5);
}

}  // namespace
}  // namespace zolmara
