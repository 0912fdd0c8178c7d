#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/W_A.h"
#include "worksheets/W_G.h"
#include "worksheets/W_G1.h"

namespace zolmara {
namespace {

using namespace test;

class W_GTest : public SheetTest {
protected:
    void Key(int line, double amount) { SetCell("G", line, "Col_1", amount); }
    double G(int line) { return Num("G", line, "Col_1"); }
    double G1(double line) { return Num("G1", line, "Col_2"); }
};

TEST_F(W_GTest, BuildSeeds48LinesOf0) {
    EXPECT_EQ(Rows("G"), 48);
    EXPECT_EQ(TextCell("G", 6, "Description"),
              "Less: allowances for uncollectible notes and accounts receivable");
    EXPECT_EQ(TextCell("G", 48, "Description"), "Total liabilities and retained earnings");
    EXPECT_EQ(Cell("G", 30, "Col_1"), Variant(0.0));
}

TEST_F(W_GTest, TheAllowanceOnLine6ReducesCurrentAssets) {
    Key(1, 1000);
    Key(9, 11);
    Key(6, 100);
    Calc_G();
    EXPECT_EQ(G(10), 911);
    EXPECT_EQ(G(32), 911);
}

TEST_F(W_GTest, AccumulatedDepreciationReducesFixedAssets) {
    for (const int line : {11, 12, 14, 16, 18, 20, 22, 24, 25}) Key(line, 100);
    for (const int line : {13, 15, 17, 19, 21, 23}) Key(line, 10);
    Calc_G();
    EXPECT_EQ(G(26), 840);
}

TEST_F(W_GTest, TheWholeSheet) {
    for (int line = 1; line <= 48; ++line) Key(line, line);
    Calc_G();
    EXPECT_EQ(G(10), 33) << "1+2+3+4+5+7+8+9 = 39, less 6";
    EXPECT_EQ(G(26), 54) << "162 less 108";
    EXPECT_EQ(G(31), 114);
    EXPECT_EQ(G(32), 201);
    EXPECT_EQ(G(40), 252);
    EXPECT_EQ(G(45), 170);
    EXPECT_EQ(G(46), 422);
    EXPECT_EQ(G(48), 469);
}

TEST_F(W_GTest, SumsAreHeldWithFourDecimals) {
    Key(27, 0.00004);
    Key(28, 0.00004);
    Key(33, 1.23456);
    Calc_G();
    EXPECT_EQ(G(31), 0.0001);
    EXPECT_EQ(G(40), 1.2346);
    EXPECT_EQ(G(46), 1.2346);
}

TEST_F(W_GTest, NullsCountAs0) {
    gDB.Execute("UPDATE G SET Col_1=Null;");
    Calc_G();
    for (const int line : {10, 26, 31, 32, 40, 45, 46, 48}) {
        EXPECT_EQ(Cell("G", line, "Col_1"), Variant(0.0)) << line;
    }
    EXPECT_TRUE(IsNullCell("G", 1, "Col_1"));
}

TEST_F(W_GTest, AnAmountTooLargeForFourDecimalsIsAFailure) {
    Key(27, 1e15);
    EXPECT_THROW(Calc_G(), StoreError);
}

TEST_F(W_GTest, ABalanceKeepsItsFourDecimalsWhateverItsSize) {
    Key(1, 123456789012.25);
    Key(2, 0.0625);
    Calc_G();
    EXPECT_EQ(G(10), 123456789012.3125) << "sixteen digits";
}

/// What the calculation of G stops with.
std::string Refusal() {
    try {
        Calc_G();
    } catch (const StoreError& error) {
        return error.what();
    }
    return {};
}

TEST_F(W_GTest, ABalanceThatIsTooLargeNamesItsLine) {
    Key(27, 1e15);
    EXPECT_EQ(Refusal(), "Worksheet G: the balance of line 31 is too large.");
    Key(27, 0);
    Key(6, 1e300);
    EXPECT_EQ(Refusal(), "Worksheet G: the balance of line 10 is too large.");
    Key(6, 0);
    // Each sum can be held, and what they add up to cannot.
    Key(1, 9e14);
    Key(11, 9e14);
    EXPECT_EQ(Refusal(), "Worksheet G: the balance of line 32 is too large.");
}

TEST(ValidateCell_GTest, ComputedLinesRefuse) {
    for (const double line : {10.0, 26.0, 31.0, 32.0, 40.0, 45.0, 46.0, 48.0, 10.5}) {
        EXPECT_EQ(ValidateCell_G(Currency(line)),
                  "The cell you are attempting to input or modify is computed.")
            << line;
    }
    for (const double line : {1.0, 9.99, 11.0, 47.0, 49.0}) {
        EXPECT_EQ(ValidateCell_G(Currency(line)), "") << line;
    }
}

// --- G-1 -----------------------------------------------------------------------------------

TEST_F(W_GTest, G1Seeds) {
    EXPECT_EQ(Column("SELECT LineNum FROM G1 ORDER BY LineNum;"),
              (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 15, 21, 22}));
    EXPECT_EQ(TextCell("G1", 22, "Col_1"), "Net income or loss for the period");
    EXPECT_TRUE(IsNullCell("G1", 1, "Col_2"));
}

TEST_F(W_GTest, RevenueLessTheReclassifiedTrialBalance) {
    SetCell("G1", 1, "Col_2", 1000);
    SetCell("A", 100, "Col_3", 800);
    SetCell("A", 100, "Col_5", 555);
    SetCell("G1", 2, "Col_2", 12345);
    Calc_G1();
    EXPECT_EQ(G1(2), 800);
    EXPECT_EQ(G1(3), 200);
    EXPECT_EQ(G1(22), 200);
}

TEST_F(W_GTest, ASubscriptOfLine1IsSubtracted) {
    gDB.Execute("INSERT INTO G1 (LineNum,Col_2) VALUES (1.01,30);");
    SetCell("G1", 1, "Col_2", 100);
    Calc_G1();
    EXPECT_EQ(G1(3), 70);
}

TEST_F(W_GTest, OtherIncomeAndExpenses) {
    SetCell("G1", 1, "Col_2", 100);
    for (int line = 4; line <= 9; ++line) SetCell("G1", line, "Col_2", 1);
    Calc_G1();
    EXPECT_EQ(G1(15), 6);
    EXPECT_EQ(G1(21), 0);
    EXPECT_EQ(G1(22), 106);
    gDB.Execute("INSERT INTO G1 (LineNum,Col_2) VALUES (14.5,10);");
    gDB.Execute("INSERT INTO G1 (LineNum,Col_2) VALUES (16,40);");
    gDB.Execute("INSERT INTO G1 (LineNum,Col_2) VALUES (20.99,2);");
    Calc_G1();
    EXPECT_EQ(G1(15), 16);
    EXPECT_EQ(G1(21), 42);
    EXPECT_EQ(G1(22), 74);
}

TEST_F(W_GTest, AWithoutTotalLineIsAFailure) {
    gDB.Execute("DELETE FROM A WHERE LineNum=100;");
    EXPECT_THROW(Calc_G1(), StoreError);
}

}  // namespace
}  // namespace zolmara
