#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/W_Ex.h"

namespace zolmara {
namespace {

using namespace test;
using Names = std::vector<std::string>;
using Amounts = std::vector<double>;

class W_ExTest : public SheetTest {
protected:
    /// A statistic on line 1 of each part.
    void Statistics(double first, double second, double third) {
        for (const int part : {1, 2, 3}) SetComponents(part, {1});
        SetCell("E1p1", 1, "Col_1", first);
        SetCell("E1p2", 1, "Col_1", second);
        SetCell("E1p3", 1, "Col_1", third);
    }
    void Pool(double line, double amount) { SetCell("A", line, "Col_8", amount); }
    Amounts OfE(std::string_view field) {
        return Column("SELECT " + std::string(field) + " FROM E ORDER BY LineNum;");
    }
    void CalcE() { RunBatch(gDB, Calc_E); }
    void CalcE1(const char* item) {
        RunBatch(gDB, [item] { Calc_E1px(item); });
    }
};

// --- Creation ------------------------------------------------------------------------------

TEST_F(W_ExTest, PoolsOfTheirOwnAndAllOthersBeforeLine28) {
    EXPECT_EQ(FieldNames("E"), (Names{"LineNum", "Description", "Col_1", "Col_2", "CC_100",
                                      "CC_200", "CC_800", "CC_900", "Col_7", "CC_2800"}));
    EXPECT_EQ(FieldNames("E1p2"),
              (Names{"LineNum", "Description", "Col_0", "Col_1", "Col_2", "CC_100", "CC_200",
                     "CC_800", "CC_900", "Col_7", "CC_2800"}));
}

TEST_F(W_ExTest, SubscriptsOfThoseLinesHavePoolsToo) {
    AddCenters({1.01, 2.99, 4.01, 8.5, 9.99, 10.01, 27.01, 28.01, 28.99, 29, 40});
    EXPECT_EQ(FieldNames("E"), (Names{"LineNum", "Description", "Col_1", "Col_2", "CC_100",
                                      "CC_101", "CC_200", "CC_299", "CC_800", "CC_850", "CC_900",
                                      "CC_999", "Col_7", "CC_2800", "CC_2801", "CC_2899"}));
}

TEST_F(W_ExTest, Rows) {
    EXPECT_EQ(Column("SELECT LineNum FROM E ORDER BY LineNum;"), (Amounts{1, 2, 3, 4}));
    EXPECT_EQ(TextCell("E", 2, "Description"), "Non-Healthcare Components");
    SetComponents(3, {4});
    EXPECT_EQ(Column("SELECT LineNum FROM E1p3 ORDER BY LineNum;"), (Amounts{4, 51, 52}));
    EXPECT_EQ(TextCell("E1p3", 4, "Col_0"), "14-4");
    EXPECT_EQ(TextCell("E1p3", 52, "Description"), "Grand Total");
    EXPECT_EQ(test::Rows("E1p1"), 1);
}

TEST_F(W_ExTest, ATableThatCannotBeDeletedStopsTheRebuild) {
    gDB.Close();
    Build_Ex("E1p1");
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "Worksheet E1p1 Error");
}

// --- E -------------------------------------------------------------------------------------

TEST_F(W_ExTest, ThreeEqualStatisticsGiveTheFirstTheResidualRatio) {
    Statistics(3, 3, 3);
    CalcE();
    EXPECT_EQ(OfE("Col_1"), (Amounts{3, 3, 3, 9}));
    EXPECT_EQ(OfE("Col_2"), (Amounts{0.333334, 0.333333, 0.333333, 1}));
    EXPECT_EQ(Num("E1p2", 51, "Col_1"), 3);
}

TEST_F(W_ExTest, AmountOf100OverThirdsCloses) {
    Statistics(3, 3, 3);
    Pool(1, 100);
    CalcE();
    EXPECT_EQ(OfE("CC_100"), (Amounts{34, 33, 33, 100}));
    EXPECT_EQ(Num("E1p1", 51, "CC_100"), 34);
    EXPECT_EQ(Num("E1p2", 51, "CC_100"), 33);
    EXPECT_EQ(Num("E1p3", 51, "CC_100"), 33);
}

TEST_F(W_ExTest, TheLargestStatisticByAbsoluteValueTakesTheResidual) {
    Statistics(-7, 5, 5);
    Pool(2, 10);
    CalcE();
    // -7/3, 5/3, 5/3 round to -2.333333, 1.666667 and 1.666667.
    EXPECT_EQ(OfE("Col_2"), (Amounts{-2.333334, 1.666667, 1.666667, 1}));
    // -23, 17 and 17 sum to 11.
    EXPECT_EQ(OfE("CC_200"), (Amounts{-24, 17, 17, 10}));
}

TEST_F(W_ExTest, WithoutStatisticsANewCrfGivesThePoolToTheFirstPart) {
    Pool(8, 70);
    CalcE();
    EXPECT_TRUE(IsNullCell("E", 1, "Col_2"));
    EXPECT_TRUE(IsNullCell("E", 4, "Col_1"));
    EXPECT_EQ(OfE("CC_800"), (Amounts{70, 0, 0, 70}));
    EXPECT_EQ(OfE("CC_900"), (Amounts{0, 0, 0, 0}));
}

TEST_F(W_ExTest, WithoutStatisticsTheRatiosOfTheLastRunStay) {
    Statistics(1, 3, 0);
    CalcE();
    Statistics(0, 0, 0);
    SetCell("E", 1, "Col_1", 1);
    SetCell("E", 2, "Col_1", 3);
    SetCell("E", 1, "Col_2", 0.25);
    SetCell("E", 2, "Col_2", 0.75);
    Pool(1, 100);
    CalcE();
    EXPECT_EQ(OfE("CC_100"), (Amounts{25, 75, 0, 100}));
    EXPECT_EQ(Num("E1p1", 51, "Col_1"), 0);
}

TEST_F(W_ExTest, ANegativePoolRoundsAwayFromZeroAndCloses) {
    Statistics(1, 1, 0);
    Pool(28, -5);
    CalcE();
    // -2.5 twice gives -3 and -3: the first gives 1 back.
    EXPECT_EQ(OfE("CC_2800"), (Amounts{-2, -3, 0, -5}));
}

TEST_F(W_ExTest, AllOtherPoolsRunFrom10To28AndFrom29To99) {
    AddCenters({9.01, 10.01, 27.99, 28.01, 29, 98.99});
    Statistics(1, 0, 0);
    for (const double line :
         {1.0, 8.0, 9.0, 9.01, 10.0, 10.01, 27.0, 27.99, 28.0, 28.01, 29.0, 98.99}) {
        Pool(line, 1);
    }
    Pool(99, 1000);
    Pool(100, 1000);
    CalcE();
    EXPECT_EQ(OfE("Col_7"), (Amounts{6, 0, 0, 6}));
    EXPECT_EQ(OfE("CC_2801"), (Amounts{1, 0, 0, 1}));
    EXPECT_EQ(Num("E1p1", 51, "Col_7"), 6);
}

TEST_F(W_ExTest, ACostCenterThatALacksTakesTheRowBefore) {
    Statistics(1, 0, 0);
    Pool(8, 80);
    Pool(10, 15);
    gDB.Execute("DELETE FROM A WHERE LineNum=9;");
    CalcE();
    EXPECT_EQ(OfE("CC_900"), (Amounts{80, 0, 0, 80}));
}

TEST_F(W_ExTest, AFractionStaysWithTheLargestPart) {
    Statistics(1, 2, 1);
    Pool(1, 100.4);
    CalcE();
    EXPECT_EQ(OfE("CC_100"), (Amounts{25, 50.4, 25, 100.4}));
}

TEST_F(W_ExTest, EWithoutItsPartsIsAFailure) {
    gDB.Execute("DELETE FROM E WHERE LineNum<4;");
    EXPECT_THROW(Calc_E(), StoreError);
}

// --- E-1 -----------------------------------------------------------------------------------

class E1Split : public W_ExTest {
protected:
    void Components(const Amounts& statistics) {
        Amounts lines;
        for (std::size_t i = 0; i < statistics.size(); ++i) lines.push_back(double(i + 1));
        SetComponents(1, lines);
        for (std::size_t i = 0; i < statistics.size(); ++i) {
            SetCell("E1p1", double(i + 1), "Col_1", statistics[i]);
        }
    }
    Amounts OfPart1(std::string_view field) {
        return Column("SELECT " + std::string(field) +
                      " FROM E1p1 WHERE LineNum<51 ORDER BY LineNum;");
    }
};

TEST_F(E1Split, RatiosAndAmountsClose) {
    Components({1, 1, 1});
    SetCell("E1p1", 51, "CC_100", 34);
    SetCell("E1p1", 51, "Col_7", -100);
    CalcE1("E1p1");
    EXPECT_EQ(OfPart1("Col_2"), (Amounts{0.333334, 0.333333, 0.333333}));
    EXPECT_EQ(Num("E1p1", 51, "Col_1"), 3);
    EXPECT_EQ(Num("E1p1", 51, "Col_2"), 1);
    EXPECT_EQ(OfPart1("CC_100"), (Amounts{12, 11, 11}));
    EXPECT_EQ(OfPart1("Col_7"), (Amounts{-34, -33, -33}));
    EXPECT_EQ(Num("E1p1", 51, "CC_100"), 34);
    EXPECT_EQ(OfPart1("CC_800"), (Amounts{0, 0, 0}));
}

TEST_F(E1Split, TheRatioResidualGoesToTheLargestPlainValue) {
    Components({-7, 5, 5});
    CalcE1("E1p1");
    EXPECT_EQ(OfPart1("Col_2"), (Amounts{-2.333333, 1.666666, 1.666667}));
}

TEST_F(E1Split, TheAmountResidualGoesToTheLargestAbsoluteValue) {
    Components({-7, 5, 5});
    SetCell("E1p1", 51, "CC_100", 10);
    CalcE1("E1p1");
    // -23.33333, 16.66666 and 16.66667 round to -23, 17 and 17: 11 against 10.
    EXPECT_EQ(OfPart1("CC_100"), (Amounts{-24, 17, 17}));
}

TEST_F(E1Split, WithoutStatisticsTheShareLandsOnTheFirstComponent) {
    Components({0, 0});
    SetCell("E1p1", 2, "Col_1", nullptr);
    SetCell("E1p1", 51, "CC_900", 40);
    CalcE1("E1p1");
    EXPECT_EQ(OfPart1("Col_2"), (Amounts{0, 0}));
    EXPECT_EQ(OfPart1("CC_900"), (Amounts{40, 0}));
    EXPECT_EQ(Num("E1p1", 51, "CC_900"), 40);
    EXPECT_TRUE(IsNullCell("E1p1", 2, "Col_1"));
}

TEST_F(E1Split, APartWithoutComponentsKeepsItsShare) {
    SetCell("E1p2", 51, "CC_100", 7);
    CalcE1("E1p2");
    EXPECT_EQ(Num("E1p2", 51, "CC_100"), 7);
    EXPECT_EQ(Cell("E1p2", 51, "Col_1"), Variant(0.0));
}

TEST_F(E1Split, AShareWithCentsIsRoundedToTheDollar) {
    Components({1, 1});
    SetCell("E1p1", 51, "CC_100", 34.4);
    CalcE1("E1p1");
    EXPECT_EQ(Num("E1p1", 51, "CC_100"), 34);
    EXPECT_EQ(OfPart1("CC_100"), (Amounts{17, 17}));
}

TEST_F(E1Split, TheGrandTotalSumsTheThreeParts) {
    SetComponents(3, {1});
    SetCell("E1p3", 1, "Col_1", 5);
    SetCell("E1p1", 51, "CC_100", 1);
    SetCell("E1p2", 51, "CC_100", 20);
    SetCell("E1p3", 51, "CC_100", 300);
    SetCell("E1p2", 51, "CC_2800", -8);
    SetCell("E1p3", 52, "CC_900", 99);  // of an earlier run
    CalcE1("E1p3");
    EXPECT_EQ(Num("E1p3", 1, "CC_100"), 300);
    EXPECT_EQ(Num("E1p3", 52, "CC_100"), 321);
    EXPECT_EQ(Num("E1p3", 52, "CC_2800"), -8);
    EXPECT_EQ(Cell("E1p3", 52, "CC_900"), Variant(0.0));
    EXPECT_TRUE(IsNullCell("E1p3", 52, "Col_2"));
}

TEST_F(E1Split, WithoutLine51ItIsAFailure) {
    gDB.Execute("DELETE FROM E1p1 WHERE LineNum=51;");
    EXPECT_THROW(Calc_E1px("E1p1"), StoreError);
}

}  // namespace
}  // namespace zolmara
