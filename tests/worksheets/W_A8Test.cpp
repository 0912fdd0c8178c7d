#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/W_A.h"
#include "worksheets/W_A8.h"
#include "worksheets/W_A81.h"

namespace zolmara {
namespace {

using namespace test;

class W_A8Test : public SheetTest {
protected:
    void Related(double sequence, const Variant& line, const Variant& allowable,
                 const Variant& included) {
        gDB.Execute("INSERT INTO A81p1 (SeqNum,Col_1,Col_5,Col_6) VALUES (?,?,?,?);",
                    {Currency(sequence), line, allowable, included});
    }
};

TEST_F(W_A8Test, BuildSeedsTheFormsAdjustments) {
    EXPECT_EQ(Rows("A8"), 18);
    EXPECT_EQ(TextCell("A8", 10, "Col_1"), "Rebatesreunds on expenses");
    EXPECT_EQ(TextCell("A8", 15, "Col_1"),
              "Cost of corporate acquisitions of capital stocks and acquisition & developemnt "
              "department");
    EXPECT_EQ(TextCell("A8", 12, "Col_2"), "A-8-1");
    EXPECT_TRUE(IsNullCell("A8", 11, "Col_2"));
    EXPECT_TRUE(IsNullCell("A8", 1, "Col_3")) << "nothing equals Null";
    EXPECT_TRUE(IsNullCell("A8", 100, "Col_3"));
}

TEST_F(W_A8Test, WithoutAmountsTheTotalIs0) {
    Calc_A8();
    EXPECT_EQ(Cell("A8", 100, "Col_3"), Variant(0.0));
    EXPECT_EQ(Cell("A8", 12, "Col_3"), Variant(0.0));
    EXPECT_TRUE(IsNullCell("A8", 1, "Col_3"));
}

TEST_F(W_A8Test, Line12IsTheNetOfA81WhateverWasKeyed) {
    Related(1, 8, 500, 300);
    SetCell("A8", 12, "Col_3", 999);
    SetCell("A8", 1, "Col_3", 50);
    Calc_A81p1();
    Calc_A8();
    EXPECT_EQ(Num("A8", 12, "Col_3"), 200);
    EXPECT_EQ(Num("A8", 100, "Col_3"), 250);
}

TEST_F(W_A8Test, ARowOf0AmountAnd0LineIsNormalised) {
    SetCell("A8", 1, "Col_3", 0);
    SetCell("A8", 1, "Col_5", 0);
    SetCell("A8", 2, "Col_5", 0);
    SetCell("A8", 3, "Col_3", 5);
    SetCell("A8", 3, "Col_5", 0);
    Calc_A8();
    EXPECT_TRUE(IsNullCell("A8", 1, "Col_5"));
    EXPECT_EQ(Cell("A8", 1, "Col_3"), Variant(0.0));
    EXPECT_EQ(Num("A8", 2, "Col_5"), 0);
    EXPECT_FALSE(IsNullCell("A8", 2, "Col_5")) << "a Null amount never matches";
    EXPECT_FALSE(IsNullCell("A8", 3, "Col_5"));
}

TEST_F(W_A8Test, ACostCentersNameReachesItAtTheNextCalculation) {
    SetCell("A8", 1, "Col_3", 5);
    SetCell("A8", 1, "Col_5", 8);
    SetCell("A8", 2, "Col_5", 60);
    SetCell("A8", 2, "Col_4", "Old");
    Calc_A8();
    EXPECT_EQ(TextCell("A8", 1, "Col_4"), "Salaries of Officers");
    EXPECT_TRUE(IsNullCell("A8", 2, "Col_4")) << "no such cost center";
    SetCell("CostCenters", 8, "CCName", "Officers");
    EXPECT_EQ(TextCell("A8", 1, "Col_4"), "Salaries of Officers");
    Calc_A8();
    EXPECT_EQ(TextCell("A8", 1, "Col_4"), "Officers");
}

TEST_F(W_A8Test, AClearedLineKeepsItsAmountAndPostsNothing) {
    SetCell("A8", 1, "Col_3", 40);
    SetCell("A8", 1, "Col_5", 8);
    Calc_A8();
    Calc_A();
    EXPECT_EQ(Num("A", 8, "Col_4"), 40);
    SetCell("A8", 1, "Col_5", nullptr);
    Calc_A8();
    Calc_A();
    EXPECT_EQ(Num("A8", 1, "Col_3"), 40);
    EXPECT_EQ(Num("A8", 100, "Col_3"), 40);
    EXPECT_EQ(Num("A", 8, "Col_4"), 0);
}

// --- A-8-1 ---------------------------------------------------------------------------------

TEST_F(W_A8Test, TheTotalOfA81IsTOTALSBeforeTheFirstRunAndTotalAfter) {
    EXPECT_EQ(TextCell("A81p1", 100, "Col_2"), "TOTALS");
    EXPECT_EQ(Cell("A81p1", 100, "Col_6"), Variant(0.0));
    EXPECT_TRUE(IsNullCell("A81p1", 100, "Col_5"));
    Calc_A81p1();
    EXPECT_EQ(TextCell("A81p1", 100, "Col_2"), "Total");
    for (const char* field : {"Col_5", "Col_6", "Col_7"}) {
        EXPECT_EQ(Cell("A81p1", 100, field), Variant(0.0)) << field;
    }
}

TEST_F(W_A8Test, A81NetsEachLineAndTotals) {
    Related(1, 8, 500, 300);
    Related(1.01, 60, nullptr, 40);
    Related(2, nullptr, 7, nullptr);
    SetCell("A81p1", 2, "Col_2", "Old");
    SetCell("A81p1", 100, "Col_1", 5);
    SetCell("A81p1", 100, "Col_3", "Left over");
    Calc_A81p1();
    EXPECT_EQ(Num("A81p1", 1, "Col_7"), 200);
    EXPECT_EQ(Num("A81p1", 1.01, "Col_7"), -40);
    EXPECT_EQ(Num("A81p1", 2, "Col_7"), 7);
    EXPECT_EQ(TextCell("A81p1", 1, "Col_2"), "Salaries of Officers");
    EXPECT_TRUE(IsNullCell("A81p1", 1.01, "Col_2"));
    EXPECT_TRUE(IsNullCell("A81p1", 2, "Col_2"));
    EXPECT_EQ(Num("A81p1", 100, "Col_5"), 507);
    EXPECT_EQ(Num("A81p1", 100, "Col_6"), 340);
    EXPECT_EQ(Num("A81p1", 100, "Col_7"), 167);
    EXPECT_TRUE(IsNullCell("A81p1", 100, "Col_1"));
    EXPECT_TRUE(IsNullCell("A81p1", 100, "Col_3"));
}

TEST_F(W_A8Test, A81Part2IsEmptyAtFirst) {
    EXPECT_EQ(Rows("A81p2"), 0);
    EXPECT_EQ(FieldNames("A81p2").front(), "SeqNum");
    EXPECT_EQ(gDB.Table("A81p2").Fields.size(), 8u);
}

// --- Cell check ----------------------------------------------------------------------------

struct Checked {
    int Result;
    Variant Value;
    Variant OutName;
};

Checked Check(int column, const Variant& value) {
    Checked checked{0, value, "before"};
    checked.Result = ValidateCell_A8(column, checked.Value, checked.OutName);
    return checked;
}

TEST_F(W_A8Test, ColumnsThatAreNotKeyedGive99) {
    for (const int column : {0, 4, 6, -1}) EXPECT_EQ(Check(column, "A").Result, 99) << column;
}

TEST_F(W_A8Test, ADescriptionTakes36Characters) {
    EXPECT_EQ(Check(1, std::string(36, 'x')).Result, 0);
    EXPECT_EQ(Check(1, std::string(37, 'x')).Result, 1);
    EXPECT_EQ(Check(1, nullptr).Result, 0);
    std::string accents;
    for (int i = 0; i < 36; ++i) accents += "é";
    EXPECT_EQ(Check(1, accents).Result, 0) << "characters, not bytes";
}

TEST_F(W_A8Test, ABasisIsAOrBOrEmpty) {
    EXPECT_EQ(Check(2, " a ").Result, 0);
    EXPECT_EQ(Check(2, " a ").OutName, Variant("A"));
    EXPECT_EQ(Check(2, "b").Value, Variant("B"));
    EXPECT_EQ(Check(2, nullptr).Result, 0);
    EXPECT_EQ(Check(2, "").Result, 0);
    EXPECT_EQ(Check(2, "C").Result, 1);
    EXPECT_EQ(Check(2, "AB").Result, 1);
}

TEST_F(W_A8Test, AnAmountIsAlwaysAccepted) { EXPECT_EQ(Check(3, "x").Result, 0); }

TEST_F(W_A8Test, ALineIsACostCenterThatTakesAdjustments) {
    EXPECT_EQ(Check(5, nullptr).Result, 0);
    EXPECT_EQ(Check(5, "").Result, 0);
    EXPECT_EQ(Check(5, "8").OutName, Variant("Salaries of Officers"));
    EXPECT_EQ(Check(5, "8").Value, Variant(8));
    EXPECT_EQ(Check(5, 28).Result, 0);
    EXPECT_EQ(Check(5, 1).Result, 0);
    for (const Variant& bad :
         {Variant(0), Variant("x"), Variant(" "), Variant(3), Variant(4), Variant(5), Variant(6),
          Variant(7), Variant(99), Variant(100), Variant(60), Variant(1e20)}) {
        EXPECT_EQ(Check(5, bad).Result, 1) << Text(bad);
    }
}

}  // namespace
}  // namespace zolmara
