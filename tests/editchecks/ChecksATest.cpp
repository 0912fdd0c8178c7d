#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class ChecksA : public CheckedCrf {};

// --- A -------------------------------------------------------------------------------------

TEST_F(ChecksA, TotalsOfWorksheetAAreNotBelowZero) {
    const Findings negative{
        "NF | 1000A | Worksheet A: Line 100, columns 1, 3, and 5 must be greater than or equal to "
        "zero."};
    EXPECT_EQ(Found(CheckALine100), Findings{});
    for (const char* column : {"Col_1", "Col_3", "Col_5"}) {
        SetCell("A", 100, column, -1);
        EXPECT_EQ(Found(CheckALine100), negative) << column;
        SetCell("A", 100, column, 0);
    }
    SetRow("A", 100, {{"Col_2", -1}, {"Col_4", -1}});
    EXPECT_EQ(Found(CheckALine100), Findings{});
    SetRow("A", 100, {{"Col_1", -1}, {"Col_3", -1}, {"Col_5", -1}});
    EXPECT_EQ(Found(CheckALine100), negative);
}

TEST_F(ChecksA, BinaryNoiseBelowZeroIsNoFinding) {
    SetCell("A", 100, "Col_5", -0.00001);
    EXPECT_EQ(Found(CheckALine100), Findings{});
}

TEST_F(ChecksA, WithoutLine100ThereIsNothingBelowZero) {
    gDB.Execute("DELETE * FROM A WHERE LineNum=100;");
    EXPECT_EQ(Found(CheckALine100), Findings{});
}

// --- A-6 -----------------------------------------------------------------------------------

class ChecksA6 : public ChecksA {
protected:
    /// An entry from line 9 to line 8.
    static void AddEntry(double line, const char* code, Variant up, Variant down,
                         const char* explanation = "To reclassify") {
        AddRow("A6", line,
               {{"Col_1", explanation},
                {"Col_2", code},
                {"Col_4", 8},
                {"Col_5", up},
                {"Col_7", 9},
                {"Col_8", down}});
    }
};

TEST_F(ChecksA6, TotalsOfBothSidesAreEqual) {
    SetRow("A6", 100, {{"Col_5", 100}, {"Col_8", 100}});
    EXPECT_EQ(Found(CheckA6Totals), Findings{});
    SetRow("A6", 100, {{"Col_5", 100.01}});
    EXPECT_EQ(Found(CheckA6Totals),
              Findings{"NF | 1020A | Worksheet A-6: Line 100, column 5 must equal column 8."});
    SetRow("A6", 100, {{"Col_5", Variant()}, {"Col_8", 0}});
    EXPECT_EQ(Found(CheckA6Totals), Findings{});
}

TEST_F(ChecksA6, TotalsThatDifferByNoiseAloneAreEqual) {
    SetRow("A6", 100, {{"Col_5", 0.1 + 0.2}, {"Col_8", 0.3}});
    EXPECT_EQ(Found(CheckA6Totals), Findings{});
}

TEST_F(ChecksA6, IncreasesAndDecreasesOfACodeAreEqual) {
    AddEntry(1, "A", 100, 60);
    AddEntry(2, "A", Variant(), 40);
    AddEntry(3, "B", 10.5, 10);
    AddEntry(4, "C", 1, 1);
    EXPECT_EQ(Found(CheckA6Codes),
              Findings{"NF | 1025A | Worksheet A-6: For each reclassification code (B) the sum of "
                       "all increases (10.5) must equal the sum of all decreases (10)."});
}

TEST_F(ChecksA6, TheLastCodeIsClosedByAnotherCodeAndByNothingElse) {
    AddEntry(1, "A", 100, 100);
    AddEntry(2, "B", 100, 50);
    EXPECT_EQ(Found(CheckA6Codes), Findings{});
    AddRow("A6", 3);  // an entry without a code
    EXPECT_EQ(Found(CheckA6Codes).size(), 1u);
}

