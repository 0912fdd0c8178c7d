#include <gtest/gtest.h>

#include "structure/AddDeleteCC.h"
#include "structure/CostCenterColumns.h"
#include "structure/EditLines.h"
#include "structure/Shape.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

class CostCenterTest : public TestCrf {
protected:
    /// Adds lines by the editor's button on the current ones, as the user is offered them.
    void AddLines(std::initializer_list<double> lines) {
        for (double line : lines) ASSERT_TRUE(AddCostCenter(Line(line))) << line;
    }
    void NameAll() {
        gDB.Execute("UPDATE CostCenters SET CCName='Line ' & LineNum WHERE CCName Is Null;");
    }
};

constexpr std::string_view kFunctional[] = {"Cp1", "Cp2", "Cp3", "C1p1", "C1p2", "C1p3"};
constexpr std::string_view kDirect[] = {"Bp1", "Bp2", "Bp3"};
constexpr std::string_view kPooled[] = {"E", "E1p1", "E1p2", "E1p3"};
constexpr std::string_view kNonCapital[] = {"B1p1", "B1p2", "B1p3", "Dp1", "Dp2",
                                            "Dp3",  "D1p1", "D1p2", "D1p3"};

bool HasColumn(std::string_view table, std::string_view column) {
    return gDB.Table(table).FieldIndex(column) >= 0;
}

TEST_F(CostCenterTest, AddingOnLine4WithoutSubscriptsYields401InItsTables) {
    AddS2Line(Line(1), 1);
    SetCell("Bp1", 1, "CC_400", 12.5);
    AddLines({4.01});
    EXPECT_EQ(Lines("CostCenters", 4, 5), "4 4.01 5");
    EXPECT_EQ(Lines("A", 4, 5), "4 4.01 5");
    for (auto table : kDirect)
        EXPECT_EQ(CostCenterColumns(table), "CC_100 CC_200 CC_400 CC_401 CC_500 CC_600") << table;
    EXPECT_TRUE(Cell("Bp1", 1, "CC_401").IsNull());
    EXPECT_EQ(NumOr(Cell("Bp1", 1, "CC_400")), 12.5);
    for (auto table : kFunctional) EXPECT_FALSE(HasColumn(table, "CC_401")) << table;
    for (auto table : kPooled) EXPECT_FALSE(HasColumn(table, "CC_401")) << table;
    EXPECT_EQ(Lines("A7p2"), "1 2 3");
}

TEST_F(CostCenterTest, AddingOnLine2YieldsARowInA7p2AndAColumnInAllThirteenTables) {
    AddLines({2.01});
    EXPECT_EQ(Lines("A7p2"), "1 2 2.01 3");
    for (auto table : kDirect) EXPECT_TRUE(HasColumn(table, "CC_201")) << table;
    for (auto table : kFunctional)
        EXPECT_EQ(CostCenterColumns(table), "CC_100 CC_200 CC_201") << table;
    for (auto table : kPooled) EXPECT_TRUE(HasColumn(table, "CC_201")) << table;
    EXPECT_EQ(Columns("E"), (std::vector<std::string>{"LineNum", "Description", "Col_1", "Col_2",
                                                      "CC_100", "CC_200", "CC_201", "CC_800",
                                                      "CC_900", "Col_7", "CC_2800"}));
}

TEST_F(CostCenterTest, ANewColumnStandsAheadOfTheTotal) {
    AddLines({2.01, 6.01, 29});
    EXPECT_EQ(Columns("Cp1").back(), "Col_3");
    EXPECT_EQ(Columns("Bp3").back(), "Col_7");
    EXPECT_EQ(Columns("Bp3")[Columns("Bp3").size() - 2], "CC_601");
    EXPECT_EQ(Columns("B1p2").back(), "Col_99");
    EXPECT_EQ(Columns("B1p2")[Columns("B1p2").size() - 2], "CC_2900");
    EXPECT_EQ(Columns("D1p1").back(), "CC_2900");
}

