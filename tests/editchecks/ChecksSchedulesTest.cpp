#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class ChecksSchedules : public CheckedCrf {};

// --- B -------------------------------------------------------------------------------------

TEST_F(ChecksSchedules, FirstTwoColumnsOfBEqualTheFirstTwoLinesOfA) {
    SetRow("Bp3", 52, {{"CC_100", 10}, {"CC_200", 20.5}});
    EXPECT_EQ(
        Found(CheckBp3AgainstA),
        (Findings{"NF | 1010B | B Part III, line 52, column 1 must equal A, line 1, column 6.",
                  "NF | 1020B | B Part III, line 52, column 2 must equal A, line 2, column 6."}));
    SetCell("A", 1, "Col_6", 10);
    SetCell("A", 2, "Col_6", 20.5);
    EXPECT_EQ(Found(CheckBp3AgainstA), Findings{});
    SetCell("Bp3", 52, "CC_400", 7);  // the other columns are not held against A
    EXPECT_EQ(Found(CheckBp3AgainstA), Findings{});
}

TEST_F(ChecksSchedules, AMissingGrandTotalOfBIsPassedOver) {
    SetCell("A", 2, "Col_6", 1);
    EXPECT_EQ(
        Found(CheckBp3AgainstA),
        Findings{"NF | 1020B | B Part III, line 52, column 2 must equal A, line 2, column 6."});
    gDB.Execute("DELETE * FROM Bp3 WHERE LineNum=52;");
    EXPECT_EQ(Found(CheckBp3AgainstA), Findings{});
}

TEST_F(ChecksSchedules, TotalsAndCostsThatAreMissingArePassedOver) {
    SetCell("C1p3", 53, "CC_100", 5);
    SetCell("D1p3", 53, "CC_800", 5);
    SetCell("A", 1, "Col_7", 5);
    SetCell("A", 8, "Col_7", 5);
    // The costs agree with A, the amounts do not.
    EXPECT_EQ(Found(CheckCp3AgainstA).size(), 1u);
    EXPECT_EQ(Found(CheckC1p3Costs).size(), 1u);
    EXPECT_EQ(Found(CheckDp3AgainstA).size(), 1u);
    EXPECT_EQ(Found(CheckD1p3Costs).size(), 1u);
    for (const char* item : {"B1p3", "Cp3", "Dp3"})
        gDB.Execute("DELETE * FROM " + std::string(item) + " WHERE LineNum=52;");
    gDB.Execute("DELETE * FROM A WHERE LineNum=9;");
    for (const auto check :
         {CheckB1p3AgainstA, CheckCp3AgainstA, CheckC1p3Costs, CheckDp3AgainstA, CheckD1p3Costs})
        EXPECT_EQ(Found(check), Findings{});
}

TEST_F(ChecksSchedules, ColumnsOfB1EqualTheirLinesOfA) {
    SetRow("B1p3", 52, {{"CC_800", 10}, {"CC_2800", -3}});
    SetCell("A", 8, "Col_6", 10);
    EXPECT_EQ(
        Found(CheckB1p3AgainstA),
        Findings{"NF | 1060B | B Part III, line 52, column 28 must equal A, line 28, column 6."});
    SetCell("A", 28, "Col_6", -3.00001);  // noise
    EXPECT_EQ(Found(CheckB1p3AgainstA), Findings{});
}

TEST_F(ChecksSchedules, AColumnOfB1WithoutItsLineOfAIsToldOnce) {
    SetCell("B1p3", 52, "CC_900", 5);
    gDB.Execute("DELETE * FROM A WHERE LineNum=9;");
    EXPECT_EQ(Found(CheckB1p3AgainstA),
              Findings{"NF | VLQ | B Part III, line 52, column 9 must have a line 9 within A."});
}

TEST_F(ChecksSchedules, ASubscriptedColumnHasItsSubscriptedLine) {
    gDB.AppendField("B1p3", {"CC_801", FieldType::dbDouble});
    SetCell("B1p3", 52, "CC_801", 5);
    EXPECT_EQ(
        Found(CheckB1p3AgainstA),
        Findings{"NF | VLQ | B Part III, line 52, column 8.01 must have a line 8.01 within A."});
    AddRow("A", 8.01, {{"Col_6", 5}});
    EXPECT_EQ(Found(CheckB1p3AgainstA), Findings{});
    SetCell("A", 8.01, "Col_6", 6);
    EXPECT_EQ(
        Found(CheckB1p3AgainstA),
        Findings{
            "NF | 1060B | B Part III, line 52, column 8.01 must equal A, line 8.01, column 6."});
}

