#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/W_Fx.h"

namespace zolmara {
namespace {

using namespace test;

class W_FxTest : public SheetTest {
protected:
    void Calc(void (*calc)(std::string_view), std::string_view item) {
        RunBatch(gDB, [=] { calc(item); });
    }
};

TEST_F(W_FxTest, Fields) {
    EXPECT_EQ(gDB.Table("Fp1").Fields.size(), 7u);
    EXPECT_EQ(gDB.Table("F1p2").Fields.size(), 12u);
    EXPECT_EQ(gDB.Table("F2p3").Fields.size(), 7u);
    EXPECT_EQ(FindField("F1p1", "Col_9")->Title, "Total|Non-Capital|Cost");
}

TEST_F(W_FxTest, RowsAreTheComponentsAndTheTotals) {
    SetComponents(1, {1, 2});
    SetComponents(3, {9});
    EXPECT_EQ(Column("SELECT LineNum FROM F2p1 ORDER BY LineNum;"),
              (std::vector<double>{1, 2, 51}));
    EXPECT_EQ(Column("SELECT LineNum FROM Fp3 ORDER BY LineNum;"),
              (std::vector<double>{9, 51, 52}));
    EXPECT_EQ(TextCell("F1p1", 2, "Description"), "Component 2");
}

TEST_F(W_FxTest, ATableThatCannotBeDeletedStopsTheRebuild) {
    gDB.Close();
    Build_Fx("F1p1");
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "Worksheet F1p1 Error");
}

// --- F -------------------------------------------------------------------------------------

TEST_F(W_FxTest, CapitalCostOfAComponent) {
    AddCenters({1.01, 2.99});
    SetComponents(1, {1});
    SetCell("Bp1", 1, "Col_7", 10);
    SetCell("Cp1", 1, "Col_3", 20);
    SetCell("E1p1", 1, "CC_100", 1);
    SetCell("E1p1", 1, "CC_101", 2);
    SetCell("E1p1", 1, "CC_200", 4);
    SetCell("E1p1", 1, "CC_299", 8);
    SetCell("E1p1", 1, "CC_800", 1000);
    SetCell("E1p1", 1, "Col_7", 1000);
    SetCell("E1p1", 1, "CC_2800", 1000);
    Calc(Calc_Fpx, "Fp1");
    EXPECT_EQ(Num("Fp1", 1, "Col_1"), 10);
    EXPECT_EQ(Num("Fp1", 1, "Col_2"), 20);
    EXPECT_EQ(Num("Fp1", 1, "Col_3"), 15);
    EXPECT_EQ(Num("Fp1", 1, "Col_4"), 45);
    EXPECT_EQ(Cell("Fp1", 51, "Col_4"), Variant(0.0));
}

TEST_F(W_FxTest, TheTotalsComeFromTheSourcesTotals) {
    SetComponents(2, {1});
    SetCell("Bp2", 51, "Col_7", 10);
    SetCell("Cp2", 51, "Col_3", -3);
    SetCell("E1p2", 51, "CC_200", 5);
    Calc(Calc_Fpx, "Fp2");
    EXPECT_EQ(Num("Fp2", 51, "Col_4"), 12);
}

TEST_F(W_FxTest, TheGrandTotalSumsTheThreeLines51) {
    for (const char* item : {"Bp1", "Bp2", "Bp3"}) SetCell(item, 51, "Col_7", 100);
    for (const char* item : {"Cp1", "Cp2", "Cp3"}) SetCell(item, 51, "Col_3", 10);
    for (const char* item : {"E1p1", "E1p2", "E1p3"}) SetCell(item, 51, "CC_100", 1);
    for (const char* item : {"Fp1", "Fp2", "Fp3"}) Calc(Calc_Fpx, item);
    EXPECT_EQ(Num("Fp3", 52, "Col_1"), 300);
    EXPECT_EQ(Num("Fp3", 52, "Col_2"), 30);
    EXPECT_EQ(Num("Fp3", 52, "Col_3"), 3);
    EXPECT_EQ(Num("Fp3", 52, "Col_4"), 333);
}

TEST_F(W_FxTest, TheGrandTotalIsWrittenByEachPartsRunFromWhatStandsThen) {
    SetCell("Bp1", 51, "Col_7", 1);
    for (const char* field : {"Col_1", "Col_2", "Col_3", "Col_4"}) {
        SetCell("Fp2", 51, field, 20);
        SetCell("Fp3", 51, field, 300);
    }
    SetCell("Cp1", 51, "Col_3", 2);
    Calc(Calc_Fpx, "Fp1");
    EXPECT_EQ(Num("Fp3", 52, "Col_1"), 321);
    EXPECT_EQ(Num("Fp3", 52, "Col_4"), 323);
}

TEST_F(W_FxTest, ANullAmongTheAddendsOfTheGrandTotalWrites0) {
    SetCell("Fp2", 51, "Col_1", 20);
    SetCell("Fp3", 52, "Col_1", 77);
    Calc(Calc_Fpx, "Fp1");
    EXPECT_EQ(Cell("Fp3", 52, "Col_1"), Variant(0.0)) << "line 51 of Fp3 is still Null";
}

// --- F-1 -----------------------------------------------------------------------------------

TEST_F(W_FxTest, SalariesAndAllOther) {
    AddCenters({7.5, 8.01, 9.99, 28.01, 98.99});
    SetComponents(1, {1});
    for (const char* item : {"B1p1", "Dp1"}) {
        SetCell(item, 1, "CC_750", 100000);  // below salaries: in no class
        SetCell(item, 1, "CC_800", 1);
        SetCell(item, 1, "CC_801", 2);
        SetCell(item, 1, "CC_999", 4);
        SetCell(item, 1, "CC_1000", 10);
        SetCell(item, 1, "CC_1200", 20);
        SetCell(item, 1, "CC_2700", 40);
        SetCell(item, 1, "CC_2800", 100000);
        SetCell(item, 1, "CC_2801", 100000);
        SetCell(item, 1, "CC_9899", 80);
        SetCell(item, 1, "Col_99", 100000);
    }
    SetCell("Dp1", 1, "CC_800", 101);
    SetCell("E1p1", 1, "CC_100", 100000);
    SetCell("E1p1", 1, "CC_801", 1000);
    SetCell("E1p1", 1, "Col_7", 3000);
    SetCell("E1p1", 1, "CC_2801", 100000);
    Calc(Calc_F1px, "F1p1");
    const std::vector<double> expected = {7, 107, 1000, 1114, 150, 150, 3000, 3300, 4414};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(Num("F1p1", 1, "Col_" + std::to_string(i + 1)), expected[i]) << i + 1;
    }
    EXPECT_EQ(Cell("F1p1", 51, "Col_9"), Variant(0.0));
}

