#include <fmt/format.h>
#include <gtest/gtest.h>

#include "core/Dialogs.h"
#include "structure/EditLines.h"
#include "structure/Shape.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

class EditLinesTest : public TestCrf {
protected:
    void Insert(std::string_view table, std::initializer_list<double> lines,
                std::string_view key = "LineNum") {
        for (double line : lines)
            gDB.Execute(fmt::format("INSERT INTO {} ({}) VALUES (?);", table, key), {Line(line)});
        if (table == "A8" || table == "G1")
            gDB.Execute(
                fmt::format("UPDATE {} SET Col_1='x' & LineNum WHERE Col_1 Is Null;", table));
    }
};

// --- A-8 -----------------------------------------------------------------------------------

TEST_F(EditLinesTest, A8OnLine20PushesTheLaterSubscript) {
    Insert("A8", {18, 19, 20, 20.01, 21});
    EXPECT_EQ(cmdAdd("A8", Line(20)), Line(20.01));
    EXPECT_EQ(Lines("A8", 18, 99), "18 19 20 20.01 20.02 21");
    EXPECT_EQ(StrOr(Cell("A8", 20.02, "Col_1")), "x20.01");
    EXPECT_TRUE(Cell("A8", 20.01, "Col_1").IsNull());
    EXPECT_NE(host.IndexOf("RefreshWorksheetForm: view A8"), -1);
}