TEST_F(ChecksSchedules, EveryDirectAmountBelowZeroBlocksTheReport) {
    AddRow("Bp1", 1, {{"CC_100", -1}, {"Col_7", -1}});
    AddRow("Bp2", 2.01, {{"CC_200", -0.01}});
    AddRow("Bp3", 3, {{"CC_100", 5}});
    AddRow("B1p1", 1, {{"CC_800", 0}});
    AddRow("B1p2", 1, {{"CC_900", -1}});
    AddRow("B1p3", 50, {{"Col_99", -1}});
    SetCell("B1p3", 51, "CC_900", -1);  // totals are not looked at
    const std::string rest = ": Amounts should be greater than or equal to zero.";
    EXPECT_EQ(Found(CheckDirectAmounts), (Findings{"NF | 2000B | B Part I, Line 1" + rest,
                                                   "NF | 2000B | B Part I, Line 1" + rest,
                                                   "NF | 2000B | B Part II, Line 2.01" + rest,
                                                   "NF | 2000B | B-1 Part II, Line 1" + rest,
                                                   "NF | 2000B | B-1 Part III, Line 50" + rest}));
}

// --- C -------------------------------------------------------------------------------------

TEST_F(ChecksSchedules, ColumnsOfCEqualTheirLinesOfA) {
    SetRow("Cp3", 52, {{"CC_100", 10}, {"CC_200", 20}, {"Col_3", 30}});
    SetCell("A", 1, "Col_7", 10);
    EXPECT_EQ(
        Found(CheckCp3AgainstA),
        Findings{"NF | 1000C | C Part III, line 52, column 2 must equal A, line 2, column 7."});
    gDB.Execute("DELETE * FROM A WHERE LineNum=2;");
    EXPECT_EQ(Found(CheckCp3AgainstA),
              Findings{"NF | VLQ | C Part III, line 52, column 2 must have a line 2 within A."});
}

TEST_F(ChecksSchedules, CostsOfC1EqualTheirLinesOfAAndTheAmountsOfC) {
    const std::string bad =
        "NF | 1020C | C-1 Part III, line 52, column 1 must equal A, line 1, column 7.";
    SetCell("C1p3", 53, "CC_100", 10);
    EXPECT_EQ(Found(CheckC1p3Costs), (Findings{bad, bad}));
    SetCell("A", 1, "Col_7", 10);
    EXPECT_EQ(Found(CheckC1p3Costs), Findings{bad});
    SetCell("Cp3", 52, "CC_100", 10);
    EXPECT_EQ(Found(CheckC1p3Costs), Findings{});
    SetCell("C1p3", 52, "CC_100", 999);  // the statistics' total
    EXPECT_EQ(Found(CheckC1p3Costs), Findings{});
}

TEST_F(ChecksSchedules, ACostOfC1WithoutItsLineOfAIsTold) {
    gDB.Execute("DELETE * FROM A WHERE LineNum=1;");
    EXPECT_EQ(Found(CheckC1p3Costs),
              Findings{"NF | VLQ | C-1 Part III, line 52, column 1 must have a line 1 within A."});
}

TEST_F(ChecksSchedules, StatisticsOfACostAreNotBelowZero) {
    SetRow("C1p3", 53, {{"CC_100", 100}, {"CC_200", -100}});
    AddRow("C1p1", 1, {{"CC_100", -1}, {"CC_200", -1}});
    AddRow("C1p2", 2, {{"CC_100", 5}});
    AddRow("C1p2", 2.01, {{"CC_100", -5}});
    AddRow("C1p3", 4, {{"CC_100", -5}});
    SetCell("C1p3", 51, "CC_100", -5);  // totals are not looked at
    const std::string head =
        "NF | 1010C | C-1 Part III, line 53, column 1 when greater than zero, C-1 Part ";
    const std::string tail = ", column 1 must be greater than or equal zero.";
    EXPECT_EQ(Found(CheckC1Statistics),
              (Findings{head + "I, line 1" + tail, head + "II, line 2.01" + tail,
                        head + "III, line 4" + tail}));
    SetCell("C1p3", 53, "CC_100", 0);
    EXPECT_EQ(Found(CheckC1Statistics), Findings{});
}

// --- D -------------------------------------------------------------------------------------

