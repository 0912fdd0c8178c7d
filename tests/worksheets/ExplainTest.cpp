#include <gtest/gtest.h>

#include <algorithm>

#include "calc/Calc_All.h"
#include "worksheets/CellNames.h"
#include "worksheets/Explain.h"
#include "worksheets/ExplainedStatements.h"
#include "worksheets/Sheets.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

using namespace test;
using Names = std::vector<std::string>;

class ExplainTest : public TestCrf {
protected:
    static CellRef At(const char* item, double line, const char* field) {
        return {item, Currency(line), field};
    }
    static Explanation Told(const char* item, double line, const char* field) {
        Explainer explainer;
        return explainer.Explain(At(item, line, field));
    }
    static Names NamesOf(const std::vector<CellRef>& cells) {
        Names names;
        for (const CellRef& cell : cells) names.push_back(CellName(cell));
        return names;
    }
    static Names Users(const char* item, double line, const char* field) {
        Explainer explainer;
        return NamesOf(explainer.Uses(At(item, line, field)));
    }
    /// Three equal statistics and a cost of 100: 33 each, and one dollar over.
    static void ThreeEqualStatistics() {
        SetComponents(1, {1, 4.01, 5});
        for (const double line : {1.0, 4.01, 5.0}) SetCell("C1p1", line, "CC_100", 1);
        SetCell("C1p3", 53, "CC_100", 100);
        Calc_All();
    }
};

// --- Names -----------------------------------------------------------------------------------

TEST(CellNames, AreTheForms) {
    EXPECT_EQ(CellName({"B1p2", Currency(3.01), "CC_1001"}),
              "B-1 Part II, line 3.01, column 10.01");
    EXPECT_EQ(CellName({"A", Currency(8.0), "CCName"}), "A, line 8, CCName");
}

TEST_F(ExplainTest, ATitleIsOneLineWithItsWordsWhole) {
    EXPECT_EQ(Told("A", 8, "Col_2").Title, "Reclassifications");
    EXPECT_EQ(Told("A", 8, "Col_3").Title, "Reclassified Trial Balance");
}

TEST_F(ExplainTest, TheRuleNamesTheWorksheetsAndLinesThatItReads) {
    SetComponents(1, {1});
    EXPECT_EQ(Told("Cp1", 1, "CC_100").Rule,
              "The unit cost multiplier on line 54 of C-1 Part III times the statistic on C-1, in "
              "whole dollars; the column closes on the cost to be allocated, line 53.");
    EXPECT_EQ(Told("D1p3", 54, "CC_800").Rule,
              "The cost to be allocated on line 53 divided by the statistics on line 52, to six "
              "decimals.");
    EXPECT_EQ(Told("F1p3", 52, "Col_6").Rule, "All other non-capital cost of this line on D.")
        << "it holds for totals, too";
    EXPECT_EQ(Told("Fp1", 51, "Col_3").Rule,
              "The capital related pools of this line on E-1: columns 1 and 2 with their "
              "subscripts.");
}

TEST(Figures, HaveCommasAndTheDecimalsThatTheyNeed) {
    EXPECT_EQ(Figure(1250000), "1,250,000");
    EXPECT_EQ(Figure(168102.5), "168,102.50");
    EXPECT_EQ(Figure(0.134482), "0.134482");
    EXPECT_EQ(Figure(-0.5), "-0.50");
    EXPECT_EQ(Figure(0), "0");
}

// --- Rules with their figures ----------------------------------------------------------------

TEST_F(ExplainTest, ColumnsThatAreAddedAndTakenOff) {
    SetCell("A", 8, "Col_1", 1000);
    SetCell("A8", 1, "Col_3", -200);
    SetCell("A8", 1, "Col_5", 8);
    SetCell("A8", 2, "Col_3", 50);
    SetCell("A8", 2, "Col_5", 8);
    Calc_All();
    const Explanation adjusted = Told("A", 8, "Col_4");
    EXPECT_EQ(adjusted.Title, "Adjustments");
    EXPECT_EQ(adjusted.Value, Variant(-150.0));
    EXPECT_EQ(adjusted.Kind, CellState::Computed);
    EXPECT_EQ(adjusted.Rule, "The adjustments of A-8 and of A-8-1 Part I that name this line.");
    EXPECT_EQ(adjusted.Formula, "-200 + 50 = -150");
    EXPECT_EQ(NamesOf(adjusted.Inputs), (Names{"A-8, line 1, column 3", "A-8, line 2, column 3"}));
    EXPECT_EQ(Told("A", 8, "Col_5").Formula, "1,000 - 150 = 850");
    EXPECT_EQ(Told("A", 8, "Col_8").Formula, "850 - 0 - 0 = 850");
    EXPECT_EQ(NamesOf(Told("A", 8, "Col_8").Inputs),
              (Names{"A, line 8, column 5", "A, line 8, column 6", "A, line 8, column 7"}));
}