TEST_F(EditLinesTest, A8OnLine99OffersTheSubscriptAlone) {
    Insert("A8", {99});
    const auto offer = OfferLine("A8", Line(99));
    EXPECT_FALSE(offer.Whole);
    EXPECT_EQ(offer.Subscript, Line(99.01));
    EXPECT_EQ(cmdAdd("A8", Line(99)), Line(99.01));
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(EditLinesTest, A8WithTheLastGroupFullAddsTheWholeLineWithoutAQuestion) {
    Insert("A8", {18, 19});
    for (int i = 0; i < 100; ++i)
        gDB.Execute("INSERT INTO A8 (LineNum,Col_1) VALUES (?,'x');",
                    {Line(20) + Currency::FromUnits(100 * i)});
    EXPECT_EQ(cmdAdd("A8", Line(20)), Line(21));
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(EditLinesTest, A8OnLine14TakesSubscriptsOnly) {
    gDB.Execute("DELETE FROM A8 WHERE LineNum>14 And LineNum<100;");
    const auto offer = OfferLine("A8", Line(14));
    EXPECT_FALSE(offer.Whole);
    EXPECT_EQ(offer.Subscript, Line(14.01));
}

TEST_F(EditLinesTest, A8BehindItsLastLineAsks) {
    host.Answers = {kYes};
    EXPECT_EQ(cmdAdd("A8"), Line(18));
    EXPECT_EQ(host.Boxes[0].Text, "Add description 18? No will add line 17.01.");
    EXPECT_EQ(Lines("A8", 17, 100), "17 18 100");
}

TEST_F(EditLinesTest, A8RefusesAnAddWhileADescriptionIsBlank) {
    gDB.Execute("INSERT INTO A8 (LineNum,Col_1) VALUES (18,' ');");
    EXPECT_EQ(cmdAdd("A8", Line(18)), std::nullopt);
    EXPECT_EQ(host.Boxes[0].Text, "All descriptions must be completed.");
    EXPECT_EQ(host.Boxes[0].Title, "Incomplete entry error, table A8");
    EXPECT_EQ(OfferLine("A8", Line(2)).BlankLine, Line(18));
}

TEST_F(EditLinesTest, A8HasNoAddBehindTheLinesThatItsEditorDoesNotShow) {
    EXPECT_TRUE(OfferLine("A8", Line(12)).Refused());
    EXPECT_TRUE(OfferLine("A8", Line(100)).Refused());
    EXPECT_TRUE(OfferLine("A8", Line(55)).Refused());
}

TEST_F(EditLinesTest, A8KeepsTheLinesOfTheForm) {
    for (double line : {1.0, 12.0, 17.0, 100.0})
        EXPECT_EQ(DeleteLine("A8", Line(line)), LineResult::Refused) << line;
    EXPECT_EQ(host.Beeps, 4);
    EXPECT_EQ(Rows("A8"), 18);
}

TEST_F(EditLinesTest, A8ClosesTheGapOfADeletedLine) {
    Insert("A8", {18, 19, 19.01, 20, 5.01, 5.02});
    EXPECT_EQ(cmdDelete("A8", Line(18)), LineResult::Done);
    EXPECT_EQ(Lines("A8", 17, 100), "17 18 18.01 19 100");
    EXPECT_EQ(cmdDelete("A8", Line(18)), LineResult::Done);
    EXPECT_EQ(Lines("A8", 17, 100), "17 18 19 100");
    EXPECT_EQ(cmdDelete("A8", Line(5.01)), LineResult::Done);
    EXPECT_EQ(Lines("A8", 5, 6), "5 5.01 6");
    EXPECT_EQ(StrOr(Cell("A8", 18, "Col_1")), "x19.01");
}

TEST_F(EditLinesTest, DeletingTheLastRowOfAGroupMovesNothing) {
    Insert("A8", {5.01, 5.02, 18});
    EXPECT_EQ(cmdDelete("A8", Line(5.02)), LineResult::Done);
    EXPECT_EQ(Lines("A8", 5, 19), "5 5.01 6 7 8 9 10 11 12 13 14 15 16 17 18");
}

TEST_F(EditLinesTest, Line99OfA8DoesNotMove) {
    Insert("A8", {97, 98, 99});
    EXPECT_EQ(cmdDelete("A8", Line(97)), LineResult::Done);
    EXPECT_EQ(Lines("A8", 90, 100), "97 99 100");
}

// --- A-8-1 ---------------------------------------------------------------------------------

TEST_F(EditLinesTest, A81p1StartsWithLine1AndEndsWith99) {
    EXPECT_EQ(cmdAdd("A81p1"), Line(1));
    host.Answers = {kYes, kNo};
    EXPECT_EQ(cmdAdd("A81p1", Line(1)), Line(2));
    EXPECT_EQ(cmdAdd("A81p1", Line(2)), Line(2.01));
    EXPECT_EQ(host.Boxes[1].Text, "Add description 3? No will add line 2.01.");
    Insert("A81p1", {99}, "SeqNum");
    EXPECT_FALSE(OfferLine("A81p1", Line(99)).Whole);
    EXPECT_EQ(OfferLine("A81p1", Line(99)).Subscript, Line(99.01));
    EXPECT_EQ(DeleteLine("A81p1", Line(100)), LineResult::Refused);
    EXPECT_EQ(DeleteLine("A81p1", Line(1)), LineResult::Done);
    EXPECT_EQ(Lines("A81p1"), "1 1.01 99 100");
}

TEST_F(EditLinesTest, A81p2GrowsUpTo50) {
    Insert("A81p2", {48, 49, 50}, "SeqNum");
    EXPECT_FALSE(OfferLine("A81p2", Line(49)).Whole);
    EXPECT_FALSE(OfferLine("A81p2", Line(50)).Whole);
    EXPECT_EQ(cmdDelete("A81p2", Line(48)), LineResult::Done);
    EXPECT_EQ(Lines("A81p2"), "48 49");
    host.Answers = {kYes};
    EXPECT_EQ(cmdAdd("A81p2", Line(49)), Line(50));
    EXPECT_EQ(Lines("A81p2"), "48 49 50");
}

// --- G-1 -----------------------------------------------------------------------------------

TEST_F(EditLinesTest, G1WithNoOtherExpensesAsksForLine16WhateverRowIsCurrent) {
    host.Answers = {kYes};
    EXPECT_EQ(cmdAdd("G1", Line(4)), Line(16));
    EXPECT_EQ(host.Boxes[0].Text, "Do you wish to add other expenses, line 16?");
    EXPECT_EQ(host.Boxes[0].Style, kYesNo | kDefaultButton2);
    EXPECT_EQ(Lines("G1", 9, 30), "9 15 16 21 22");
}

TEST_F(EditLinesTest, G1BelowLine9CountsAs9AndTakesOnlyTheWholeLine) {
    EXPECT_EQ(cmdAdd("G1", Line(1)), Line(10));
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Answer, kNo);
    EXPECT_EQ(Lines("G1", 9, 16), "9 10 15");
    gDB.Execute("UPDATE G1 SET Col_1='x' WHERE LineNum=10;");
    EXPECT_FALSE(OfferLine("G1", Line(9)).Whole);
    EXPECT_FALSE(OfferLine("G1", Line(9)).Subscript);
    EXPECT_FALSE(OfferLine("G1", Line(9)).Refused());
}

TEST_F(EditLinesTest, G1SectionsEndAt14And20) {
    Insert("G1", {10, 11, 12, 13, 14, 16, 17, 18, 19, 20});
    EXPECT_FALSE(OfferLine("G1", Line(14)).Whole);
    EXPECT_EQ(OfferLine("G1", Line(14)).Subscript, Line(14.01));
    EXPECT_FALSE(OfferLine("G1", Line(20)).Whole);
    EXPECT_EQ(OfferLine("G1", Line(20)).Subscript, Line(20.01));
    EXPECT_FALSE(OfferLine("G1", Line(20)).First);
}

TEST_F(EditLinesTest, G1SecondSectionGrowsByItself) {
    Insert("G1", {10, 16});
    host.Answers = {kYes};
    EXPECT_EQ(cmdAdd("G1", Line(16)), Line(17));
    EXPECT_EQ(host.Boxes[0].Text, "Add description 17? No will add line 16.01.");
    gDB.Execute("UPDATE G1 SET Col_1='x' WHERE LineNum=17;");
    EXPECT_EQ(OfferLine("G1", Line(10)).Whole, Line(11));
    EXPECT_EQ(cmdDelete("G1", Line(16)), LineResult::Done);
    EXPECT_EQ(Lines("G1", 9, 30), "9 10 15 16 21 22");
}

TEST_F(EditLinesTest, G1ClosesByTheCountOfTheGroup) {
    Insert("G1", {10, 10.01, 11, 12});
    EXPECT_EQ(cmdDelete("G1", Line(10)), LineResult::Done);
    EXPECT_EQ(Lines("G1", 9, 16), "9 10 11 12 15");
    EXPECT_EQ(StrOr(Cell("G1", 10, "Col_1")), "x10.01");
    EXPECT_EQ(cmdDelete("G1", Line(10)), LineResult::Done);
    EXPECT_EQ(Lines("G1", 9, 16), "9 10 11 15");
}

TEST_F(EditLinesTest, G1KeepsItsLinesOfTheForm) {
    for (double line : {1.0, 4.0, 9.0, 15.0, 21.0, 22.0})
        EXPECT_EQ(DeleteLine("G1", Line(line)), LineResult::Refused) << line;
    EXPECT_EQ(Rows("G1"), 12);
    EXPECT_TRUE(OfferLine("G1", Line(15)).Refused());
}

TEST_F(EditLinesTest, G1RefusesAnAddWhileADescriptionIsBlank) {
    gDB.Execute("INSERT INTO G1 (LineNum) VALUES (10);");
    EXPECT_EQ(cmdAdd("G1", Line(10)), std::nullopt);
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "Incomplete entry error, table G1");
    EXPECT_EQ(host.Boxes[0].Text, "All descriptions must be completed.");
}

