#include <fmt/format.h>
#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class ChecksNegative : public CheckedCrf {
protected:
    static std::string Negative(const std::string& where) {
        return "PE | 2000 | " + where + " must be greater than or equal zero.";
    }
};

TEST_F(ChecksNegative, OneRowOfAFieldIsToldHoweverManyAreBelowZero) {
    AddRow("A6", 1, {{"Col_5", 10}});
    AddRow("A6", 2, {{"Col_5", -10}});
    AddRow("A6", 3, {{"Col_5", -10}, {"Col_8", -1}});
    const auto field5 = [] { CheckNotNegative("A6", "Col_5"); };
    EXPECT_EQ(FoundBy(field5), Findings{Negative("A6 line 2 column Col_5")});
    EXPECT_EQ(FoundBy([] { CheckNotNegative("A6", "Col_4"); }), Findings{});
}

TEST_F(ChecksNegative, AKeyOfSequenceIsToldAsTheLine) {
    AddRow("A81p2", 1.01, {{"Col_4", -5}});
    EXPECT_EQ(FoundBy([] { CheckNotNegative("A81p2", "Col_4"); }),
              Findings{Negative("A81p2 line 1.01 column Col_4")});
}

TEST_F(ChecksNegative, ATotalBelowZeroIsToldThoughEachEntryIsNot) {
    AddRow("A6", 1, {{"Col_5", 10}});
    SetCell("A6", 100, "Col_5", -1);
    EXPECT_EQ(FoundBy([] { CheckNotNegative("A6", "Col_5"); }),
              Findings{Negative("A6 line 100 column Col_5")});
    SetCell("D1p3", 53, "CC_800", -1);
    SetCell("D1p3", 52, "CC_900", -1);
    EXPECT_EQ(
        FoundBy([] { CheckNotNegativeCC("D1p3"); }),
        (Findings{Negative("D1p3 line 52 column CC_900"), Negative("D1p3 line 53 column CC_800")}));
}

TEST_F(ChecksNegative, NoiseBelowZeroDoesNotHideARealAmount) {
    SetCell("A7p2", 1, "Col_3", -0.00001);
    EXPECT_EQ(FoundBy([] { CheckNotNegative("A7p2", "Col_3"); }), Findings{});
    SetCell("A7p2", 2, "Col_3", -1);
    EXPECT_EQ(FoundBy([] { CheckNotNegative("A7p2", "Col_3"); }),
              Findings{Negative("A7p2 line 2 column Col_3")});
}

TEST_F(ChecksNegative, EveryCellOfAScheduleIsTold) {
    AddRow("C1p1", 2, {{"CC_100", -1}, {"CC_200", -2}});
    AddRow("C1p1", 1, {{"CC_200", -2}});
    SetCell("C1p1", 51, "CC_100", -1);
    EXPECT_EQ(
        FoundBy([] { CheckNotNegativeCC("C1p1"); }),
        (Findings{Negative("C1p1 line 1 column CC_200"), Negative("C1p1 line 2 column CC_100"),
                  Negative("C1p1 line 2 column CC_200"), Negative("C1p1 line 51 column CC_100")}));
}

TEST_F(ChecksNegative, InterestIncomeOfD1IsPassedOverWhereItIsAnAmount) {
    AddRow("D1p3", 1, {{"CC_2800", -1}});
    SetCell("D1p3", 53, "CC_2800", -100);
    SetCell("D1p3", 54, "CC_2800", -0.5);
    SetCell("D1p3", 53, "CC_2700", -1);
    EXPECT_EQ(FoundBy([] { CheckNotNegativeCC("D1p3"); }),
              (Findings{Negative("D1p3 line 1 column CC_2800"),
                        Negative("D1p3 line 53 column CC_2700")}));
    AddRow("D1p1", 1, {{"CC_2800", -1}});
    EXPECT_EQ(FoundBy([] { CheckNotNegativeCC("D1p1"); }),
              Findings{Negative("D1p1 line 1 column CC_2800")});
}

TEST_F(ChecksNegative, InterestIncomeOfEIsNotTold) {
    SetRow("E", 4, {{"CC_2800", -1}, {"Col_7", -1}});
    EXPECT_EQ(FoundBy([] { CheckNotNegativeCC("E"); }),
              Findings{Negative("E line 4 column Col_7")});
    for (const char* item : {"E1p1", "E1p2", "E1p3"}) {
        SetRow(item, 51, {{"CC_2800", -1}, {"CC_900", -1}});
        EXPECT_EQ(FoundBy([item] { CheckNotNegativeCC(item); }),
                  Findings{Negative(fmt::format("{} line 51 column CC_900", item))});
    }
}

TEST_F(ChecksNegative, ASubscriptOfInterestIncomeIsTold) {
    gDB.AppendField("E", {"CC_2801", FieldType::dbDouble});
    SetCell("E", 1, "CC_2801", -1);
    EXPECT_EQ(FoundBy([] { CheckNotNegativeCC("E"); }),
              Findings{Negative("E line 1 column CC_2801")});
}

TEST_F(ChecksNegative, StatisticsAndRatiosOfEAreSweptByPosition) {
    SetRow("E", 1, {{"Col_1", -1}, {"Col_2", -1}});  // fields three and four
    EXPECT_EQ(FoundBy([] { CheckNotNegativeCC("E"); }),
              Findings{Negative("E line 1 column Col_2")});
    SetRow("E1p1", 51, {{"Col_1", -1}});
    EXPECT_EQ(FoundBy([] { CheckNotNegativeCC("E1p1"); }),
              Findings{Negative("E1p1 line 51 column Col_1")});
}