TEST_F(CostCenterTest, AddingOnLine9YieldsAPoolColumn) {
    AddLines({9.01});
    for (auto table : kPooled)
        EXPECT_EQ(CostCenterColumns(table), "CC_100 CC_200 CC_800 CC_900 CC_901 CC_2800") << table;
    EXPECT_EQ(Columns("E")[9], "Col_7");
    for (auto table : kNonCapital) EXPECT_TRUE(HasColumn(table, "CC_901")) << table;
}

TEST_F(CostCenterTest, AddingOnLine28YieldsAPoolColumnBehindTheOthers) {
    AddLines({28.01});
    EXPECT_EQ(Columns("E").back(), "CC_2801");
    EXPECT_EQ(Columns("E")[8], "Col_7");
}

TEST_F(CostCenterTest, AddingOnLine12YieldsNoPoolColumn) {
    AddLines({12.01});
    for (auto table : kPooled) EXPECT_FALSE(HasColumn(table, "CC_1201")) << table;
    for (auto table : kNonCapital) EXPECT_TRUE(HasColumn(table, "CC_1201")) << table;
}

TEST_F(CostCenterTest, BehindLine98OnlyTheSubscriptIsOffered) {
    for (int line = 29; line <= 98; ++line) {
        gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (?,'x');", {line});
        gDB.Execute("INSERT INTO A (LineNum) VALUES (?);", {line});
    }
    const auto offer = OfferCostCenter(Line(98));
    EXPECT_FALSE(offer.Whole);
    EXPECT_EQ(offer.Subscript, Line(98.01));
}

TEST_F(CostCenterTest, OnTheLastWholeLineBothAreOfferedAndCancelChangesNothing) {
    const auto before = DumpCrf();
    host.Answers = {kCancel};
    EXPECT_EQ(cmdAdd("CostCenters", Line(28)), std::nullopt);
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text, "Add Cost Center 29? No will add Cost Center 28.01.");
    EXPECT_EQ(host.Boxes[0].Style, kYesNoCancel);
    EXPECT_EQ(DumpCrf(), before);
}

TEST_F(CostCenterTest, YesAddsTheWholeLineAndNoTheSubscript) {
    host.Answers = {kYes};
    EXPECT_EQ(cmdAdd("CostCenters", Line(28)), Line(29));
    NameAll();
    host.Answers = {kNo};
    EXPECT_EQ(cmdAdd("CostCenters", Line(29)), Line(29.01));
    EXPECT_EQ(Lines("CostCenters", 28, 40), "28 29 29.01");
    EXPECT_EQ(Lines("A", 28, 100), "28 29 29.01 99 100");
    EXPECT_TRUE(host.PointerNow == Pointer::Normal);
}

TEST_F(CostCenterTest, AWholeLineInTheMiddleTakesSubscriptsWithoutAQuestion) {
    EXPECT_EQ(cmdAdd("CostCenters", Line(9)), Line(9.01));
    EXPECT_TRUE(host.Boxes.empty());
    NameAll();
    EXPECT_EQ(cmdAdd("CostCenters", Line(9.01)), Line(9.02));
}

TEST_F(CostCenterTest, ANewLinePushesTheNextSubscriptAndItsColumn) {
    AddS2Line(Line(1), 2);
    AddLines({4.01, 4.02});
    SetCell("Bp2", 1, "CC_402", 7);
    SetCell("A", 4.02, "Col_1", 70);
    AddLines({4.02});
    EXPECT_EQ(Lines("CostCenters", 4, 5), "4 4.01 4.02 4.03 5");
    EXPECT_EQ(CostCenterColumns("Bp2"), "CC_100 CC_200 CC_400 CC_401 CC_402 CC_403 CC_500 CC_600");
    EXPECT_TRUE(Cell("Bp2", 1, "CC_402").IsNull());
    EXPECT_EQ(NumOr(Cell("Bp2", 1, "CC_403")), 7);
    EXPECT_TRUE(Cell("A", 4.02, "Col_1").IsNull());
    EXPECT_EQ(NumOr(Cell("A", 4.03, "Col_1")), 70);
}

TEST_F(CostCenterTest, ColumnsThatCannotAllMoveUpAreRefusedBeforeAnythingChanges) {
    AddLines({4.01, 4.02});
    const auto before = DumpCrf();
    EXPECT_THROW(AddCostCenter(Line(4.01)), StoreError);
    EXPECT_EQ(DumpCrf(), before);
}

