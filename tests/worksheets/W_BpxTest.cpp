#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/W_Bpx.h"

namespace zolmara {
namespace {

using namespace test;

class W_BpxTest : public SheetTest {
protected:
    /// Calculates the statistics and the amounts of C or D.
    void CalcFamily(char letter) {
        RunBatch(gDB, [letter] {
            for (const std::string& family :
                 {std::string{letter, '1', 'p'}, std::string{letter, 'p'}}) {
                for (const char part : {'1', '2', '3'}) Calc_Bpx(family + part);
            }
        });
    }
};

// --- Creation ------------------------------------------------------------------------------

TEST_F(W_BpxTest, EachScheduleTakesItsCostCenters) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(FieldNames("Bp1"), (Names{"LineNum", "Description", "Col_0", "CC_100", "CC_200",
                                        "CC_400", "CC_500", "CC_600", "Col_7"}));
    EXPECT_EQ(FieldNames("Cp2"),
              (Names{"LineNum", "Description", "Col_0", "CC_100", "CC_200", "Col_3"}));
    EXPECT_EQ(FieldNames("C1p3"), (Names{"LineNum", "Description", "Col_0", "CC_100", "CC_200"}));
    const Names direct = FieldNames("B1p1");
    EXPECT_EQ(direct.size(), 25u);
    EXPECT_EQ(direct[3], "CC_800");
    EXPECT_EQ(direct[23], "CC_2800");
    EXPECT_EQ(direct[24], "Col_99");
    EXPECT_EQ(FieldNames("Dp3"), direct);
    EXPECT_EQ(FieldNames("D1p3").back(), "CC_2800");
}

TEST_F(W_BpxTest, SubscriptsStandInTheOrderOfTheirLines) {
    AddCenters({4.01, 2.99, 6.99, 30});
    using Names = std::vector<std::string>;
    EXPECT_EQ(FieldNames("Bp3"),
              (Names{"LineNum", "Description", "Col_0", "CC_100", "CC_200", "CC_299", "CC_400",
                     "CC_401", "CC_500", "CC_600", "CC_699", "Col_7"}));
    EXPECT_EQ(FieldNames("C1p1").back(), "CC_299");
    EXPECT_EQ(FieldNames("D1p1").back(), "CC_3000");
}

TEST_F(W_BpxTest, RowsAreTheComponentsAndTheFixedLines) {
    SetComponents(3, {1, 2.01});
    using Lines = std::vector<double>;
    EXPECT_EQ(Column("SELECT LineNum FROM Bp3 ORDER BY LineNum;"), (Lines{1, 2.01, 51, 52}));
    EXPECT_EQ(Column("SELECT LineNum FROM D1p3 ORDER BY LineNum;"),
              (Lines{1, 2.01, 51, 52, 53, 54}));
    EXPECT_EQ(Column("SELECT LineNum FROM D1p1 ORDER BY LineNum;"), (Lines{51}));
    EXPECT_EQ(TextCell("Cp3", 2.01, "Description"), "Component 2.01");
    EXPECT_EQ(TextCell("Cp3", 2.01, "Col_0"), "14-2.01");
    EXPECT_EQ(TextCell("C1p3", 51, "Description"), "Total");
    EXPECT_EQ(TextCell("C1p3", 52, "Description"), "Grand Total");
    EXPECT_EQ(TextCell("C1p3", 53, "Description"), "Cost to be allocated");
    EXPECT_EQ(TextCell("C1p3", 54, "Description"), "UCM");
}

TEST_F(W_BpxTest, ALongComponentNameIsCut) {
    gDB.Execute("INSERT INTO S2p1 (LineNum,Col_1) VALUES (1,?);", {std::string(60, 'x')});
    Build_Bpx("Bp1");
    EXPECT_EQ(TextCell("Bp1", 1, "Description"), std::string(40, 'x'));
    EXPECT_TRUE(IsNullCell("Bp1", 1, "Col_0"));
}

TEST_F(W_BpxTest, RebuildingLosesTheKeyedData) {
    SetComponents(1, {1});
    SetCell("Bp1", 1, "CC_100", 5);
    Build_Bpx("Bp1");
    EXPECT_TRUE(IsNullCell("Bp1", 1, "CC_100"));
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(W_BpxTest, ATableThatCannotBeDeletedStopsTheRebuild) {
    gDB.Close();
    Build_Bpx("Bp1");
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "Worksheet Bp1 Error");
    EXPECT_EQ(host.Boxes[0].Style, 16);
    const std::string start =
        "Error: The following error was returned when trying to rebuild table Bp1\r\n\r\n";
    EXPECT_EQ(host.Boxes[0].Text.substr(0, start.size()), start);
    EXPECT_GT(host.Boxes[0].Text.size(), start.size());
}

// --- B -------------------------------------------------------------------------------------

TEST_F(W_BpxTest, KeyedAmountsAreTotalledAcrossAndDown) {
    SetComponents(1, {1, 2});
    SetComponents(3, {5});
    SetCell("Bp1", 1, "CC_100", 10.25);
    SetCell("Bp1", 1, "CC_600", 5);
    SetCell("Bp1", 2, "CC_100", -3);
    SetCell("Bp3", 5, "CC_200", 100);
    for (const char* item : {"Bp1", "Bp2", "Bp3"}) Calc_Bpx(item);
    EXPECT_EQ(Num("Bp1", 1, "Col_7"), 15.25);
    EXPECT_EQ(Num("Bp1", 2, "Col_7"), -3);
    EXPECT_EQ(Num("Bp1", 51, "CC_100"), 7.25);
    EXPECT_EQ(Num("Bp1", 51, "Col_7"), 12.25);
    EXPECT_EQ(Cell("Bp2", 51, "Col_7"), Variant(0.0)) << "a part without components";
    EXPECT_EQ(Num("Bp3", 51, "CC_200"), 100);
    EXPECT_EQ(Num("Bp3", 51, "Col_7"), 100);
    EXPECT_EQ(Num("Bp3", 52, "CC_100"), 7.25);
    EXPECT_EQ(Num("Bp3", 52, "CC_200"), 100);
    EXPECT_EQ(Num("Bp3", 52, "Col_7"), 112.25);
    EXPECT_TRUE(IsNullCell("Bp1", 2, "CC_200")) << "a keyed cell stays Null";
}

TEST_F(W_BpxTest, TotalsOfAnEarlierRunDoNotCount) {
    SetComponents(1, {1});
    SetCell("B1p1", 1, "CC_800", 10);
    SetCell("B1p1", 51, "CC_800", 999);
    SetCell("B1p1", 1, "Col_99", 999);
    Calc_Bpx("B1p1");
    EXPECT_EQ(Num("B1p1", 51, "CC_800"), 10);
    EXPECT_EQ(Num("B1p1", 1, "Col_99"), 10);
    EXPECT_EQ(Num("B1p1", 51, "Col_99"), 10);
}

// --- Unit cost multipliers -----------------------------------------------------------------

TEST_F(W_BpxTest, TheMultiplierSumsTheStatisticsOfAllParts) {
    SetComponents(1, {1});
    SetComponents(2, {1});
    SetComponents(3, {1});
    SetCell("C1p1", 1, "CC_100", 1);
    SetCell("C1p2", 1, "CC_100", 2);
    SetCell("C1p3", 1, "CC_100", 4);
    SetCell("C1p3", 53, "CC_100", 100);
    SetCell("C1p3", 54, "CC_200", 77);
    for (const char* item : {"C1p1", "C1p2", "C1p3"}) Calc_Bpx(item);
    EXPECT_EQ(Num("C1p3", 51, "CC_100"), 4);
    EXPECT_EQ(Num("C1p3", 52, "CC_100"), 7);
    EXPECT_EQ(Num("C1p3", 53, "CC_100"), 100) << "only read";
    EXPECT_EQ(Num("C1p3", 54, "CC_100"), 14.285714);
    EXPECT_EQ(Cell("C1p3", 54, "CC_200"), Variant(0.0)) << "no statistics";
}

TEST_F(W_BpxTest, ANullMultiplierIsAFailure) {
    SetComponents(1, {1});
    try {
        Calc_Bpx("Cp1");
        FAIL() << "calculated without multipliers";
    } catch (const StoreError& error) {
        EXPECT_STREQ(error.what(),
                     "Worksheet C1p3 line 54 holds no unit cost multiplier in CC_100.");
    }
}

// --- Amounts -------------------------------------------------------------------------------

TEST_F(W_BpxTest, Cost22900OverTwoComponents) {
    SetComponents(1, {1, 2});
    SetCell("C1p1", 1, "CC_100", 8240);
    SetCell("C1p1", 2, "CC_100", 10560);
    SetCell("C1p3", 53, "CC_100", 22900);
    CalcFamily('C');
    EXPECT_EQ(Num("C1p3", 54, "CC_100"), 1.218085);
    EXPECT_EQ(Num("Cp1", 1, "CC_100"), 10037);
    EXPECT_EQ(Num("Cp1", 2, "CC_100"), 12863);
    EXPECT_EQ(Num("Cp1", 51, "CC_100"), 22900);
    EXPECT_EQ(Num("Cp3", 52, "CC_100"), 22900);
    EXPECT_EQ(Num("Cp3", 52, "Col_3"), 22900);
}

TEST_F(W_BpxTest, AStatisticOf0KeepsTheCellNull) {
    SetComponents(1, {1, 2, 3});
    SetCell("C1p1", 1, "CC_100", 0);
    SetCell("C1p1", 2, "CC_100", 5);
    SetCell("Cp1", 1, "CC_100", 44);  // of an earlier run
    SetCell("Cp1", 3, "CC_100", 55);
    SetCell("C1p3", 53, "CC_100", 10);
    CalcFamily('C');
    EXPECT_TRUE(IsNullCell("Cp1", 1, "CC_100"));
    EXPECT_TRUE(IsNullCell("Cp1", 3, "CC_100"));
    EXPECT_EQ(Num("Cp1", 2, "CC_100"), 10);
    EXPECT_EQ(Cell("Cp1", 1, "Col_3"), Variant(0.0));
}

TEST_F(W_BpxTest, ACostWithoutStatisticsLandsWholeOnTheFirstRow) {
    SetComponents(1, {2, 3});
    SetComponents(2, {1});
    SetCell("C1p3", 53, "CC_200", 500);
    CalcFamily('C');
    EXPECT_EQ(Num("Cp1", 2, "CC_200"), 500);
    EXPECT_EQ(Num("Cp1", 2, "Col_3"), 500);
    EXPECT_TRUE(IsNullCell("Cp1", 3, "CC_200"));
    EXPECT_TRUE(IsNullCell("Cp2", 1, "CC_200"));
    EXPECT_EQ(Num("Cp1", 51, "CC_200"), 500);
    EXPECT_EQ(Num("Cp1", 51, "Col_3"), 500);
    EXPECT_EQ(Num("Cp3", 52, "CC_200"), 500);
    EXPECT_EQ(Num("Cp3", 52, "Col_3"), 500);
    EXPECT_EQ(Cell("C1p3", 54, "CC_200"), Variant(0.0));
}

TEST_F(W_BpxTest, EquallyLargeCellsInTwoPartsGiveTheResidualToTheLowerPart) {
    for (const int part : {1, 2, 3}) SetComponents(part, {1});
    for (const char* item : {"C1p1", "C1p2", "C1p3"}) SetCell(item, 1, "CC_100", 1);
    SetCell("C1p3", 53, "CC_100", 100);
    CalcFamily('C');
    EXPECT_EQ(Num("Cp1", 1, "CC_100"), 34);
    EXPECT_EQ(Num("Cp2", 1, "CC_100"), 33);
    EXPECT_EQ(Num("Cp3", 1, "CC_100"), 33);
    EXPECT_EQ(Num("Cp1", 51, "CC_100"), 34);
    EXPECT_EQ(Num("Cp3", 52, "CC_100"), 100);
}

TEST_F(W_BpxTest, AStrictlyLargerCellOfALaterPartTakesTheResidual) {
    for (const int part : {1, 2, 3}) SetComponents(part, {1});
    SetCell("C1p1", 1, "CC_100", 1);
    SetCell("C1p2", 1, "CC_100", 4);
    SetCell("C1p3", 1, "CC_100", 4);
    SetCell("C1p3", 53, "CC_100", 100);
    CalcFamily('C');
    // 11.111111 a unit: 11, 44 and 44.
    EXPECT_EQ(Num("Cp1", 1, "CC_100"), 11);
    EXPECT_EQ(Num("Cp2", 1, "CC_100"), 45);
    EXPECT_EQ(Num("Cp2", 1, "Col_3"), 45);
    EXPECT_EQ(Num("Cp3", 1, "CC_100"), 44);
    EXPECT_EQ(Num("Cp2", 51, "Col_3"), 45);
    EXPECT_EQ(Num("Cp1", 51, "CC_100"), 11);
}

TEST_F(W_BpxTest, InOnePartTheLowestOfEqualLinesTakesTheResidual) {
    SetComponents(2, {1, 2, 3});
    for (const int line : {1, 2, 3}) SetCell("C1p2", line, "CC_100", 1);
    SetCell("C1p3", 53, "CC_100", 100);
    CalcFamily('C');
    EXPECT_EQ(Column("SELECT CC_100 FROM Cp2 WHERE LineNum<51 ORDER BY LineNum;"),
              (std::vector<double>{34, 33, 33}));
}

TEST_F(W_BpxTest, ANegativeCostRoundsAwayFromZeroAndCloses) {
    SetComponents(1, {1, 2});
    SetCell("D1p1", 1, "CC_2800", 1);
    SetCell("D1p1", 2, "CC_2800", 1);
    SetCell("D1p3", 53, "CC_2800", -5);
    CalcFamily('D');
    EXPECT_EQ(Num("D1p3", 54, "CC_2800"), -2.5);
    // -3 and -3 sum to -6: the first gives 1 back.
    EXPECT_EQ(Num("Dp1", 1, "CC_2800"), -2);
    EXPECT_EQ(Num("Dp1", 2, "CC_2800"), -3);
    SetCell("D1p1", 2, "CC_2800", 2);
    SetCell("D1p3", 53, "CC_2800", -55000);
    CalcFamily('D');
    EXPECT_EQ(Num("D1p3", 54, "CC_2800"), -18333.333333);
    EXPECT_EQ(Num("Dp1", 1, "CC_2800"), -18333);
    EXPECT_EQ(Num("Dp1", 2, "CC_2800"), -36667);
    EXPECT_EQ(Num("Dp3", 52, "CC_2800"), -55000);
}

TEST_F(W_BpxTest, SeveralColumnsOnOneRowCarryTheirResidualsIntoItsTotal) {
    SetComponents(1, {1, 2, 3});
    for (const char* field : {"CC_800", "CC_900"}) {
        for (const int line : {1, 2, 3}) SetCell("D1p1", line, field, 1);
        SetCell("D1p3", 53, field, 100);
    }
    CalcFamily('D');
    EXPECT_EQ(Num("Dp1", 1, "CC_800"), 34);
    EXPECT_EQ(Num("Dp1", 1, "CC_900"), 34);
    EXPECT_EQ(Num("Dp1", 1, "Col_99"), 68);
    EXPECT_EQ(Num("Dp1", 2, "Col_99"), 66);
    EXPECT_EQ(Num("Dp1", 51, "Col_99"), 200);
    EXPECT_EQ(Num("Dp3", 52, "Col_99"), 200);
}

TEST_F(W_BpxTest, ACostWithCentsClosesToTheCent) {
    SetComponents(1, {1, 2});
    SetCell("D1p1", 1, "CC_800", 1);
    SetCell("D1p1", 2, "CC_800", 3);
    SetCell("D1p3", 53, "CC_800", 100.4);
    CalcFamily('D');
    // 25.1 a unit: 25 and 75; the larger takes the 0.40.
    EXPECT_EQ(Num("Dp1", 1, "CC_800"), 25);
    EXPECT_EQ(Num("Dp1", 2, "CC_800"), 75.4);
    EXPECT_EQ(Num("Dp3", 52, "CC_800"), 100.4);
}

TEST_F(W_BpxTest, AColumnWithoutAnyComponentDoesNotClose) {
    SetCell("C1p3", 53, "CC_100", 100);
    CalcFamily('C');
    EXPECT_EQ(Cell("Cp3", 52, "CC_100"), Variant(0.0));
    EXPECT_EQ(Rows("Cp1"), 1);
}

TEST_F(W_BpxTest, AComponentThatTheStatisticsLackTakesTheLineBefore) {
    SetComponents(1, {1, 2});
    SetCell("C1p1", 1, "CC_100", 10);
    SetCell("C1p3", 53, "CC_100", 20);
    gDB.Execute("DELETE FROM C1p1 WHERE LineNum=2;");
    CalcFamily('C');
    EXPECT_EQ(Num("C1p3", 54, "CC_100"), 2);
    EXPECT_EQ(Num("Cp1", 2, "CC_100"), 20);
    EXPECT_EQ(Num("Cp3", 52, "CC_100"), 20) << "the residual closes the column all the same";
    EXPECT_EQ(Num("Cp1", 1, "CC_100"), 0);
}

TEST_F(W_BpxTest, ComponentsWithoutAnyStatisticsRowsAreAFailure) {
    SetComponents(1, {1});
    for (const char* item : {"C1p1", "C1p2", "C1p3"}) Calc_Bpx(item);
    gDB.Execute("DELETE FROM C1p1 WHERE LineNum<51;");
    EXPECT_THROW(Calc_Bpx("Cp1"), StoreError);
}

TEST_F(W_BpxTest, AComponentOnLine50IsAComponentLikeAnyOther) {
    SetComponents(1, {49, 50, 50.99});
    SetCell("Bp1", 50, "CC_100", 4);
    SetCell("Bp1", 50.99, "CC_100", 3);
    Calc_Bpx("Bp1");
    EXPECT_EQ(Num("Bp1", 50, "Col_7"), 4);
    EXPECT_EQ(Num("Bp1", 50.99, "Col_7"), 3);
    EXPECT_EQ(Num("Bp1", 51, "Col_7"), 7);
}

TEST_F(W_BpxTest, TheLargestAmountOnLine50TakesTheResidual) {
    SetComponents(2, {1, 49, 50});
    SetCell("C1p2", 1, "CC_100", 1);
    SetCell("C1p2", 49, "CC_100", 1);
    SetCell("C1p2", 50, "CC_100", 5);
    SetCell("C1p3", 53, "CC_100", 100);
    CalcFamily('C');
    // 14.285714 a unit: 14, 14 and 71 sum to 99.
    EXPECT_EQ(Column("SELECT CC_100 FROM Cp2 WHERE LineNum<51 ORDER BY LineNum;"),
              (std::vector<double>{14, 14, 72}));
    EXPECT_EQ(Num("Cp2", 50, "Col_3"), 72);
}

TEST_F(W_BpxTest, AnAmountOf0InALaterPartIsNoLargerThanNoneInAnEarlier) {
    SetComponents(1, {1});
    SetComponents(2, {1});
    SetCell("C1p2", 1, "CC_100", 1);
    SetCell("C1p3", 53, "CC_100", 0.4);
    CalcFamily('C');
    // 0.4 rounds to 0: the first part, without a statistic, takes the whole cost.
    EXPECT_EQ(Num("Cp1", 1, "CC_100"), 0.4);
    EXPECT_EQ(Cell("Cp2", 1, "CC_100"), Variant(0.0));
}

TEST_F(W_BpxTest, InOnePartAnAmountOf0IsLargerThanNone) {
    SetComponents(1, {1, 2});
    SetCell("C1p1", 2, "CC_100", 1);
    SetCell("C1p3", 53, "CC_100", 0.4);
    CalcFamily('C');
    EXPECT_TRUE(IsNullCell("Cp1", 1, "CC_100"));
    EXPECT_EQ(Num("Cp1", 2, "CC_100"), 0.4);
}

TEST_F(W_BpxTest, WhatTakesTheResidualIsKeptInItsTextForm) {
    SetComponents(1, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    for (int line = 1; line <= 10; ++line) SetCell("D1p1", line, "CC_800", 1);
    SetCell("D1p3", 53, "CC_800", 30.1);
    CalcFamily('D');
    // 3.01 a unit: ten times 3. In binary 3 - 30 + 30.1 is a hair above 3.1.
    EXPECT_NE(3.0 - 30.0 + 30.1, 3.1);
    EXPECT_EQ(Num("Dp1", 1, "CC_800"), 3.1);
    EXPECT_EQ(Num("Dp1", 1, "Col_99"), 3.1);
    EXPECT_EQ(Num("Dp1", 51, "Col_99"), 30.1);
}

TEST_F(W_BpxTest, TwoRunsGiveTheSame) {
    SetComponents(1, {1, 2, 2.01});
    SetComponents(3, {7});
    SetCell("D1p1", 2, "CC_800", 7);
    SetCell("D1p3", 7, "CC_800", 4);
    SetCell("D1p3", 53, "CC_800", 1000);
    SetCell("D1p3", 53, "CC_900", 33);
    CalcFamily('D');
    const auto first = Dump();
    CalcFamily('D');
    EXPECT_EQ(Dump(), first);
}

}  // namespace
}  // namespace zolmara