TEST_F(ChecksNegative, OneLineIsSweptFromAPositionOn) {
    SetRow("B1p3", 52, {{"CC_800", -1}, {"CC_900", -1}, {"Col_99", -2}});
    EXPECT_EQ(
        FoundBy([] { CheckNotNegativeRows("B1p3", 52, 4); }),
        (Findings{Negative("B1p3 line 52 column CC_900"), Negative("B1p3 line 52 column Col_99")}));
    EXPECT_EQ(FoundBy([] { CheckNotNegativeRows("B1p3", 999, 3); }), Findings{});
}

// Its fields are CC_800, CC_900, CC_1000 to CC_2800, Col_99. From CC_1000 on each name sorts at or
// before CC_2800, so that it gives its turn to the next: CC_1100, CC_1300, ..., and CC_2800 gives
// its own to Col_99.
TEST_F(ChecksNegative, InDp3AFieldThatSortsBeforeInterestIncomeGivesItsTurnToTheNext) {
    SetRow("Dp3", 52,
           {{"CC_800", -1},
            {"CC_1000", -1},
            {"CC_1100", -1},
            {"CC_1200", -1},
            {"CC_2700", -1},
            {"CC_2800", -1},
            {"Col_99", -1}});
    EXPECT_EQ(
        FoundBy([] { CheckNotNegativeRows("Dp3", 52, 3); }),
        (Findings{Negative("Dp3 line 52 column CC_800"), Negative("Dp3 line 52 column CC_1100"),
                  Negative("Dp3 line 52 column CC_2700"), Negative("Dp3 line 52 column Col_99")}));
}

TEST_F(ChecksNegative, ATurnGivenBehindTheLastFieldIsNobodys) {
    gDB.DeleteField("Dp3", "Col_99");
    SetRow("Dp3", 52, {{"CC_2800", -1}});
    EXPECT_EQ(FoundBy([] { CheckNotNegativeRows("Dp3", 52, 3); }), Findings{});
}

TEST_F(ChecksNegative, DeductionsOfGAreNotBelowZero) {
    for (int line : {6, 13, 15, 17, 19, 21, 23, 1, 33}) SetCell("G", line, "Col_1", -1);
    Findings expected;
    for (int line : {6, 13, 15, 17, 19, 21, 23})
        expected.push_back(Negative(fmt::format("G line {} column 1", line)));
    EXPECT_EQ(Found(CheckGNotNegative), expected);
}

TEST_F(ChecksNegative, LinesOfG1ButProfitAndNetIncomeAreNotBelowZero) {
    AddRow("G1", 10.01, {{"Col_2", -1}});
    for (int line : {1, 2, 3, 4, 15, 21, 22}) SetCell("G1", line, "Col_2", -1);
    EXPECT_EQ(Found(CheckGNotNegative),
              (Findings{Negative("G1 line 1 column 2"), Negative("G1 line 2 column 2"),
                        Negative("G1 line 4 column 2"), Negative("G1 line 10.01 column 2"),
                        Negative("G1 line 15 column 2"), Negative("G1 line 21 column 2")}));
}

TEST_F(ChecksNegative, TheSweepGoesThroughItsTablesInTheirOrder) {
    EXPECT_EQ(Found(CheckAllNotNegative), Findings{});
    AddRow("S2p3", 1, {{"Col_6", -1}});
    AddRow("A6", 1, {{"Col_4", -1}, {"Col_5", -1}, {"Col_7", -1}, {"Col_8", -1}});
    AddRow("A81p2", 1, {{"Col_4", -1}, {"Col_6", -1}});
    for (int n = 1; n <= 15; ++n) SetCell("A7p2", 3, fmt::format("Col_{}", n), -1);
    Findings expected{Negative("S2p3 line 1 column Col_6"), Negative("A6 line 1 column Col_4"),
                      Negative("A6 line 1 column Col_5"), Negative("A6 line 1 column Col_7"),
                      Negative("A6 line 1 column Col_8")};
    for (int n = 1; n <= 15; ++n)
        expected.push_back(Negative(fmt::format("A7p2 line 3 column Col_{}", n)));
    expected.push_back(Negative("A81p2 line 1 column Col_4"));
    expected.push_back(Negative("A81p2 line 1 column Col_6"));
    for (const char* item : {"C1p1", "C1p2", "C1p3"}) {
        SetCell(item, 51, "CC_100", -1);
        expected.push_back(Negative(fmt::format("{} line 51 column CC_100", item)));
    }
    for (const char* item : {"D1p1", "D1p2", "D1p3"}) {
        SetCell(item, 51, "CC_800", -1);
        expected.push_back(Negative(fmt::format("{} line 51 column CC_800", item)));
    }
    SetCell("E", 4, "CC_100", -1);
    expected.push_back(Negative("E line 4 column CC_100"));
    for (const char* item : {"E1p1", "E1p2", "E1p3"}) {
        SetCell(item, 51, "CC_100", -1);
        expected.push_back(Negative(fmt::format("{} line 51 column CC_100", item)));
    }
    for (const char* item : {"Fp1", "Fp2", "Fp3", "F1p1", "F1p2", "F1p3"}) {
        SetCell(item, 51, "Col_1", -1);
        expected.push_back(Negative(fmt::format("{} line 51 column Col_1", item)));
    }
    SetCell("F2p1", 51, "Col_1", -1);  // interest income alone
    SetCell("Dp3", 52, "CC_800", -1);  // its grand total stands on another line
    SetCell("G", 6, "Col_1", -1);
    expected.push_back(Negative("G line 6 column 1"));
    SetCell("G1", 1, "Col_2", -1);
    expected.push_back(Negative("G1 line 1 column 2"));
    EXPECT_EQ(Found(CheckAllNotNegative), expected);
}

}  // namespace
}  // namespace zolmara
