#include "core/Dialogs.h"
#include "structure/CostCenterColumns.h"
#include "structure/CostCenterTools.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"

namespace zolmara::test {
namespace {

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