TEST_F(ChecksSchedules, ColumnsOfDEqualTheirLinesOfA) {
    SetRow("Dp3", 52, {{"CC_800", 10}, {"CC_2800", -20}});
    SetCell("A", 28, "Col_7", -20);
    EXPECT_EQ(
        Found(CheckDp3AgainstA),
        Findings{"NF | 1000D | D Part III, line 52, column 8 must equal A, line 8, column 7."});
    gDB.Execute("DELETE * FROM A WHERE LineNum=8;");
    EXPECT_EQ(Found(CheckDp3AgainstA),
              Findings{"NF | VLQ | D Part III, line 52, column 8 must have a line 8 within A."});
}

TEST_F(ChecksSchedules, CostsOfD1EqualTheirLinesOfAAndTheAmountsOfD) {
    const std::string notA =
        "NF | 1020D | D-1 Part III, line 53, column 8 must equal A, line 8 column 7.";
    const std::string notD =
        "NF | 1020D | D-1 Part III, line 53, column 8 must equal D Part III, line 52 column 8.";
    SetCell("D1p3", 53, "CC_800", 10);
    EXPECT_EQ(Found(CheckD1p3Costs), (Findings{notA, notD}));
    SetCell("A", 8, "Col_7", 10);
    EXPECT_EQ(Found(CheckD1p3Costs), Findings{notD});
    SetCell("Dp3", 52, "CC_800", 10);
    EXPECT_EQ(Found(CheckD1p3Costs), Findings{});
    SetCell("A", 8, "Col_7", 11);
    EXPECT_EQ(Found(CheckD1p3Costs), Findings{notA});
    gDB.Execute("DELETE * FROM A WHERE LineNum=8;");
    EXPECT_EQ(Found(CheckD1p3Costs), Findings{});
}

TEST_F(ChecksSchedules, StatisticsOfD1GoByPartRowAndField) {
    SetRow("D1p3", 53, {{"CC_800", 100}, {"CC_900", 100}, {"CC_2800", -100}});
    AddRow("D1p1", 2, {{"CC_800", -1}, {"CC_900", -1}, {"CC_2800", -1}});
    AddRow("D1p1", 1, {{"CC_900", -1}});
    AddRow("D1p2", 1, {{"CC_800", -1}});
    const std::string tail = " must be greater than or equal zero.";
    EXPECT_EQ(
        Found(CheckD1Statistics),
        (Findings{
            "NF | 1010D | D-1 Part III, line 53, column 9 when greater than zero, D-1 Part I, "
            "line 1, column 9" +
                tail,
            "NF | 1010D | D-1 Part III, line 53, column 8 when greater than zero, D-1 Part I, "
            "line 2, column 8" +
                tail,
            "NF | 1010D | D-1 Part III, line 53, column 9 when greater than zero, D-1 Part I, "
            "line 2, column 9" +
                tail,
            "NF | 1015D | D-1 Part III, line 53, column 28 when not zero, D-1 Part I, line 2, "
            "column 28 must be greater than zero.",
            "NF | 1010D | D-1 Part III, line 53, column 8 when greater than zero, D-1 Part "
            "II, line 1, column 8" +
                tail}));
}

TEST_F(ChecksSchedules, ColumnsFromInterestIncomeOnAskForACostOfAnySign) {
    gDB.AppendField("D1p1", {"CC_2801", FieldType::dbDouble});
    gDB.AppendField("D1p3", {"CC_2801", FieldType::dbDouble});
    AddRow("D1p1", 1, {{"CC_2700", -1}, {"CC_2800", -1}, {"CC_2801", -1}});
    SetRow("D1p3", 53, {{"CC_2700", -50}, {"CC_2800", 0}, {"CC_2801", 50}});
    EXPECT_EQ(
        Found(CheckD1Statistics),
        Findings{"NF | 1015D | D-1 Part III, line 53, column 28.01 when not zero, D-1 Part I, "
                 "line 1, column 28.01 must be greater than zero."});
}

TEST_F(ChecksSchedules, InterestIncomeWithACostAboveZeroHasItsOwnCodeToo) {
    AddRow("D1p1", 1, {{"CC_2700", -1}, {"CC_2800", -1}});
    SetRow("D1p3", 53, {{"CC_2700", 50}, {"CC_2800", 50}});
    EXPECT_EQ(
        Found(CheckD1Statistics),
        (Findings{"NF | 1010D | D-1 Part III, line 53, column 27 when greater than zero, D-1 Part "
                  "I, line 1, column 27 must be greater than or equal zero.",
                  "NF | 1015D | D-1 Part III, line 53, column 28 when not zero, D-1 Part I, line "
                  "1, column 28 must be greater than zero."}));
}

}  // namespace
}  // namespace zolmara
