#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class ChecksLabels : public CheckedCrf {};

const std::string kC1 =
    "NF | 1110 | Each C-1 column with cost on line 53 must have a stat label and stat code defined "
    "in Cost Centers.";
const std::string kD1 =
    "NF | 1120 | Each D-1 column with cost on line 53 must have a stat label defined in Cost "
    "Centers.";

TEST_F(ChecksLabels, AC1ColumnWithCostHasALabelAndACode) {
    EXPECT_EQ(Found(CheckColumnLabels), Findings{});
    SetRow("C1p3", 53, {{"CC_100", 500}, {"CC_200", -500}});
    EXPECT_EQ(Found(CheckColumnLabels), Findings{});  // the form's lines have both
    SetRow("CostCenters", 1, {{"StatLabel1", ""}});
    EXPECT_EQ(Found(CheckColumnLabels), Findings{});  // one label is enough
    SetRow("CostCenters", 1, {{"StatLabel2", Variant()}});
    EXPECT_EQ(Found(CheckColumnLabels), Findings{kC1});
    SetRow("CostCenters", 2, {{"StatCode", 0}});
    EXPECT_EQ(Found(CheckColumnLabels), (Findings{kC1, kC1}));
    SetRow("C1p3", 53, {{"CC_100", 0}, {"CC_200", Variant()}});
    EXPECT_EQ(Found(CheckColumnLabels), Findings{});
}

TEST_F(ChecksLabels, AD1ColumnWithCostHasALabelAndNeedsNoCode) {
    SetRow("D1p3", 53, {{"CC_800", 500}, {"CC_2800", -20}});
    EXPECT_EQ(Found(CheckColumnLabels), (Findings{kD1, kD1}));
    SetRow("CostCenters", 8, {{"StatLabel2", "Hours"}});
    SetRow("CostCenters", 28, {{"StatLabel1", "Days"}});
    EXPECT_EQ(Found(CheckColumnLabels), Findings{});
}

TEST_F(ChecksLabels, AColumnWhoseCostCenterIsGoneHasNoLabelsToAskFor) {
    SetRow("C1p3", 53, {{"CC_100", 500}});
    SetCell("CostCenters", 1, "StatCode", 0);
    SetRow("D1p3", 53, {{"CC_800", 500}, {"CC_900", 500}});
    EXPECT_EQ(Found(CheckColumnLabels), (Findings{kC1, kD1, kD1}));
    gDB.Execute("DELETE * FROM CostCenters WHERE LineNum In(1,8);");
    EXPECT_EQ(Found(CheckColumnLabels), Findings{kD1});  // that of line 9
}

TEST_F(ChecksLabels, AMissingLine53HasNoCosts) {
    gDB.Execute("DELETE * FROM D1p3 WHERE LineNum=53;");
    EXPECT_EQ(Found(CheckColumnLabels), Findings{});
}

struct Pool {
    const char* Item;
    int Line;
    int Basis;
    const char* Finding;
};
constexpr Pool kPools[] = {
    {"E", 4, 1,
     "NF | 1130 | When E line 4 sum of columns 3-8 is non zero, there must be a stat label and "
     "stat "
     "code defined in Pooled Allocation Statistical Basis under E."},
    {"E1p1", 51, 2,
     "NF | 1140 | When E1p1 line 51 sum of columns 3-8 is non zero, there must be a stat label and "
     "stat code defined in Pooled Allocation Statistical Basis under E-1 Part I."},
    {"E1p2", 51, 3,
     "NF | 1141 | When E1p2 line 51 sum of columns 3-8 is non zero, there must be a stat label and "
     "stat code defined in Pooled Allocation Statistical Basis under E-1 Part II."},
    {"E1p3", 51, 4,
     "NF | 1141 | When E1p3 line 51 sum of columns 3-8 is non zero, there must be a stat label and "
     "stat code defined in Pooled Allocation Statistical Basis under E-1 Part III."},
};

TEST_F(ChecksLabels, PoolsWithAmountsHaveALabelAndACode) {
    for (const Pool& pool : kPools) {
        SetCell("ES", pool.Basis, "StatCode", Variant());
        EXPECT_EQ(Found(CheckPoolLabels), Findings{}) << pool.Item;
        for (const char* column : {"CC_100", "Col_7", "CC_2800"}) {
            SetCell(pool.Item, pool.Line, column, 5);
            EXPECT_EQ(Found(CheckPoolLabels), Findings{pool.Finding}) << column;
            SetCell(pool.Item, pool.Line, column, 0);
        }
        SetCell(pool.Item, pool.Line, "CC_800", 5);
        SetRow("ES", pool.Basis, {{"StatCode", 1}, {"StatLabel1", ""}, {"StatLabel2", ""}});
        EXPECT_EQ(Found(CheckPoolLabels), Findings{pool.Finding});
        SetCell("ES", pool.Basis, "StatLabel2", "Costs");
        EXPECT_EQ(Found(CheckPoolLabels), Findings{});
        SetCell(pool.Item, pool.Line, "CC_800", 0);
    }
}

TEST_F(ChecksLabels, PoolsThatCancelEachOtherAndRatiosAreNoAmount) {
    SetRow("ES", 1, {{"StatCode", 0}});
    SetRow("E", 4, {{"Col_1", 900}, {"Col_2", 1}, {"CC_800", 5}, {"CC_2800", -5}});
    EXPECT_EQ(Found(CheckPoolLabels), Findings{});
    SetCell("E", 4, "CC_2800", -6);
    EXPECT_EQ(Found(CheckPoolLabels), Findings{kPools[0].Finding});
}

TEST_F(ChecksLabels, PoolsWithoutTheirRowOfTheBasisArePassedOver) {
    SetCell("ES", 1, "StatCode", 0);
    SetCell("E", 4, "CC_800", 5);
    EXPECT_EQ(Found(CheckPoolLabels), Findings{kPools[0].Finding});
    gDB.Execute("DELETE * FROM ES WHERE LineNum=1;");
    EXPECT_EQ(Found(CheckPoolLabels), Findings{});
}

}  // namespace
}  // namespace zolmara
