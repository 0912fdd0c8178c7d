#include <gtest/gtest.h>

#include "core/Dialogs.h"
#include "structure/EditLines.h"
#include "structure/Shape.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

class ComponentTest : public TestCrf {
protected:
    void AddLines(int part, std::initializer_list<double> lines) {
        for (double line : lines) AddS2Line(Line(line), part);
    }
    /// The component lines of all eleven tables, which have to agree.
    std::string LinesOf(int part) {
        const auto tables = ComponentTables(part);
        const auto lines = Lines(tables.front(), 0, 50.99);
        for (const auto& table : tables) EXPECT_EQ(Lines(table, 0, 50.99), lines) << table;
        return lines;
    }
};

TEST_F(ComponentTest, ThePartsTablesAreWalkedInTheirOrder) {
    const auto tables = ComponentTables(3);
    EXPECT_EQ((std::vector<std::string>(tables.begin(), tables.end())),
              (std::vector<std::string>{"S2p3", "Bp3", "B1p3", "Cp3", "C1p3", "Dp3", "D1p3", "E1p3",
                                        "Fp3", "F1p3", "F2p3"}));
}

TEST_F(ComponentTest, OnLine12With13BehindItOnlyTheSubscriptIsOffered) {
    AddLines(1, {12, 13});
    EXPECT_EQ(cmdAdd("S2p1", Line(12)), Line(12.01));
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(LinesOf(1), "12 12.01 13");
}

TEST_F(ComponentTest, OnLine1201TheLaterSubscriptMovesUpInAllTables) {
    AddLines(2, {12, 12.01, 12.02});
    RenameS2Line(Line(12.02), 2, "Old", "1");
    EXPECT_EQ(cmdAdd("S2p2", Line(12.01)), Line(12.02));
    EXPECT_EQ(LinesOf(2), "12 12.01 12.02 12.03");
    for (const auto& table : ComponentTables(2))
        EXPECT_EQ(StrOr(Cell(table, 12.03, table == "S2p2" ? "Col_1" : "Description")), "Old");
}

TEST_F(ComponentTest, OnTheLastWholeLineTheBoxAsks) {
    AddLines(1, {19, 20});
    host.Answers = {kCancel, kYes, kNo};
    EXPECT_EQ(cmdAdd("S2p1", Line(20)), std::nullopt);
    EXPECT_EQ(host.Boxes[0].Text, "Add description 21? No will add line 20.01.");
    EXPECT_EQ(host.Boxes[0].Style, kYesNoCancel);
    EXPECT_EQ(cmdAdd("S2p1", Line(20)), Line(21));
    EXPECT_EQ(cmdAdd("S2p1", Line(21)), Line(21.01));
    EXPECT_EQ(LinesOf(1), "19 20 21 21.01");
    EXPECT_NE(host.IndexOf("RefreshOpenForms: S2p1"), -1);
}

TEST_F(ComponentTest, OnLine50OnlyASubscriptIsPossible) {
    AddLines(1, {50});
    const auto offer = OfferComponent(1, Line(50));
    EXPECT_FALSE(offer.Whole);
    EXPECT_EQ(offer.Subscript, Line(50.01));
}

TEST_F(ComponentTest, AGroupOf50LinesTakesNoFurtherSubscript) {
    for (int i = 0; i < 50; ++i) AddS2Line(Line(20) + Currency::FromUnits(100 * i), 1);
    const auto offer = OfferComponent(1, Line(20));
    EXPECT_FALSE(offer.Subscript);
    EXPECT_EQ(offer.Whole, Line(21));
    EXPECT_FALSE(OfferComponent(1, Line(20.49)).Subscript);
    EXPECT_FALSE(OfferComponent(1, Line(20.49)).Whole);
    EXPECT_EQ(cmdAdd("S2p1", Line(20.49)), std::nullopt);
}

TEST_F(ComponentTest, AnEmptyPartIsOfferedLine1) {
    EXPECT_EQ(cmdAdd("S2p3"), Line(1));
    EXPECT_EQ(cmdAdd("S2p3", std::nullopt, LineStep::Whole), Line(2));
    EXPECT_EQ(cmdAdd("S2p3", Line(1), LineStep::Whole), std::nullopt);
    EXPECT_EQ(LinesOf(3), "1 2");
}

