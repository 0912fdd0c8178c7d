#include <gtest/gtest.h>

#include "core/Globals.h"
#include "forms/ExplainByForm.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

using namespace test;

class ExplainByForm : public TestCrf {
protected:
    static Explanation Told(const char* item, double line, const char* field) {
        Explanation told = Explainer().Explain({item, Currency(line), field});
        TellByForm(told);
        return told;
    }
    static std::string RuleOf(const char* item, double line, const char* field) {
        return Told(item, line, field).Rule;
    }
};

TEST_F(ExplainByForm, BothRoads) {
    EXPECT_EQ(RuleOf("A", 8, "Col_1"), "Keyed in the editor of worksheet A, or imported.");
    EXPECT_EQ(RuleOf("CostCenters", 8, "StatLabel1"), "Keyed in the cost centers, or imported.");
    EXPECT_EQ(RuleOf("G1", 4, "Col_2"), "Keyed in the editor of worksheet G-1, or imported.");
}

TEST_F(ExplainByForm, TheEditorAlone) {
    EXPECT_EQ(RuleOf("ES", 1, "StatLabel1"),
              "Keyed in the pooled allocation statistical basis; the import does not take it.");
    EXPECT_EQ(RuleOf("S1p2", 1, "Col_1"),
              "Keyed in the editor of worksheet S-1 Part II; the import does not take it.");
    EXPECT_EQ(RuleOf("Sp1", 2, "Col_1"),
              "Keyed in the editor of worksheet S Part I; the import does not take it.");
}

TEST_F(ExplainByForm, ACalculationThatWritesItIsToldBehindTheRoad) {
    EXPECT_EQ(RuleOf("Sp1", 1, "Col_1"),
              "Keyed in the editor of worksheet S Part I; the import does not take it. The "
              "calculation writes \"No\", \"Yes\" or \"Error\" by the amendment number on line 2.");
}

TEST_F(ExplainByForm, TheImportAloneWhereTheEditorIsLocked) {
    // The description of the type of control is open for the types 5, 9 and 14.
    EXPECT_EQ(RuleOf("S1p1", 3, "Col_2"),
              "Imported; in the editor of worksheet S-1 Part I it is locked as its line stands.");
    SetCell("S1p1", 3, "Col_1", "9");
    EXPECT_EQ(RuleOf("S1p1", 3, "Col_2"),
              "Keyed in the editor of worksheet S-1 Part I, or imported.");
}

TEST_F(ExplainByForm, TheIdentityIsChangedByItsDialog) {
    EXPECT_EQ(RuleOf("S1p1", 2, "Col_1"),
              "Changed with the identity of the home office, on line 2 of S-1.");
    EXPECT_EQ(RuleOf("S1p1", 2, "Col_3"),
              "Keyed in the editor of worksheet S-1 Part I, or imported.");
}

TEST_F(ExplainByForm, WhatNothingTakesComesWithTheForm) {
    const Explanation title = Told("G1", 4, "Col_1");
    EXPECT_EQ(title.Kind, CellState::Fixed);
    EXPECT_EQ(title.Rule, "It comes with the line of the form.");
    EXPECT_EQ(Told("CostCenters", 4, "StatCode").Kind, CellState::Fixed);
    EXPECT_EQ(Told("Sp1", 3, "Col_1").Kind, CellState::Fixed);
}

TEST_F(ExplainByForm, TheNameOfAnEntryFollowsItsLineNumber) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_1,Col_4,Col_5) VALUES (1,'A',8,100);");
    EXPECT_EQ(RuleOf("A6", 1, "Col_3"),
              "The name follows the line number that is keyed beside it. The calculation empties "
              "it while the entry has no cost center line above 0.");
}

TEST_F(ExplainByForm, TitlesThatTheWindowAloneHas) {
    EXPECT_EQ(Told("S1p1", 1, "Col_4").Title, "City");
    EXPECT_EQ(Told("S1p1", 5, "Col_4").Title, "Telephone Number");
    EXPECT_EQ(Told("S1p2", 1, "Col_2").Title, "Key Officer Name");
    EXPECT_NE(Told("CostCenters", 9, "StatLabel1").Title, "");
    EXPECT_NE(Told("ES", 1, "StatLabel1").Title, "");
}

TEST_F(ExplainByForm, OtherCellsStayAsTheyAre) {
    EXPECT_EQ(RuleOf("A", 8, "Col_3"), "Column 1 plus column 2.");
    const Explanation gone = Told("A", 77, "Col_1");
    EXPECT_EQ(gone.Rule, "Keyed in the editor of worksheet A, or imported.");
}

}  // namespace
}  // namespace zolmara