TEST_F(ChecksA6, ACodeThatComesBackIsSummedAnew) {
    AddEntry(1, "A", 100, 0);
    AddEntry(2, "B", 5, 5);
    AddEntry(3, "A", 0, 100);
    AddEntry(4, "C", 1, 1);
    const Findings found = Found(CheckA6Codes);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_NE(found[0].find("increases (100) must equal the sum of all decreases (0)"),
              std::string::npos);
    EXPECT_NE(found[1].find("increases (0) must equal the sum of all decreases (100)"),
              std::string::npos);
}

TEST_F(ChecksA6, SumsInTheMessageAreDecimalsWithoutNoise) {
    AddEntry(1, "A", 0.1, 0);
    AddEntry(2, "A", 0.2, 0);
    AddEntry(3, "B", 1, 1);
    const Findings found = Found(CheckA6Codes);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_NE(found[0].find("increases (0.3)"), std::string::npos);
}

TEST_F(ChecksA6, TheFirstEntryOfACodeExplainsIt) {
    AddEntry(1, "A", 1, 1);
    AddEntry(2, "A", 1, 1, "");
    AddEntry(3, "B", 1, 1, " ");
    AddEntry(4, "B", 1, 1);
    EXPECT_EQ(Found(CheckA6Codes),
              Findings{"NF | 1040A | Worksheet A-6: Line 3 must have an explanation reported on "
                       "the first line for each relassification code reported in column 2."});
}

TEST_F(ChecksA6, AnIncreaseHasACodeAndALineOfA) {
    const Findings bad{
        "NF | 1030A | Worksheet A-6: Line 1 with an entry in column 5, columns 2 and 4 must have "
        "valid entries."};
    AddEntry(1, "A", 100, 0);
    EXPECT_EQ(Found(CheckA6Codes), Findings{});
    for (const Variant& line : {Variant(3), Variant(7), Variant(8.01), Variant(99), Variant(100),
                                Variant(0), Variant()}) {
        SetCell("A6", 1, "Col_4", line);
        EXPECT_EQ(Found(CheckA6Codes), bad) << Text(line);
    }
    SetCell("A6", 1, "Col_4", 8);
    SetCell("A6", 1, "Col_2", " ");
    EXPECT_EQ(Found(CheckA6Codes), bad);
}

TEST_F(ChecksA6, ADecreaseHasACodeAndALineOfA) {
    const Findings bad{
        "NF | 1030A | Worksheet A-6: Line 1 with an entry in column 8, columns 2 and 7 must have "
        "valid entries."};
    AddEntry(1, "A", 0, -100);
    EXPECT_EQ(Found(CheckA6Codes), Findings{});
    for (const Variant& line : {Variant(3), Variant(7), Variant(50), Variant()}) {
        SetCell("A6", 1, "Col_7", line);
        EXPECT_EQ(Found(CheckA6Codes), bad) << Text(line);
    }
}

TEST_F(ChecksA6, ASubscriptedLineIsFoundWhenAHasIt) {
    AddRow("A", 8.01);
    AddEntry(1, "A", 100, 0);
    SetCell("A6", 1, "Col_4", 8.01);
    EXPECT_EQ(Found(CheckA6Codes), Findings{});
}

TEST_F(ChecksA6, AnEntryWithoutAnAmountNeedsNoLine) {
    AddRow("A6", 1, {{"Col_2", "A"}, {"Col_1", "To reclassify"}, {"Col_5", 0}, {"Col_4", 3}});
    EXPECT_EQ(Found(CheckA6Codes), Findings{});
}

// --- A-7 -----------------------------------------------------------------------------------

TEST_F(ChecksA, EndingBalanceOfAssetsIsAboveZero) {
    const Findings bad{
        "NF | 1050A | Worksheet A-7 Part I: Line 9 column 6 must be greater than zero."};
    EXPECT_EQ(Found(CheckA7p1Line9), bad);  // 0 in a new file
    SetCell("A7p1", 9, "Col_6", -1);
    EXPECT_EQ(Found(CheckA7p1Line9), bad);
    SetCell("A7p1", 9, "Col_6", 1);
    EXPECT_EQ(Found(CheckA7p1Line9), Findings{});
}