TEST_F(CostCenterTest, ALineFarBehindTheLastOneIsRefused) {
    const auto before = DumpCrf();
    for (double line : {30.0, 29.01, 98.0}) EXPECT_THROW(AddCostCenter(Line(line)), StoreError);
    EXPECT_EQ(DumpCrf(), before);
}

TEST_F(CostCenterTest, LinesOutsideTheSectionsAreRefused) {
    for (double line : {0.0, 0.5, -1.0, 3.01, 7.0, 7.5, 99.0, 100.0})
        EXPECT_THROW(AddCostCenter(Line(line)), StoreError) << line;
}

TEST_F(CostCenterTest, AFullGroupTakesNoFurtherSubscript) {
    gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (9.99,'x');");
    EXPECT_THROW(AddCostCenter(Line(9.5)), StoreError);
    EXPECT_FALSE(OfferCostCenter(Line(9.99)).Subscript);
    EXPECT_EQ(cmdAdd("CostCenters", Line(9)), std::nullopt);
}

TEST_F(CostCenterTest, AGroupOf100LinesTakesNoFurtherSubscript) {
    for (int i = 1; i <= 99; ++i)
        gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (?,'x');",
                    {Currency::FromUnits(280000 + 100 * i)});
    const auto offer = OfferCostCenter(Line(28));
    EXPECT_FALSE(offer.Subscript);
    EXPECT_EQ(offer.Whole, Line(29));
    EXPECT_EQ(cmdAdd("CostCenters", Line(28)), Line(29));
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(CostCenterTest, ABlankNameIsRefusedAtAddAndItsRowIsNamed) {
    AddLines({9.01});
    SetCell("CostCenters", 9.01, "CCName", "  ");
    const auto before = DumpCrf();
    EXPECT_EQ(cmdAdd("CostCenters", Line(28)), std::nullopt);
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text, "All cost center names must be completed.");
    EXPECT_EQ(host.Boxes[0].Title, "Incomplete entry error, table CostCenters");
    EXPECT_EQ(host.Boxes[0].Style, kCritical);
    EXPECT_EQ(OfferCostCenter(Line(28)).BlankLine, Line(9.01));
    EXPECT_EQ(host.IndexOf("CloseAllForms: True"), -1);
    EXPECT_EQ(DumpCrf(), before);
}

TEST_F(CostCenterTest, FormsThatStayOpenStopAddDeleteAndRename) {
    AddLines({9.01});
    NameAll();
    const auto before = DumpCrf();
    host.CloseResults = {1, 2, 1};
    EXPECT_EQ(cmdAdd("CostCenters", Line(9)), std::nullopt);
    EXPECT_EQ(DeleteCostCenter(Line(9.01)), LineResult::Cancelled);
    EXPECT_FALSE(RenameCostCenter(Line(9.01), "New"));
    EXPECT_EQ(DumpCrf(), before);
}

TEST_F(CostCenterTest, ALineThatIsNotThereIsOfferedNothing) {
    EXPECT_TRUE(OfferCostCenter(Line(55)).Refused());
    EXPECT_EQ(DeleteCostCenter(Line(55)), LineResult::NoSuchLine);
}

TEST_F(CostCenterTest, WithoutACurrentLineTheLastOneCounts) {
    const auto offer = OfferCostCenter();
    EXPECT_EQ(offer.Whole, Line(29));
    EXPECT_EQ(offer.Subscript, Line(28.01));
}

// --- References ----------------------------------------------------------------------------

TEST_F(CostCenterTest, AWholeLineMovesTheReferencesFromItOn) {
    AddLines({29, 30});
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_7) VALUES (1,29,30);");
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_7) VALUES (2,28,8);");
    gDB.Execute("UPDATE A8 SET Col_5=30 WHERE LineNum=1;");
    gDB.Execute("UPDATE A8 SET Col_5=28 WHERE LineNum=2;");
    ASSERT_TRUE(AddCostCenter(Line(29)));
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_4")), 30);
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_7")), 31);
    EXPECT_EQ(NumOr(Cell("A6", 2, "Col_4")), 28);
    EXPECT_EQ(NumOr(Cell("A6", 2, "Col_7")), 8);
    EXPECT_EQ(NumOr(Cell("A8", 1, "Col_5")), 31);
    EXPECT_EQ(NumOr(Cell("A8", 2, "Col_5")), 28);
    EXPECT_EQ(Lines("CostCenters", 28, 40), "28 29 30 31");
    EXPECT_EQ(Lines("A", 28, 100), "28 29 30 31 99 100");
}

