#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/W_A6.h"

namespace zolmara {
namespace {

using namespace test;

class W_A6Test : public SheetTest {
protected:
    void Entry(double line, const Variant& code, const Variant& up, const Variant& upAmount,
               const Variant& down, const Variant& downAmount) {
        gDB.Execute(
            "INSERT INTO A6 (LineNum,Col_2,Col_3,Col_4,Col_5,Col_6,Col_7,Col_8) VALUES "
            "(?,?,'Old up',?,?,'Old down',?,?);",
            {Currency(line), code, up, upAmount, down, downAmount});
    }
};

TEST_F(W_A6Test, BuildSeedsTheTotalRow) {
    EXPECT_EQ(Rows("A6"), 1);
    EXPECT_EQ(TextCell("A6", 100, "Col_1"), "TOTAL RECLASSIFICATIONS");
    EXPECT_EQ(Cell("A6", 100, "Col_5"), Variant(0.0));
    EXPECT_EQ(Cell("A6", 100, "Col_8"), Variant(0.0));
    EXPECT_TRUE(IsNullCell("A6", 100, "Col_4"));
}

TEST_F(W_A6Test, TotalsAre0OnAnEmptyTable) {
    SetCell("A6", 100, "Col_5", 77);
    Calc_A6();
    EXPECT_EQ(Cell("A6", 100, "Col_5"), Variant(0.0));
    EXPECT_EQ(Cell("A6", 100, "Col_8"), Variant(0.0));
}

TEST_F(W_A6Test, AnEntryOnLine0ContributesNothingAndLosesItsAmount) {
    Entry(1, "A", 0, 100, 9, 30);
    Entry(2, "A", 8, 50, nullptr, 20);
    Entry(3, "A", -1, 7, -2, 8);
    Calc_A6();
    EXPECT_TRUE(IsNullCell("A6", 1, "Col_5"));
    EXPECT_TRUE(IsNullCell("A6", 1, "Col_3"));
    EXPECT_EQ(TextCell("A6", 1, "Col_6"), "Old down");
    EXPECT_TRUE(IsNullCell("A6", 2, "Col_8"));
    EXPECT_TRUE(IsNullCell("A6", 3, "Col_5"));
    EXPECT_TRUE(IsNullCell("A6", 3, "Col_8"));
    EXPECT_EQ(Num("A6", 100, "Col_5"), 50);
    EXPECT_EQ(Num("A6", 100, "Col_8"), 30);
}

TEST_F(W_A6Test, NamesComeFromTheCostCenters) {
    Entry(1, "A", 8, 50, 9, 50);
    Entry(2, "A", 3, 50, 0, 50);
    SyncNames_A6();
    EXPECT_EQ(TextCell("A6", 1, "Col_3"), "Salaries of Officers");
    EXPECT_EQ(TextCell("A6", 1, "Col_6"), "Salaries and Wages of Others");
    EXPECT_EQ(TextCell("A6", 2, "Col_3"), "Old up") << "line 3 has no cost center";
    EXPECT_TRUE(IsNullCell("A6", 2, "Col_6"));
    EXPECT_TRUE(IsNullCell("A6", 2, "Col_8"));
    EXPECT_EQ(TextCell("A6", 100, "Col_1"), "TOTAL RECLASSIFICATIONS");
    EXPECT_EQ(Cell("A6", 100, "Col_5"), Variant(0.0)) << "the total row keeps its sum";
}

TEST_F(W_A6Test, SyncKeepsTheAmountOfANegativeLine) {
    Entry(1, "A", -1, 50, -2, 60);
    SyncNames_A6();
    EXPECT_EQ(Num("A6", 1, "Col_5"), 50);
    EXPECT_EQ(Num("A6", 1, "Col_8"), 60);
}

TEST_F(W_A6Test, SyncFindsASubscriptKeptAsADouble) {
    AddCenters({4.03});
    Entry(1, "A", 4.02 + .01, 50, 9, 50);
    SyncNames_A6();
    EXPECT_EQ(TextCell("A6", 1, "Col_3"), "Center 4.03");
}

TEST_F(W_A6Test, AnEntryWithAnEarlierCodeMovesUp) {
    Entry(1, "C", 8, 1, 9, 1);
    Entry(2, "B", 8, 2, 9, 2);
    Entry(5, "B", 8, 3, 9, 3);
    Entry(7, "A", 8, 4, 9, 4);
    ResequenceLines_A6();
    EXPECT_EQ(Column("SELECT Col_5 FROM A6 WHERE LineNum<100 ORDER BY LineNum;"),
              (std::vector<double>{4, 2, 3, 1}));
    EXPECT_EQ(Column("SELECT LineNum FROM A6 ORDER BY LineNum;"),
              (std::vector<double>{1, 2, 3, 4, 100}));
}

TEST_F(W_A6Test, ResequencingASingleEntryAndNone) {
    ResequenceLines_A6();
    EXPECT_EQ(Rows("A6"), 1);
    Entry(40.5, "A", 8, 1, 9, 1);
    ResequenceLines_A6();
    EXPECT_EQ(Column("SELECT LineNum FROM A6 ORDER BY LineNum;"), (std::vector<double>{1, 100}));
}

class ResequenceCase : public W_A6Test, public ::testing::WithParamInterface<std::array<int, 2>> {};

/// So many entries, and the last whole line that they take.
INSTANTIATE_TEST_SUITE_P(Sizes, ResequenceCase,
                         ::testing::Values(std::array{99, 99}, std::array{100, 99},
                                           std::array{120, 99}, std::array{198, 99},
                                           std::array{199, 98}, std::array{297, 98},
                                           std::array{298, 97}));

TEST_P(ResequenceCase, WholeLinesThenSubscriptsOfTheLast) {
    const auto [entries, lastWhole] = GetParam();
    RunBatch(gDB, [&, count = entries] {
        for (int i = 1; i <= count; ++i) Entry(i / 100.0, "A", 8, i, 9, i);
    });
    ResequenceLines_A6();
    std::vector<double> expected;
    for (int i = 1; i <= entries; ++i) {
        const int hundredths = i <= lastWhole ? i * 100 : lastWhole * 100 + (i - lastWhole);
        expected.push_back(hundredths / 100.0);
    }
    EXPECT_EQ(Column("SELECT LineNum FROM A6 WHERE LineNum<100 ORDER BY LineNum;"), expected);
    EXPECT_EQ(Num("A6", 100, "Col_5"), 0);
}

// --- Cell check ----------------------------------------------------------------------------

struct Checked {
    int Result;
    Variant Value;
    Variant OutName;
};

Checked Check(int column, const Variant& value) {
    Checked checked{0, value, "before"};
    checked.Result = ValidateCell_A6(column, checked.Value, checked.OutName);
    return checked;
}

TEST_F(W_A6Test, ColumnsThatAreNotKeyedGive99) {
    for (const int column : {0, 3, 6, 9, -1}) EXPECT_EQ(Check(column, "A").Result, 99) << column;
}

TEST_F(W_A6Test, AnExplanationIsAlwaysAccepted) {
    EXPECT_EQ(Check(1, nullptr).Result, 0);
    EXPECT_EQ(Check(1, "anything").Result, 0);
}

TEST_F(W_A6Test, CodesAreOneLetterKeptInUpperCase) {
    const Checked lower = Check(2, "a");
    EXPECT_EQ(lower.Result, 0);
    EXPECT_EQ(lower.Value, Variant("A"));
    EXPECT_EQ(lower.OutName, Variant("A"));
    EXPECT_EQ(Check(2, "Z").Result, 0);
    for (const Variant& bad : {Variant("AB"), Variant("1"), Variant(""), Variant("["), Variant(),
                               Variant(" "), Variant(7)}) {
        EXPECT_EQ(Check(2, bad).Result, 1) << Text(bad);
    }
}

TEST_F(W_A6Test, BlankLinesAreAcceptedWithoutAName) {
    for (const int column : {4, 7}) {
        const Checked null = Check(column, nullptr);
        EXPECT_EQ(null.Result, 0);
        EXPECT_EQ(null.Value, Variant(""));
        EXPECT_TRUE(null.OutName.IsNull());
        EXPECT_TRUE(Check(column, "  ").OutName.IsNull());
    }
}

TEST_F(W_A6Test, Line0IsAcceptedAndLeavesTheNameAlone) {
    EXPECT_EQ(Check(4, 0).Result, 0);
    EXPECT_EQ(Check(4, "0").OutName, Variant("before"));
}

TEST_F(W_A6Test, LinesAreLookedUpInTheCostCenters) {
    AddCenters({4.01});
    EXPECT_EQ(Check(4, 8).OutName, Variant("Salaries of Officers"));
    EXPECT_EQ(Check(7, "4.01").OutName, Variant("Center 4.01"));
    EXPECT_EQ(Check(7, 9).Result, 0);
    EXPECT_EQ(Check(4, "eight").Result, 1);
    for (const double line : {3.0, 7.0, 28.0, 99.0, 100.0, 60.0, -8.0, 1e20}) {
        EXPECT_EQ(Check(4, line).Result, 3) << line;
        EXPECT_EQ(Check(7, line).Result, 6) << line;
    }
}

TEST_F(W_A6Test, AmountsMustBeNumeric) {
    EXPECT_EQ(Check(5, "12").Result, 0);
    EXPECT_EQ(Check(8, -3).Result, 0);
    EXPECT_EQ(Check(5, "x").Result, 5);
    EXPECT_EQ(Check(8, "").Result, 8);
    EXPECT_EQ(Check(8, nullptr).Result, 8);
}

}  // namespace
}  // namespace zolmara