TEST_F(ChecksA, LinesOfA7PartIIAreLinesOfA) {
    AddRow("A7p2", 2.01);
    EXPECT_EQ(Found(CheckA7p2),
              Findings{"NF | VLQ | Worksheet A-7 Part II: A7p2 and A line numbers are out of sync. "
                       "Call VLQ."});
    AddRow("A", 2.01);
    EXPECT_EQ(Found(CheckA7p2), Findings{});
}

TEST_F(ChecksA, AllocatedCapitalCostsNeedAssets) {
    const Findings bad{
        "NF | 1070A | Worksheet A-7 Part II: line 3, if the sum of columns 5, 6, and 7 is greater "
        "than zero then column 3 must be greater than zero."};
    SetRow("A7p2", 3, {{"Col_8", 10}, {"Col_3", 0}});
    EXPECT_EQ(Found(CheckA7p2), bad);
    SetCell("A7p2", 3, "Col_3", -5);
    EXPECT_EQ(Found(CheckA7p2), bad);
    SetCell("A7p2", 3, "Col_3", 5);
    EXPECT_EQ(Found(CheckA7p2), Findings{});
    SetRow("A7p2", 3, {{"Col_8", 0}, {"Col_3", 0}});
    SetRow("A7p2", 1, {{"Col_8", 10}, {"Col_3", 0}});  // line 3 alone counts
    EXPECT_EQ(Found(CheckA7p2), Findings{});
}

TEST_F(ChecksA, CapitalTotalsEqualTheAllowableExpensesOfTheLine) {
    SetRow("A7p2", 1, {{"Col_15", 100.5}});
    SetRow("A7p2", 3, {{"Col_15", 100.5}});
    SetRow("A", 3, {{"Col_5", 100.5}});
    EXPECT_EQ(
        Found(CheckA7p2),
        Findings{"NF | 1060A | Worksheet A-7 Part II: total in column 15 (100.5) must equal A "
                 "column 5 (0) for line number1."});
    SetRow("A", 1, {{"Col_5", 100.5}});
    EXPECT_EQ(Found(CheckA7p2), Findings{});
}

// --- Potential error -----------------------------------------------------------------------

class ChecksFixedAssets : public ChecksA {
protected:
    static Findings With(const char* control, double assets, double balance) {
        SetCell("S1p1", 3, "Col_1", control);
        SetCell("A7p1", 9, "Col_6", assets);
        SetCell("G", 26, "Col_1", balance);
        return Found(CheckFixedAssets);
    }
};

const Findings kFixedAssets{
    "PE | 2050A | Worksheet A-7 Part I: Line 9 column 6 should be greater than zero when S-1 Part "
    "I, line 3 has an entry of 1 - 9 and should be equal G Line 26 column 1."};

TEST_F(ChecksFixedAssets, AssetsAreAboveZeroAndEqualTheBalanceSheet) {
    EXPECT_EQ(With("1", 500, 500), Findings{});
    EXPECT_EQ(With("9", 500, 501), kFixedAssets);
    EXPECT_EQ(With("9", 0, 0), kFixedAssets);
    EXPECT_EQ(With("9", -1, -1), kFixedAssets);
}

TEST_F(ChecksFixedAssets, GovernmentalHomeOfficesAreNotAsked) {
    EXPECT_EQ(With("10", 500, 1), Findings{});
    EXPECT_EQ(With("0", 500, 1), Findings{});
    EXPECT_EQ(With("", 500, 1), Findings{});
}

TEST_F(ChecksFixedAssets, ABalanceThatIsMissingIsPassedOver) {
    EXPECT_EQ(With("1", 0, 5), kFixedAssets);
    gDB.Execute("DELETE * FROM G WHERE LineNum=26;");
    EXPECT_EQ(Found(CheckFixedAssets), Findings{});
    EXPECT_EQ(Found(CheckA7p1Line9).size(), 1u);
    gDB.Execute("DELETE * FROM A7p1 WHERE LineNum=9;");
    EXPECT_EQ(Found(CheckA7p1Line9), Findings{});
}

}  // namespace
}  // namespace zolmara