// --- S-1 -----------------------------------------------------------------------------------

TEST_F(EditLinesTest, S1p1OnLine2PushesItsMailLines) {
    gDB.Execute("INSERT INTO S1p1 (LineNum,Description,Col_1) VALUES (2.01,'old','a@b');");
    EXPECT_EQ(cmdAdd("S1p1", Line(2)), Line(2.01));
    EXPECT_EQ(Lines("S1p1"), "1 2 2.01 2.02 3 4 5");
    EXPECT_EQ(StrOr(Cell("S1p1", 2.01, "Description")), "more email address");
    EXPECT_EQ(StrOr(Cell("S1p1", 2.02, "Col_1")), "a@b");
}

TEST_F(EditLinesTest, S1p1DeletesMailLinesAndKeepsTheForms) {
    cmdAdd("S1p1", Line(5));
    cmdAdd("S1p1", Line(5.01));
    cmdAdd("S1p1", Line(5.02));
    SetCell("S1p1", 5.03, "Col_1", "third");
    EXPECT_EQ(cmdDelete("S1p1", Line(5.02)), LineResult::Done);
    EXPECT_EQ(Lines("S1p1"), "1 2 3 4 5 5.01 5.02");
    EXPECT_EQ(StrOr(Cell("S1p1", 5.02, "Col_1")), "third");
    EXPECT_EQ(cmdDelete("S1p1", Line(5)), LineResult::Refused);
    EXPECT_EQ(host.Beeps, 1);
}

TEST_F(EditLinesTest, S1p2OnLine3TheNewLineIs6) {
    EXPECT_EQ(cmdAdd("S1p2", Line(3)), Line(6));
    EXPECT_EQ(cmdAdd("S1p2", Line(6)), Line(7));
    SetCell("S1p2", 7, "Col_1", "seventh");
    EXPECT_EQ(cmdAdd("S1p2", Line(6)), Line(7));
    EXPECT_EQ(Lines("S1p2"), "1 2 3 4 5 6 7 8");
    EXPECT_EQ(StrOr(Cell("S1p2", 8, "Col_1")), "seventh");
}