TEST_F(CostCenterTest, ASubscriptMovesOnlyReferencesToExactlyItsLine) {
    AddLines({4.01, 4.02});
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_7) VALUES (1,4.02,4.01);");
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_7) VALUES (2,4.03,5);");
    gDB.Execute("UPDATE A8 SET Col_5=4.02 WHERE LineNum=1;");
    ASSERT_TRUE(AddCostCenter(Line(4.02)));
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_4")), 4.03);
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_7")), 4.01);
    EXPECT_EQ(NumOr(Cell("A6", 2, "Col_4")), 4.03);
    EXPECT_EQ(NumOr(Cell("A6", 2, "Col_7")), 5);
    EXPECT_EQ(NumOr(Cell("A8", 1, "Col_5")), 4.03);
}

TEST_F(CostCenterTest, AMovedReferenceStaysExactOverManyMoves) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_7) VALUES (1,8.01,8.01);");
    for (int i = 1; i <= 30; ++i) {
        ASSERT_TRUE(AddCostCenter(Line(8) + Currency::FromUnits(100 * i)));
        const double moved = (801.0 + i) / 100;
        EXPECT_EQ(NumOr(Cell("A6", 1, "Col_4")), moved);
        EXPECT_EQ(gDB.Execute("Update A6 Set Col_1=? Where Col_7=?;", {i, Line(moved)}), 1);
    }
}

// --- Delete --------------------------------------------------------------------------------

TEST_F(CostCenterTest, Deleting401RenamesTheColumnsBehindIt) {
    AddS2Line(Line(1), 3);
    AddLines({4.01, 4.02, 4.03});
    SetCell("Bp3", 1, "CC_402", 2);
    SetCell("Bp3", 1, "CC_403", 3);
    EXPECT_EQ(DeleteCostCenter(Line(4.01)), LineResult::Done);
    EXPECT_EQ(CostCenterColumns("Bp3"), "CC_100 CC_200 CC_400 CC_401 CC_402 CC_500 CC_600");
    EXPECT_EQ(NumOr(Cell("Bp3", 1, "CC_401")), 2);
    EXPECT_EQ(NumOr(Cell("Bp3", 1, "CC_402")), 3);
    EXPECT_EQ(Lines("CostCenters", 4, 5), "4 4.01 4.02 5");
    EXPECT_EQ(Lines("A", 4, 5), "4 4.01 4.02 5");
}

TEST_F(CostCenterTest, DeletingAWholeLinePullsTheNextOneDownWhileItsColumnKeepsItsName) {
    AddLines({29, 30, 31});
    SetCell("A", 31, "Col_1", 31);
    EXPECT_EQ(DeleteCostCenter(Line(30)), LineResult::Done);
    EXPECT_EQ(Lines("CostCenters", 28, 40), "28 29 30");
    EXPECT_EQ(Lines("A", 28, 100), "28 29 30 99 100");
    EXPECT_EQ(NumOr(Cell("A", 30, "Col_1")), 31);
    EXPECT_FALSE(HasColumn("B1p1", "CC_3000"));
    EXPECT_TRUE(HasColumn("B1p1", "CC_3100"));
}

TEST_F(CostCenterTest, DeletingAWholeLineWithSubscriptsMakesTheFirstOneTheWholeLine) {
    AddLines({29, 29.01, 29.02});
    SetCell("CostCenters", 29.01, "CCName", "First");
    EXPECT_EQ(DeleteCostCenter(Line(29)), LineResult::Done);
    EXPECT_EQ(Lines("CostCenters", 28, 40), "28 29 29.01");
    EXPECT_EQ(StrOr(Cell("CostCenters", 29, "CCName")), "First");
    EXPECT_TRUE(CostCenterColumns("D1p1").ends_with("CC_2800 CC_2900 CC_2901"));
}