TEST_F(W_FxTest, ACodeAbove9899IsInNoClass) {
    SetComponents(1, {1});
    gDB.AppendField("B1p1", {.Name = "CC_9900", .Type = FieldType::dbDouble});
    SetCell("B1p1", 1, "CC_9900", 5);
    Calc(Calc_F1px, "F1p1");
    Calc(Calc_F2px, "F2p1");
    EXPECT_EQ(Num("F1p1", 1, "Col_5"), 0);
    EXPECT_EQ(Num("F1p1", 1, "Col_9"), 0);
    EXPECT_EQ(Num("F2p1", 1, "Col_4"), 0);
}

TEST_F(W_FxTest, ARowThatTheSourcesLackStaysAsItIs) {
    SetComponents(1, {1});
    SetCell("F1p1", 1, "Col_1", 5);
    gDB.Execute("DELETE FROM B1p1 WHERE LineNum=1;");
    Calc(Calc_F1px, "F1p1");
    EXPECT_EQ(Num("F1p1", 1, "Col_1"), 5);
    EXPECT_EQ(Num("F1p1", 1, "Col_4"), 5);
}

// --- F-2 -----------------------------------------------------------------------------------

TEST_F(W_FxTest, InterestIncomeAndItsSubscripts) {
    AddCenters({28.01, 29});
    SetComponents(3, {1});
    SetCell("B1p3", 1, "CC_2800", 1);
    SetCell("B1p3", 1, "CC_2801", 2);
    SetCell("B1p3", 1, "CC_2700", 1000);
    SetCell("B1p3", 1, "CC_2900", 1000);
    SetCell("Dp3", 1, "CC_2800", -10);
    SetCell("Dp3", 52, "CC_2800", -70);
    SetCell("E1p3", 1, "CC_2801", 300);
    SetCell("E1p3", 1, "Col_7", 1000);
    Calc(Calc_F2px, "F2p3");
    EXPECT_EQ(Num("F2p3", 1, "Col_1"), 3);
    EXPECT_EQ(Num("F2p3", 1, "Col_2"), -10);
    EXPECT_EQ(Num("F2p3", 1, "Col_3"), 300);
    EXPECT_EQ(Num("F2p3", 1, "Col_4"), 293);
    EXPECT_EQ(Num("F2p3", 52, "Col_2"), -70);
    EXPECT_EQ(Num("F2p3", 52, "Col_4"), -70);
}

}  // namespace
}  // namespace zolmara