TEST_F(EditLinesTest, S1p2DeletesBehindTheFormsFive) {
    cmdAdd("S1p2", Line(5));
    cmdAdd("S1p2", Line(6));
    SetCell("S1p2", 7, "Col_1", "seventh");
    EXPECT_EQ(cmdDelete("S1p2", Line(6)), LineResult::Done);
    EXPECT_EQ(Lines("S1p2"), "1 2 3 4 5 6");
    EXPECT_EQ(StrOr(Cell("S1p2", 6, "Col_1")), "seventh");
    for (double line : {1.0, 5.0}) EXPECT_EQ(cmdDelete("S1p2", Line(line)), LineResult::Refused);
    EXPECT_EQ(Rows("S1p2"), 6);
}

// --- A-6 -----------------------------------------------------------------------------------

TEST_F(EditLinesTest, A6WithOnlyTheTotalRowTheNewLineIs1) {
    EXPECT_EQ(cmdAdd("A6"), Line(1));
    EXPECT_EQ(cmdAdd("A6"), Line(2));
    for (auto field : {"Col_4", "Col_5", "Col_7", "Col_8"}) {
        ASSERT_FALSE(Cell("A6", 1, field).IsNull()) << field;
        EXPECT_EQ(NumOr(Cell("A6", 1, field)), 0) << field;
    }
    EXPECT_EQ(Lines("A6"), "1 2 100");
}

TEST_F(EditLinesTest, A6GoesOnByHundredthsAheadOfTheTotal) {
    Insert("A6", {98});
    EXPECT_EQ(cmdAdd("A6"), Line(99));
    EXPECT_EQ(cmdAdd("A6"), Line(99.01));
    EXPECT_EQ(cmdAdd("A6"), Line(99.02));
    Insert("A6", {99.99});
    EXPECT_EQ(cmdAdd("A6"), std::nullopt);
    EXPECT_EQ(Lines("A6"), "98 99 99.01 99.02 99.99 100");
}

TEST_F(EditLinesTest, A6DeletesTheSelectedLinesAndLeavesTheGaps) {
    Insert("A6", {1, 2, 3, 4});
    const Currency selected[] = {Line(2), Line(4)};
    EXPECT_EQ(DeleteSelectedA6(selected), LineResult::Done);
    EXPECT_EQ(Lines("A6"), "1 3 100");
    const Currency total[] = {Line(100)};
    EXPECT_EQ(DeleteSelectedA6(total), LineResult::Refused);
    EXPECT_EQ(DeleteLine("A6", Line(2)), LineResult::NoSuchLine);
}

TEST_F(EditLinesTest, A6WithNoLineSelectedBeepsAndExplains) {
    EXPECT_EQ(DeleteSelectedA6({}), LineResult::Refused);
    EXPECT_EQ(host.Beeps, 1);
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "Error: No line Selected to Delete");
    EXPECT_EQ(host.Boxes[0].Style, kCritical);
    EXPECT_EQ(host.Boxes[0].Text,
              "You requested to Delete a line while no line was selected [highlighted].  To delete "
              "a line, first select the line to be deleted by clicking on the left margin area "
              "adjacent to that line.  That will highlight the line's entire row.  Then, clicking "
              "on the Delete button will delete the selected line.");
}

// --- All -----------------------------------------------------------------------------------

TEST_F(EditLinesTest, OtherWorksheetsTakeNoLines) {
    EXPECT_FALSE(HasFreeLines("G"));
    EXPECT_TRUE(OfferLine("Bp1", Line(1)).Refused());
    EXPECT_EQ(DeleteLine("G", Line(1)), LineResult::NoSuchLine);
    EXPECT_FALSE(AddLine("G", Line(49)));
    for (auto item : {"CostCenters", "S2p1", "S2p2", "S2p3", "A6", "A8", "A81p1", "A81p2", "G1",
                      "S1p1", "S1p2"})
        EXPECT_TRUE(HasFreeLines(item)) << item;
}

TEST_F(EditLinesTest, AWishChoosesWithoutAQuestion) {
    EXPECT_EQ(cmdAdd("A8", Line(17), LineStep::Subscript), Line(17.01));
    gDB.Execute("UPDATE A8 SET Col_1='x' WHERE Col_1 Is Null;");
    EXPECT_EQ(cmdAdd("A8", Line(17), LineStep::Whole), Line(18));
    EXPECT_TRUE(host.Boxes.empty());
}

}  // namespace
}  // namespace zolmara::test
