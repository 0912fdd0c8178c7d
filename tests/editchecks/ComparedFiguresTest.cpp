#include <gtest/gtest.h>

#include <set>

#include "editchecks/ComparedFigures.h"
#include "editchecks/modEditChecks.h"
#include "support/TestCrf.h"
#include "worksheets/ExplainedStatements.h"

namespace zolmara {
namespace {

using namespace test;

class ComparedFigures : public TestCrf {};

TEST_F(ComparedFigures, AColumnAgainstALineOfA) {
    SetCell("Bp3", 52, "CC_400", 1000);
    SetCell("A", 4, "Col_6", 900);
    const auto compared =
        ComparisonOf("1020B", "B Part III, line 52, column 4 must equal A, line 4, column 6.");
    ASSERT_TRUE(compared);
    EXPECT_EQ(SideText(compared->Left), "B Part III, line 52, column 4");
    EXPECT_EQ(SideText(compared->Right), "A, line 4, column 6");
    EXPECT_EQ(compared->Left.Value, 1000);
    EXPECT_EQ(compared->Right.Value, 900);
    EXPECT_EQ(compared->Difference, 100);
}

TEST_F(ComparedFigures, TheSameWordsOfB1SpeakOfB1) {
    SetCell("B1p3", 52, "CC_800", 7);
    const auto compared =
        ComparisonOf("1060B", "B Part III, line 52, column 8 must equal A, line 8, column 6.");
    ASSERT_TRUE(compared);
    EXPECT_EQ(SideText(compared->Left), "B-1 Part III, line 52, column 8");
    EXPECT_EQ(compared->Difference, 7);
}

TEST_F(ComparedFigures, AFigureAgainstSeveral) {
    SetCell("E1p3", 52, "Col_7", 70);
    SetCell("A", 99, "Col_8", 100);
    SetCell("A", 8, "Col_8", 20);
    SetCell("A", 28, "Col_8", -5);
    const auto compared = ComparisonOf(
        "1100E",
        "Worksheet E-1, line 52, column 7 must equal A, line 99, column 8 minus lines 8, 9, and "
        "28 column 8.");
    ASSERT_TRUE(compared);
    EXPECT_EQ(SideText(compared->Right),
              "A, line 99, column 8 less A, line 8, column 8 less A, line 9, column 8 less A, "
              "line 28, column 8");
    EXPECT_EQ(compared->Right.Value, 85);
    EXPECT_EQ(compared->Difference, -15);
}

void AddEntry(int line, const char* code, double up, double down) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_2,Col_5,Col_8) VALUES (?,?,?,?);",
                {line, code, up, down});
}

TEST_F(ComparedFigures, AReclassificationCodeHasTheSumsOfItsEntries) {
    gDB.Execute("DELETE FROM A6 WHERE LineNum<99;");
    AddEntry(1, "A", 100, 100);
    AddEntry(2, "b", 10.1, 0);
    AddEntry(3, "B", 0.2, 4);
    AddEntry(4, "B", 0, 5);
    AddEntry(5, "C", 1, 1);
    const auto compared = ComparisonOf(
        "1025A",
        "Worksheet A-6: For each reclassification code (B) the sum of all increases (10.3) must "
        "equal the sum of all decreases (9).");
    ASSERT_TRUE(compared);
    EXPECT_EQ(SideText(compared->Left), "A-6, lines 2 to 4, column 5");
    EXPECT_EQ(SideText(compared->Right), "A-6, lines 2 to 4, column 8");
    EXPECT_EQ(compared->Left.Value, 10.3);
    EXPECT_EQ(compared->Right.Value, 9);
    EXPECT_EQ(compared->Difference, 1.3);
    EXPECT_EQ(compared->Left.Cells.size(), 3u);
}

TEST_F(ComparedFigures, OfACodeThatComesTwiceItIsTheRunThatDiffers) {
    gDB.Execute("DELETE FROM A6 WHERE LineNum<99;");
    AddEntry(1, "A", 50, 50);
    AddEntry(2, "B", 1, 1);
    AddEntry(3, "A", 70, 60);
    AddEntry(4, "C", 1, 1);
    const auto compared = ComparisonOf(
        "1025A",
        "Worksheet A-6: For each reclassification code (A) the sum of all increases (70) must "
        "equal the sum of all decreases (60).");
    ASSERT_TRUE(compared);
    EXPECT_EQ(SideText(compared->Left), "A-6, line 3, column 5");
    EXPECT_EQ(compared->Difference, 10);
}

TEST_F(ComparedFigures, ACheckOfOneFigureComparesNone) {
    EXPECT_FALSE(ComparisonOf("2010G", "Worksheet G: line 48 should be greater than zero."));
    EXPECT_FALSE(ComparisonOf("1060B", "Something else"));
    EXPECT_FALSE(
        ComparisonOf("1020B", "B Part III, line 52, column 4 must equal A, line 5, column 6."))
        << "two columns";
}

/// Every finding of the planted mistakes that says "equal" has its figures, and they differ.
TEST_F(SessionTest, PlantedMistakesShowTheFiguresThatDiffer) {
    MakeNorthfieldWithMistakes(folder);
    gDB.Execute("UPDATE A SET Col_6=Col_6+1, Col_7=Col_7+2, Col_8=Col_8+3;");
    gDB.Execute("UPDATE G SET Col_1=Col_1+1 WHERE LineNum=48;");
    gDB.Execute("UPDATE A7p2 SET Col_15=Col_15+1 WHERE LineNum=1;");
    Run_EditChecks();
    std::set<std::string> codes;
    Recordset rows = gDB.OpenRecordset("SELECT Code, Message FROM Error;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string message = Text(rows[1]);
        const auto compared = ComparisonOf(Text(rows[0]), message);
        const bool saysEqual = message.find("must equal A") != std::string::npos ||
                               message.find("sum of all decreases") != std::string::npos ||
                               message.find("should be equal.") != std::string::npos;
        EXPECT_EQ(compared.has_value(), saysEqual || compared.has_value()) << message;
        if (!saysEqual) continue;
        ASSERT_TRUE(compared) << message;
        EXPECT_NE(compared->Difference, 0) << message;
        codes.insert(Text(rows[0]));
    }
    EXPECT_GE(codes.size(), 8u);
}

}  // namespace
}  // namespace zolmara