TEST_F(ComponentTest, Deleting20With2001BehindMakesItTheNew20) {
    AddLines(1, {20, 20.01, 20.02, 21});
    RenameS2Line(Line(20.01), 1, "First", "1");
    EXPECT_EQ(cmdDelete("S2p1", Line(20)), LineResult::Done);
    EXPECT_EQ(LinesOf(1), "20 20.01 21");
    for (const auto& table : ComponentTables(1))
        EXPECT_EQ(StrOr(Cell(table, 20, table == "S2p1" ? "Col_1" : "Description")), "First");
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(ComponentTest, Deleting20WithOnly21BehindBringsItDown) {
    AddLines(1, {20, 21, 21.01, 22});
    EXPECT_EQ(cmdDelete("S2p1", Line(20)), LineResult::Done);
    EXPECT_EQ(LinesOf(1), "20 20.01 21");
}

TEST_F(ComponentTest, DeletingASubscriptClosesItsGroup) {
    AddLines(3, {5, 5.01, 5.02, 6});
    EXPECT_EQ(cmdDelete("S2p3", Line(5.01)), LineResult::Done);
    EXPECT_EQ(LinesOf(3), "5 5.01 6");
}

TEST_F(ComponentTest, Line50DoesNotMoveAtADelete) {
    AddLines(1, {48, 49, 50});
    EXPECT_EQ(cmdDelete("S2p1", Line(48)), LineResult::Done);
    EXPECT_EQ(LinesOf(1), "49 50");
    EXPECT_EQ(cmdDelete("S2p1", Line(48)), LineResult::NoSuchLine);
}

TEST_F(ComponentTest, TheTotalsNeverMove) {
    AddLines(3, {1, 2});
    EXPECT_EQ(Lines("Bp3"), "1 2 51 52");
    EXPECT_EQ(Lines("C1p3"), "1 2 51 52 53 54");
    cmdDelete("S2p3", Line(1));
    EXPECT_EQ(Lines("C1p3"), "1 51 52 53 54");
    EXPECT_TRUE(OfferComponent(3, Line(51)).Refused());
}

TEST_F(ComponentTest, AWholeAddAt49MovesTheMirrorsAndLeavesS2) {
    AddLines(1, {49});
    EXPECT_THROW(AddS2Line(Line(49), 1), StoreError);
    EXPECT_EQ(Lines("S2p1"), "49");
    EXPECT_EQ(Lines("Bp1", 0, 50.99), "50");
    EXPECT_EQ(Lines("F2p1", 0, 50.99), "50");
}

TEST_F(ComponentTest, AWholeLineWithoutRoomBehindIsRefusedBeforeAnythingChanges) {
    for (int part : {1, 2, 3}) {
        AddLines(part, {1, 49, 50});
        const auto before = DumpCrf();
        EXPECT_THROW(AddS2Line(Line(10), part), StoreError);
        EXPECT_THROW(AddS2Line(Line(49), part), StoreError);
        EXPECT_THROW(AddS2Line(Line(50), part), StoreError);
        EXPECT_EQ(DumpCrf(), before);
        AddLines(part, {1.01, 49.01, 50.01});
        EXPECT_EQ(LinesOf(part), "1 1.01 49 49.01 50 50.01");
    }
}

// 49 stays on the form's table and moves on the mirrors: the component would lose its schedules.
TEST_F(ComponentTest, AWholeLineThatWouldPartAComponentFromItsSchedulesIsRefused) {
    AddLines(1, {1, 49});
    EXPECT_THROW(AddS2Line(Line(10), 1), StoreError);
    EXPECT_EQ(LinesOf(1), "1 49");
    AddLines(2, {48, 50});
    AddLines(2, {10});
    EXPECT_EQ(LinesOf(2), "10 49 50");
}

TEST_F(ComponentTest, OnLine49With50TakenOnlyTheSubscriptIsOffered) {
    AddLines(1, {49, 50});
    EXPECT_EQ(cmdAdd("S2p1", Line(49)), Line(49.01));
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(ComponentTest, AGroupThatIsFullToItsEndIsRefusedBeforeAnythingChanges) {
    AddLines(1, {7, 7.01, 7.99});
    const auto before = DumpCrf();
    EXPECT_THROW(AddS2Line(Line(7.01), 1), StoreError);
    EXPECT_EQ(DumpCrf(), before);
}

TEST_F(ComponentTest, ANameAndNumberStandAtOnceOnTheMirrors) {
    AddLines(2, {4});
    RenameS2Line(Line(4), 2, "Clinic", "14-0001");
    EXPECT_EQ(StrOr(Cell("S2p2", 4, "Col_1")), "Clinic");
    EXPECT_EQ(StrOr(Cell("S2p2", 4, "Col_2")), "14-0001");
    for (const auto& table : ComponentTables(2)) {
        if (table == "S2p2") continue;
        EXPECT_EQ(StrOr(Cell(table, 4, "Description")), "Clinic") << table;
        EXPECT_EQ(StrOr(Cell(table, 4, "Col_0")), "14-0001") << table;
    }
}

TEST_F(ComponentTest, QuotesInANameAreLettersAndALongNameIsCutOnTheMirrors) {
    AddLines(1, {1});
    const std::string name = "\"St. John's\" " + std::string(40, 'x');
    RenameS2Line(Line(1), 1, name, "\"");
    EXPECT_EQ(StrOr(Cell("S2p1", 1, "Col_1")), name);
    EXPECT_EQ(StrOr(Cell("Bp1", 1, "Description")), name.substr(0, 40));
    EXPECT_EQ(StrOr(Cell("Bp1", 1, "Col_0")), "\"");
}

TEST_F(ComponentTest, ALineWithoutAMirrorIsNoFault) {
    gDB.Execute("INSERT INTO S2p1 (LineNum) VALUES (3);");
    RenameS2Line(Line(3), 1, "Alone", "");
    EXPECT_EQ(cmdDelete("S2p1", Line(3)), LineResult::Done);
    EXPECT_EQ(Lines("S2p1"), "");
}

TEST_F(ComponentTest, PartsDoNotTouchEachOther) {
    AddLines(1, {1});
    EXPECT_EQ(Lines("S2p2"), "");
    EXPECT_EQ(Lines("Bp2", 0, 50), "");
}

TEST_F(ComponentTest, EachOperationIsOneBatch) {
    const auto commits = gDB.CommitCount();
    AddLines(1, {1});
    RenameS2Line(Line(1), 1, "a", "b");
    DeleteS2Line(Line(1), 1);
    EXPECT_EQ(gDB.CommitCount(), commits + 3);
}

}  // namespace
}  // namespace zolmara::test
