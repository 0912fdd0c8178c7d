#include "core/Dialogs.h"
#include "core/Status.h"
#include "structure/CostCenterColumns.h"
#include "structure/CostCenterTools.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"

namespace zolmara::test {
namespace {

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

}  // namespace
}  // namespace zolmara::test
