#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class ChecksE : public CheckedCrf {};

TEST_F(ChecksE, PoolsAreHeldAgainstAOnlyWithComponentsOfPartIIOrIII) {
    EXPECT_FALSE(PoolsAreChecked());
    AddRow("S2p1", 1, {{"Col_1", "Hospital"}});
    AddRow("S2p2", 1, {{"Col_1", ""}});
    AddRow("S2p3", 1);
    EXPECT_FALSE(PoolsAreChecked());
    SetCell("S2p2", 1, "Col_1", "Realty");
    EXPECT_TRUE(PoolsAreChecked());
    SetCell("S2p2", 1, "Col_1", "");
    SetCell("S2p3", 1, "Col_1", "West");
    EXPECT_TRUE(PoolsAreChecked());
}

TEST_F(ChecksE, PoolsOfEEqualTheirLinesOfA) {
    EXPECT_EQ(Found(CheckEAgainstA), Findings{});
    SetRow("E", 4, {{"CC_100", 1}, {"CC_200", 2}, {"CC_800", 8}, {"CC_900", 9}});
    EXPECT_EQ(Found(CheckEAgainstA),
              (Findings{"NF | 1030D | Worksheet E, line 4, column 3 must equal A, line 1 column 8.",
                        "NF | 1040D | Worksheet E, line 4, column 4 must equal A, line 2 column 8.",
                        "NF | 1050D | Worksheet E, line 4, column 5 must equal A, line 8 column 8.",
                        "NF | 1060D | Worksheet E, line 4, column 6 must equal A, line 9 column "
                        "8."}));
    for (int line : {1, 2, 8, 9}) SetCell("A", line, "Col_8", line);
    EXPECT_EQ(Found(CheckEAgainstA), Findings{});
}

TEST_F(ChecksE, ALineThatWasSplitStandsNeitherInENorInA) {
    gDB.DeleteField("E", "CC_900");
    gDB.Execute("DELETE * FROM A WHERE LineNum=9;");
    EXPECT_EQ(Found(CheckEAgainstA), Findings{});
}

TEST_F(ChecksE, PoolsOfE1EqualTheirLinesOfA) {
    SetRow("E1p3", 52,
           {{"CC_100", 1}, {"CC_200", 2}, {"CC_800", 8}, {"CC_900", 9}, {"CC_2800", -28}});
    EXPECT_EQ(
        Found(CheckE1p3AgainstA),
        (Findings{
            "NF | 1010D | Worksheet E-1, line 52, column 3 must equal A, line 1 column 8.",
            "NF | 1020D | Worksheet E-1, line 52, column 4 must equal A, line 2 column 8.",
            "NF | 1080D | Worksheet E-1, line 52, column 5 must equal A, line 8 column 8.",
            "NF | 1090D | Worksheet E-1, line 52, column 6 must equal A, line 9 column 8.",
            "NF | 1280D | Worksheet E-1, line 52, column 8 must equal A, line 28 column 8."}));
    for (int line : {1, 2, 8, 9}) SetCell("A", line, "Col_8", line);
    SetCell("A", 28, "Col_8", -28);
    EXPECT_EQ(Found(CheckE1p3AgainstA), Findings{});
}

TEST_F(ChecksE, ASubscriptedPoolHasNoNumberInTheContractorsList) {
    gDB.AppendField("E1p3", {"CC_2801", FieldType::dbDouble});
    SetCell("E1p3", 52, "CC_2801", -3);
    EXPECT_EQ(Found(CheckE1p3AgainstA), Findings{});  // A has no such line
    AddRow("A", 28.01, {{"Col_8", -2}});
    EXPECT_EQ(
        Found(CheckE1p3AgainstA),
        Findings{"NF | VLQ | Worksheet E-1, line 52, column 9 must equal A, line 28.01 column 8."});
    SetCell("A", 28.01, "Col_8", -3);
    EXPECT_EQ(Found(CheckE1p3AgainstA), Findings{});
}

TEST_F(ChecksE, AMissingGrandTotalOfE1IsPassedOver) {
    SetCell("A", 8, "Col_8", 1);
    SetCell("A", 99, "Col_8", 7);
    EXPECT_EQ(Found(CheckE1p3AgainstA).size(), 1u);
    EXPECT_EQ(Found(CheckE1p3AllOther).size(), 1u);
    gDB.Execute("DELETE * FROM E1p3 WHERE LineNum=52;");
    EXPECT_EQ(Found(CheckE1p3AgainstA), Findings{});
    EXPECT_EQ(Found(CheckE1p3AllOther), Findings{});
}

TEST_F(ChecksE, AMissingTotalOfEIsPassedOver) {
    SetCell("A", 8, "Col_8", 1);
    EXPECT_EQ(Found(CheckEAgainstA).size(), 1u);
    gDB.Execute("DELETE * FROM E WHERE LineNum=4;");
    EXPECT_EQ(Found(CheckEAgainstA), Findings{});
}

TEST_F(ChecksE, APoolWhoseLineOfAIsMissingIsPassedOver) {
    SetCell("E", 4, "CC_800", 5);
    SetCell("E1p3", 52, "CC_800", 5);
    SetCell("E1p3", 52, "Col_7", 5);
    EXPECT_EQ(Found(CheckEAgainstA).size(), 1u);
    EXPECT_EQ(Found(CheckE1p3AgainstA).size(), 1u);
    EXPECT_EQ(Found(CheckE1p3AllOther).size(), 1u);
    gDB.Execute("DELETE * FROM A WHERE LineNum In(8,99);");
    EXPECT_EQ(Found(CheckEAgainstA), Findings{});
    EXPECT_EQ(Found(CheckE1p3AgainstA), Findings{});
    EXPECT_EQ(Found(CheckE1p3AllOther), Findings{});
}

TEST_F(ChecksE, AllOtherCostEqualsTheSubtotalWithoutThePoolsOfTheirOwn) {
    const Findings bad{
        "NF | 1100E | Worksheet E-1, line 52, column 7 must equal A, line 99, column 8 minus lines "
        "8, 9, and 28 column 8."};
    SetCell("A", 99, "Col_8", 1000);
    SetCell("A", 8, "Col_8", 200);
    SetCell("A", 9, "Col_8", 300);
    SetCell("A", 28, "Col_8", -50);
    EXPECT_EQ(Found(CheckE1p3AllOther), bad);
    SetCell("E1p3", 52, "Col_7", 550);  // 1000 - (200 + 300 - 50)
    EXPECT_EQ(Found(CheckE1p3AllOther), Findings{});
    SetCell("E1p3", 52, "Col_7", 549);
    EXPECT_EQ(Found(CheckE1p3AllOther), bad);
}

}  // namespace
}  // namespace zolmara