TEST_F(ExplainTest, AShareThatClosesTheColumn) {
    ThreeEqualStatistics();
    const Explanation first = Told("Cp1", 1, "CC_100");
    EXPECT_EQ(first.Value, Variant(34.0));
    EXPECT_EQ(first.Formula,
              "33.333333 times 1 = 33.333333, rounded 33; 1 added to close the column on the "
              "dollar, since line 1 has the largest amount");
    EXPECT_EQ(NamesOf(first.Inputs),
              (Names{"C-1 Part I, line 1, column 1", "C-1 Part III, line 54, column 1",
                     "C-1 Part III, line 53, column 1"}));
    const Explanation second = Told("Cp1", 4.01, "CC_100");
    EXPECT_EQ(second.Value, Variant(33.0));
    EXPECT_EQ(second.Formula, "33.333333 times 1 = 33.333333, rounded 33");
    EXPECT_EQ(NamesOf(second.Inputs),
              (Names{"C-1 Part I, line 4.01, column 1", "C-1 Part III, line 54, column 1"}));
    EXPECT_EQ(Told("C1p3", 54, "CC_100").Formula, "100 / 3 = 33.33333333, rounded 33.333333");
}

TEST_F(ExplainTest, AShareThatWasRoundedUpTooOftenGivesBack) {
    SetComponents(1, {1, 2});
    for (const int line : {1, 2}) SetCell("D1p1", line, "CC_800", 1);
    SetCell("D1p3", 53, "CC_800", 5);
    Calc_All();
    EXPECT_EQ(Told("Dp1", 1, "CC_800").Formula,
              "2.50 times 1 = 2.50, rounded 3; 1 taken off to close the column on the dollar, "
              "since line 1 has the largest amount");
}

TEST_F(ExplainTest, ACostWithoutStatisticsGoesWholeToTheFirstLine) {
    SetComponents(1, {2});
    SetCell("C1p3", 53, "CC_200", 500);
    Calc_All();
    EXPECT_EQ(Told("Cp1", 2, "CC_200").Formula,
              "there is no statistic; 500 added to close the column on the dollar, since all of "
              "them are 0 and line 2 is the first");
    EXPECT_EQ(Told("C1p3", 54, "CC_200").Formula, "500 / 0 is taken as 0");
}

TEST_F(ExplainTest, ALongSumIsCounted) {
    SetComponents(1, {1, 2, 3, 4, 5, 6, 7, 8});
    for (int line = 1; line <= 8; ++line) SetCell("Bp1", line, "CC_100", 10);
    Calc_All();
    EXPECT_EQ(Told("Bp1", 51, "CC_100").Formula, "the sum of 8 amounts = 80");
    EXPECT_EQ(Told("Bp1", 51, "CC_100").Inputs.size(), 8u);
}

TEST_F(ExplainTest, PoolsThatAreKeptSayWhy) {
    Calc_All();
    const Explanation ratio = Told("E", 1, "Col_2");
    EXPECT_EQ(ratio.Kind, CellState::Computed);
    EXPECT_EQ(ratio.Formula, "kept from the last calculation, since the statistics add up to 0");
}

TEST_F(ExplainTest, ANameThatIsLookedUp) {
    SetCell("A8", 1, "Col_3", 5);
    SetCell("A8", 1, "Col_5", 8);
    Calc_All();
    const Explanation name = Told("A8", 1, "Col_4");
    EXPECT_EQ(name.Formula, "Salaries of Officers");
    EXPECT_EQ(NamesOf(name.Inputs),
              (Names{"A-8, line 1, column 5", "CostCenters, line 8, CCName"}));
}

// --- Keyed and fixed cells -------------------------------------------------------------------

TEST_F(ExplainTest, AKeyedCellSaysWhereItIsChanged) {
    const Explanation keyed = Told("B1p1", 51, "Description");
    EXPECT_EQ(keyed.Kind, CellState::Fixed);
    const Explanation books = Told("A", 8, "Col_1");
    EXPECT_EQ(books.Kind, CellState::Keyed);
    EXPECT_EQ(books.Rule, "Keyed in the editor of worksheet A, or imported.");
    EXPECT_EQ(books.Formula, "");
    EXPECT_TRUE(books.Inputs.empty());
}

TEST_F(ExplainTest, AKeyedCellThatACalculationWritesSaysSo) {
    const Explanation amended = Told("Sp1", 1, "Col_1");
    EXPECT_EQ(amended.Kind, CellState::Keyed);
    EXPECT_EQ(amended.Rule,
              "Keyed in the editor of worksheet S Part I, or imported. The calculation writes "
              "\"No\", \"Yes\" or \"Error\" by the amendment number on line 2.");
}

