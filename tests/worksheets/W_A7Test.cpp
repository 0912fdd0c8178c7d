#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/W_A7.h"

namespace zolmara {
namespace {

using namespace test;

class W_A7Test : public SheetTest {};

TEST_F(W_A7Test, BuildSeedsNineLinesWithZeros) {
    EXPECT_EQ(Rows("A7p1"), 9);
    EXPECT_EQ(TextCell("A7p1", 3, "Description"), "Buildings & Fixtures");
    EXPECT_EQ(TextCell("A7p1", 8, "Description"), "Reconciling Items");
    for (int column = 1; column <= 7; ++column) {
        EXPECT_EQ(Cell("A7p1", 9, "Col_" + std::to_string(column)), Variant(0.0));
    }
    EXPECT_EQ(gDB.Table("A7p1").Fields[0].Type, FieldType::dbInteger);
}

TEST_F(W_A7Test, BuildOfPart2TakesTheCapitalCostCenters) {
    AddCenters({1.01});
    EXPECT_EQ(Column("SELECT LineNum FROM A7p2 ORDER BY LineNum;"),
              (std::vector<double>{1, 1.01, 2, 3}));
    EXPECT_EQ(TextCell("A7p2", 2, "Description"), "CRC-ME");
    EXPECT_EQ(TextCell("A7p2", 3, "Description"), "Total");
    EXPECT_EQ(gDB.Table("A7p2").Fields.size(), 17u);
}

TEST_F(W_A7Test, RollForward) {
    SetCell("A7p1", 1, "Col_1", 1000);
    SetCell("A7p1", 1, "Col_2", 200);
    SetCell("A7p1", 1, "Col_3", 30);
    SetCell("A7p1", 1, "Col_5", 4);
    SetCell("A7p1", 1, "Col_7", 9);
    SetCell("A7p1", 6, "Col_1", 500);
    SetCell("A7p1", 8, "Col_1", -100);
    SetCell("A7p1", 8, "Col_3", nullptr);
    SetCell("A7p1", 8, "Col_2", 6);
    SetCell("A7p1", 7, "Col_1", 12345);  // of an earlier run
    Calc_A7p1();
    EXPECT_EQ(Num("A7p1", 1, "Col_4"), 230);
    EXPECT_EQ(Num("A7p1", 1, "Col_6"), 1226);
    EXPECT_EQ(Num("A7p1", 7, "Col_1"), 1500);
    EXPECT_EQ(Num("A7p1", 7, "Col_4"), 230);
    EXPECT_EQ(Num("A7p1", 7, "Col_6"), 1726);
    EXPECT_EQ(Num("A7p1", 7, "Col_7"), 9);
    EXPECT_EQ(Num("A7p1", 8, "Col_4"), 6);
    EXPECT_EQ(Num("A7p1", 8, "Col_6"), -94);
    EXPECT_EQ(Num("A7p1", 9, "Col_1"), 1400);
    EXPECT_EQ(Num("A7p1", 9, "Col_2"), 206);
    EXPECT_EQ(Num("A7p1", 9, "Col_3"), 30);
    EXPECT_EQ(Num("A7p1", 9, "Col_6"), 1632);
}

TEST_F(W_A7Test, RollForwardOfNulls) {
    gDB.Execute(
        "UPDATE A7p1 SET Col_1=Null,Col_2=Null,Col_3=Null,Col_4=Null,Col_5=Null,Col_6=Null,"
        "Col_7=Null;");
    Calc_A7p1();
    for (const char* field : {"Col_1", "Col_4", "Col_6", "Col_7"}) {
        EXPECT_EQ(Cell("A7p1", 9, field), Variant(0.0)) << field;
    }
    EXPECT_TRUE(IsNullCell("A7p1", 1, "Col_1"));
}

TEST_F(W_A7Test, RatiosOf1And2) {
    SetCell("A7p2", 1, "Col_1", 1);
    SetCell("A7p2", 2, "Col_1", 5);
    SetCell("A7p2", 2, "Col_2", 3);
    Calc_A7p2();
    EXPECT_EQ(Num("A7p2", 2, "Col_3"), 2);
    EXPECT_EQ(Num("A7p2", 3, "Col_3"), 3);
    EXPECT_EQ(Num("A7p2", 1, "Col_4"), 0.333333);
    EXPECT_EQ(Num("A7p2", 2, "Col_4"), 0.666667);
    EXPECT_EQ(Num("A7p2", 3, "Col_4"), 1);
}

TEST_F(W_A7Test, OfThreeEqualLinesTheFirstTakesTheResidual) {
    AddCenters({1.01});
    for (const double line : {1.0, 1.01, 2.0}) SetCell("A7p2", line, "Col_1", 700);
    Calc_A7p2();
    EXPECT_EQ(Num("A7p2", 1, "Col_4"), 0.333334);
    EXPECT_EQ(Num("A7p2", 1.01, "Col_4"), 0.333333);
    EXPECT_EQ(Num("A7p2", 2, "Col_4"), 0.333333);
}

TEST_F(W_A7Test, AZeroTotalGivesZeroRatios) {
    SetCell("A7p2", 1, "Col_4", 0.7);
    SetCell("A", 4, "Col_1", 1000);
    Calc_A7p2();
    for (const int line : {1, 2, 3}) EXPECT_EQ(Cell("A7p2", line, "Col_4"), Variant(0.0));
    EXPECT_EQ(Num("A7p2", 3, "Col_5"), 1000);
    EXPECT_EQ(Num("A7p2", 1, "Col_5"), 1000) << "the first row takes what is left";
    EXPECT_EQ(Num("A7p2", 2, "Col_5"), 0);
}

class A7Shares : public W_A7Test {
protected:
    A7Shares() {
        SetCell("A7p2", 1, "Col_1", 100);
        SetCell("A7p2", 2, "Col_1", 100);
    }
};

TEST_F(A7Shares, AnEvenCostSplitsWithoutResidual) {
    SetCell("A", 4, "Col_1", 1000);
    Calc_A7p2();
    EXPECT_EQ(Num("A7p2", 1, "Col_5"), 500);
    EXPECT_EQ(Num("A7p2", 2, "Col_5"), 500);
    EXPECT_EQ(Num("A7p2", 3, "Col_5"), 1000);
}

TEST_F(A7Shares, AnOddCostRoundsAwayFromZeroAndTheFirstGivesBack) {
    SetCell("A", 4, "Col_1", 1001);
    Calc_A7p2();
    EXPECT_EQ(Num("A7p2", 1, "Col_5"), 500);
    EXPECT_EQ(Num("A7p2", 2, "Col_5"), 501);
}

TEST_F(A7Shares, ANegativeHalfRoundsAwayFromZero) {
    SetCell("A", 5, "Col_1", -1);
    Calc_A7p2();
    EXPECT_EQ(Num("A7p2", 2, "Col_6"), -1);
    EXPECT_EQ(Num("A7p2", 1, "Col_6"), 0) << "-1 + -1 against -2: the first takes 1";
    EXPECT_EQ(Num("A7p2", 3, "Col_6"), -1);
}

TEST_F(A7Shares, TheLargestAmountIsByValueNotBySize) {
    SetCell("A7p2", 1, "Col_1", 300);
    SetCell("A", 6, "Col_1", -3);
    Calc_A7p2();
    // .75 * -3 = -2.25 and .25 * -3 = -.75 round to -2 and -1: nothing is left.
    EXPECT_EQ(Num("A7p2", 1, "Col_7"), -2);
    EXPECT_EQ(Num("A7p2", 2, "Col_7"), -1);
    SetCell("A", 6, "Col_1", -6);
    Calc_A7p2();
    // -4.5 and -1.5 round to -5 and -2: the larger number, -2, takes the 1.
    EXPECT_EQ(Num("A7p2", 1, "Col_7"), -5);
    EXPECT_EQ(Num("A7p2", 2, "Col_7"), -1);
}

TEST_F(A7Shares, ABooksAmountLessItsDirectAllocationIsSpread) {
    SetCell("Bp3", 52, "CC_400", 300);
    SetCell("Bp3", 52, "CC_600", 40);
    SetCell("A", 6, "Col_1", 100);
    Calc_A7p2();
    EXPECT_EQ(Num("A7p2", 3, "Col_5"), -300) << "no books amount on line 4";
    EXPECT_EQ(Num("A7p2", 3, "Col_7"), 60);
    EXPECT_EQ(Num("A7p2", 1, "Col_7"), 30);
    EXPECT_EQ(Num("A7p2", 1, "Col_8"), -120);
    EXPECT_EQ(Num("A7p2", 3, "Col_8"), -240);
}

TEST_F(A7Shares, ASubscriptOf4To6IsNotSpread) {
    AddCenters({4.01});
    SetCell("A7p2", 1, "Col_1", 1);
    SetCell("A", 4.01, "Col_1", 500);
    SetCell("A", 5, "Col_1", 80);
    Calc_A7p2();
    EXPECT_EQ(Num("A7p2", 3, "Col_5"), 0);
    EXPECT_EQ(Num("A7p2", 3, "Col_6"), 80);
}

TEST_F(A7Shares, TheTotalLineSumsTheKeyedColumns) {
    SetCell("A7p2", 1, "Col_9", 10);
    SetCell("A7p2", 2, "Col_9", 5);
    SetCell("A7p2", 2, "Col_14", 7);
    Calc_A7p2();
    EXPECT_EQ(Num("A7p2", 3, "Col_1"), 200);
    EXPECT_EQ(Num("A7p2", 3, "Col_9"), 15);
    EXPECT_EQ(Num("A7p2", 3, "Col_14"), 7);
    EXPECT_EQ(Num("A7p2", 2, "Col_15"), 12);
    EXPECT_EQ(Num("A7p2", 3, "Col_15"), 22);
}

TEST_F(A7Shares, ItBringsAUpToDate) {
    SetCell("A", 8, "Col_1", 70);
    Calc_A7p2();
    EXPECT_EQ(Num("A", 100, "Col_1"), 70);
}

TEST_F(A7Shares, AWithoutLine5IsAFailure) {
    gDB.Execute("DELETE FROM A WHERE LineNum=5;");
    EXPECT_THROW(Calc_A7p2(), StoreError);
}

TEST_F(A7Shares, TwoRunsGiveTheSame) {
    SetCell("A", 4, "Col_1", 1001);
    SetCell("A", 5, "Col_1", -77);
    Calc_A7p2();
    const auto first = Dump();
    Calc_A7p2();
    EXPECT_EQ(Dump(), first);
}

}  // namespace
}  // namespace zolmara