TEST_F(CostCenterTest, DeletingACapitalSubscriptClosesA7p2) {
    AddLines({2.01, 2.02});
    SetCell("A7p2", 2.02, "Col_1", 5);
    EXPECT_EQ(DeleteCostCenter(Line(2.01)), LineResult::Done);
    EXPECT_EQ(Lines("A7p2"), "1 2 2.01 3");
    EXPECT_EQ(NumOr(Cell("A7p2", 2.01, "Col_1")), 5);
}

TEST_F(CostCenterTest, DeletingClearsTheEntriesOfA6AndLeavesA8) {
    AddLines({9.01});
    gDB.Execute(
        "INSERT INTO A6 (LineNum,Col_3,Col_4,Col_5,Col_6,Col_7,Col_8) VALUES "
        "(1,'up',9.01,10,'down',8,10);");
    gDB.Execute("UPDATE A8 SET Col_5=9.01 WHERE LineNum=1;");
    DeleteCostCenter(Line(9.01));
    for (auto field : {"Col_3", "Col_4", "Col_5"}) EXPECT_TRUE(Cell("A6", 1, field).IsNull());
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_6")), "down");
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_8")), 10);
    EXPECT_EQ(NumOr(Cell("A8", 1, "Col_5")), 9.01);
}

TEST_F(CostCenterTest, DeletingTheLastSubscriptOfAGroupLeavesTheNextGroupsColumn) {
    gDB.Execute("INSERT INTO CostCenters (LineNum) VALUES (4.99);");
    gDB.Execute("INSERT INTO A (LineNum) VALUES (4.99);");
    ASSERT_TRUE(AddCCColumn(Line(4.99)));
    EXPECT_EQ(DeleteCostCenter(Line(4.99)), LineResult::Done);
    EXPECT_EQ(CostCenterColumns("Bp1"), "CC_100 CC_200 CC_400 CC_500 CC_600");
}

TEST_F(CostCenterTest, DeletingLine28OnlyBeeps) {
    const auto before = DumpCrf();
    EXPECT_EQ(DeleteCostCenter(Line(28)), LineResult::Refused);
    EXPECT_EQ(host.Beeps, 1);
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(DumpCrf(), before);
}

// --- Column surgery ------------------------------------------------------------------------

TEST_F(CostCenterTest, ARebuiltTableKeepsItsTypesRowsAndIndex) {
    AddS2Line(Line(1), 1);
    RenameS2Line(Line(1), 1, "Hospital", "14-0001");
    AddLines({9.01});
    const auto& table = gDB.Table("B1p1");
    EXPECT_EQ(table.Fields[0].Type, FieldType::dbCurrency);
    EXPECT_EQ(table.Fields[1].Type, FieldType::dbText);
    EXPECT_EQ(table.Fields[1].Size, 40);
    EXPECT_EQ(table.Fields[3].Type, FieldType::dbDouble);
    EXPECT_EQ(StrOr(Cell("B1p1", 1, "Description")), "Hospital");
    EXPECT_THROW(gDB.Execute("INSERT INTO B1p1 (LineNum) VALUES (1);"), StoreError);
    EXPECT_TRUE(gDB.HasTable("tblTemp"));
}

TEST_F(CostCenterTest, AFieldThatCannotBeAppendedStopsTheAddWithABox) {
    gDB.AppendField("Cp2", {.Name = "CC"});
    EXPECT_FALSE(AddCostCenter(Line(2.01)));
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "Error adding field to table B");
    EXPECT_EQ(host.Boxes[0].Style, kCritical);
    EXPECT_TRUE(host.Boxes[0].Text.starts_with(
        "Failure to append field to the Cp1 table, please rebuild the table.  The following error "
        "message was returned: \""));
    EXPECT_TRUE(host.Boxes[0].Text.ends_with("\""));
    EXPECT_TRUE(HasColumn("Bp1", "CC_201"));
    EXPECT_FALSE(HasColumn("Cp1", "CC"));
    EXPECT_EQ(Lines("CostCenters", 2, 3), "2 2.01");
}