TEST_F(ExplainTest, AFigureOfAnEarlierCalculationSaysSo) {
    SetCell("A", 8, "Col_1", 1000);
    Calc_All();
    EXPECT_EQ(Told("A", 8, "Col_3").Rule, "Column 1 plus column 2.");
    SetCell("A", 8, "Col_1", 1500);
    const Explanation stale = Told("A", 8, "Col_3");
    EXPECT_EQ(stale.Rule,
              "Column 1 plus column 2. It has not been calculated since its inputs changed.");
    EXPECT_EQ(stale.Value, Variant(1000.0));
    EXPECT_EQ(stale.Formula, "1,500");
}

TEST_F(ExplainTest, FixedCells) {
    SetComponents(2, {1});
    EXPECT_EQ(Told("Dp2", 1, "Description").Rule, "It comes with the component, from S-2 Part II.");
    EXPECT_EQ(Told("A", 5, "Col_7").Kind, CellState::Fixed);
    EXPECT_EQ(Told("E1p3", 52, "Col_2").Kind, CellState::Fixed);
    EXPECT_EQ(Told("A6", 100, "Col_1").Kind, CellState::Fixed);
    EXPECT_EQ(Told("A7p1", 3, "Description").Rule, "It comes with the line of the form.");
}

// --- What depends on a cell ------------------------------------------------------------------

TEST_F(ExplainTest, UsesAreTheFormulasReadBackwards) {
    ThreeEqualStatistics();
    EXPECT_EQ(Users("C1p1", 4.01, "CC_100"),
              (Names{"C-1 Part I, line 51, column 1", "C Part I, line 4.01, column 1"}));
    EXPECT_EQ(Users("C1p3", 53, "CC_100"),
              (Names{"C-1 Part III, line 54, column 1", "C Part I, line 1, column 1"}));
    EXPECT_EQ(Users("C1p3", 54, "CC_100"),
              (Names{"C Part I, line 1, column 1", "C Part I, line 4.01, column 1",
                     "C Part I, line 5, column 1"}));
    EXPECT_EQ(Users("Cp3", 52, "CC_100"), (Names{"A, line 1, column 7"}));
    EXPECT_EQ(Users("A", 100, "Col_3"), (Names{"G-1, line 2, column 2"}));
}

TEST_F(ExplainTest, AnEntryIsUsedByTheLineThatItNames) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_2,Col_4,Col_5) VALUES (1,'A',8,10);");
    Calc_All();
    EXPECT_EQ(Users("A6", 1, "Col_5"), (Names{"A-6, line 100, column 5", "A, line 8, column 2"}));
    EXPECT_EQ(Users("A6", 1, "Col_4"), (Names{"A, line 8, column 2"}));
}

/// Each input of a cell must name the cell among its users. Gives the number of inputs.
std::size_t CheckInputs(Explainer& explainer, const CellRef& cell) {
    if (StateOf(cell) != CellState::Computed) return 0;
    const std::vector<CellRef> inputs = explainer.Explain(cell).Inputs;
    for (const CellRef& input : inputs) {
        const std::vector<CellRef> users = explainer.Uses(input);
        EXPECT_NE(std::ranges::find(users, cell), users.end())
            << CellName(cell) << " reads " << CellName(input);
    }
    return inputs.size();
}

TEST_F(ExplainTest, UsesAndInputsAreTheSameRelation) {
    ThreeEqualStatistics();
    Explainer explainer;
    std::size_t pairs = 0;
    for (const Worksheet& sheet : AllWorksheets()) {
        const std::string item(sheet.Item);
        const std::vector<Currency>& lines = explainer.Walker().Cells().Lines(item);
        if (lines.empty()) continue;
        for (const FieldDef& field : gDB.Table(item).Fields) {
            for (const Currency line : {lines.front(), lines.back()}) {
                pairs += CheckInputs(explainer, {item, line, field.Name});
            }
        }
    }
    EXPECT_GT(pairs, 300u);
}

// --- What a number finally rests on ----------------------------------------------------------

TEST_F(ExplainTest, ATraceEndsInKeyedCells) {
    SetCell("A7p2", 1, "Col_1", 300);
    SetCell("A7p2", 1, "Col_2", 100);
    SetCell("A7p2", 2, "Col_1", 200);
    Calc_All();
    Explainer explainer;
    EXPECT_EQ(NamesOf(explainer.Trace(At("A7p2", 1, "Col_4"))),
              (Names{"A-7 Part II, line 1, column 1", "A-7 Part II, line 1, column 2",
                     "A-7 Part II, line 2, column 1"}));
    EXPECT_EQ(NamesOf(explainer.Trace(At("A7p2", 2, "Col_1"))),
              (Names{"A-7 Part II, line 2, column 1"}));
    EXPECT_TRUE(explainer.Trace(At("G", 1, "Description")).empty());
}

TEST_F(ExplainTest, ACellThatIsNotThereIsEmpty) {
    EXPECT_TRUE(Told("A", 8.5, "Col_1").Value.IsNull());
    EXPECT_TRUE(Told("Cp1", 3, "CC_100").Value.IsNull());
}

}  // namespace
}  // namespace zolmara