TEST_F(CostCenterTest, DroppingATableThatIsNotThereIsNoFault) {
    DropTable("NoSuchTable");
    EXPECT_GE(host.DoEventsCount, 1);
}

TEST_F(CostCenterTest, AnAddIsOneBatch) {
    const auto commits = gDB.CommitCount();
    AddLines({2.01});
    EXPECT_EQ(gDB.CommitCount(), commits + 1);
}

TEST_F(CostCenterTest, OtherLinesAddNoColumn) {
    for (double line : {3.0, 7.5, 99.0, 100.0}) EXPECT_TRUE(TablesWithColumn(Line(line)).empty());
    EXPECT_EQ(TablesWithColumn(Line(1.5)).size(), 13u);
    EXPECT_EQ(TablesWithColumn(Line(6.99)).size(), 3u);
    EXPECT_EQ(TablesWithColumn(Line(9.99)).size(), 13u);
    EXPECT_EQ(TablesWithColumn(Line(10)).size(), 9u);
    EXPECT_EQ(TablesWithColumn(Line(28.01)).size(), 13u);
    EXPECT_EQ(TablesWithColumn(Line(98.99)).size(), 9u);
}

// --- Names ---------------------------------------------------------------------------------

TEST_F(CostCenterTest, ANameIsCarriedToTheWorksheets) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_7) VALUES (1,2,8);");
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_7) VALUES (2,8,2);");
    EXPECT_TRUE(RenameCostCenter(Line(2), "Movables"));
    EXPECT_EQ(StrOr(Cell("A", 2, "CCName")), "Movables");
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_3")), "Movables");
    EXPECT_EQ(StrOr(Cell("A6", 2, "Col_6")), "Movables");
    EXPECT_TRUE(Cell("A6", 1, "Col_6").IsNull());
    EXPECT_EQ(StrOr(Cell("A7p2", 2, "Description")), "Movables");
}

TEST_F(CostCenterTest, OnA8TheNameGoesByTheRowsOwnLineNumber) {
    gDB.Execute("UPDATE A8 SET Col_5=2 WHERE LineNum=5;");
    RenameCostCenter(Line(2), "Movables");
    EXPECT_EQ(StrOr(Cell("A8", 2, "Col_4")), "Movables");
    EXPECT_TRUE(Cell("A8", 5, "Col_4").IsNull());
}

TEST_F(CostCenterTest, QuotesInANameAreLetters) {
    const std::string name = "O'Hare \"North\" \"\" '";
    EXPECT_TRUE(RenameCostCenter(Line(8), name));
    EXPECT_EQ(StrOr(Cell("A", 8, "CCName")), name);
}

// --- Leaving the editor --------------------------------------------------------------------

TEST_F(CostCenterTest, ASingleLine401IsRefusedAtClose) {
    AddLines({4.01});
    NameAll();
    gDB.Execute("DELETE FROM CostCenters WHERE LineNum=4;");
    EXPECT_FALSE(CostCentersMayClose());
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text,
              "There is only one Administrative And General cost center and it must be numbered "
              "4.00\r\nPlease either add a new 4.xx cost center or delete the 4.01, which will "
              "revert it to 4.00.");
}

TEST_F(CostCenterTest, NoLineOf4IsRefusedAtClose) {
    gDB.Execute("DELETE FROM CostCenters WHERE LineNum=4;");
    EXPECT_FALSE(CostCentersMayClose());
    EXPECT_EQ(host.Boxes[0].Text,
              "There must be at least one Administrative And General cost center (4.xx).\r\nPlease "
              "either add a new 4.xx cost center or delete the 4.01, which will revert it to "
              "4.00.");
}

TEST_F(CostCenterTest, ABlankNameIsRefusedAtClose) {
    EXPECT_TRUE(CostCentersMayClose());
    AddLines({9.01});
    EXPECT_FALSE(CostCentersMayClose());
    EXPECT_EQ(host.Boxes[0], (Box{"All Cost Center names must be completed", kExclamation,
                                  "Entry Error", host.Boxes[0].Answer}));
}

}  // namespace
}  // namespace zolmara::test
