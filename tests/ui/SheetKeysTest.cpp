// What the keys do in a worksheet's window.

#include <QClipboard>
#include <QHeaderView>

#include "SheetTest.h"
#include "store/session/Acts.h"
#include "ui/worksheets/WindowPlace.h"

namespace zolmara::ui {
namespace {

class SheetKeys : public SheetTest {
protected:
    SheetKeys() {
        Start();
        Open(MakeSample("Sample.CRF"));
        Boxes.clear();
    }
};

TEST_F(SheetKeys, TypingReplacesEnterMovesOnAndLeavingTheRowStores) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    const std::string before = Stored("A", 1, "Col_1");
    Type("1234");
    Press(Qt::Key_Return);
    EXPECT_EQ(Stored("A", 1, "Col_1"), "1234");
    EXPECT_NE(before, "1234");
    EXPECT_EQ(Current(a), "2 Col_1");
    EXPECT_EQ(Shown(a, 1, "Col_1"), "1,234");
}

TEST_F(SheetKeys, ARowOfA6AndTheFiguresOfItsOpenViewsGoToTheDiskTogether) {
    Sheet("view", "A");
    Sheet("view", "A6");
    auto* a6 = Sheet("edit", "A6");
    const double line = NumOr(gDB.Scalar("SELECT Col_4 FROM A6 WHERE LineNum = 1;"));
    // The line's reclassification on A, without what is keyed here.
    gDB.Execute("UPDATE A6 SET Col_5 = 0, Col_8 = 0;");
    const std::int64_t commits = gDB.CommitCount();
    At(a6, 1, "Col_5");
    Type("123");
    Press(Qt::Key_Down);
    EXPECT_EQ(gDB.CommitCount() - commits, 1);
    EXPECT_EQ(Stored("A6", 100, "Col_5"), "123");
    EXPECT_EQ(Stored("A", line, "Col_2"), "123");
    TheActs().Undo();
    EXPECT_EQ(Stored("A6", 1, "Col_5"), "0");
    EXPECT_NE(Stored("A", line, "Col_2"), "123");
}

TEST_F(SheetKeys, ANegativeAmountStandsInBrackets) {
    auto* a = Sheet("edit", "A");
    Enter(a, 1, "Col_1", "-1234");
    EXPECT_EQ(Shown(a, 1, "Col_1"), "(1,234)");
}

TEST_F(SheetKeys, F2GoesOnWithWhatStandsThere) {
    auto* a = Sheet("edit", "A");
    Enter(a, 1, "Col_1", "12");
    At(a, 1, "Col_1");
    Press(Qt::Key_F2);
    Type("5");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Stored("A", 1, "Col_1"), "125");
    EXPECT_EQ(Current(a), "2 Col_1");
}

TEST_F(SheetKeys, EscapeTakesBackTheCellAndThenTheRowAndNeverCloses) {
    auto* a6 = Sheet("edit", "A6");
    At(a6, 1, "Col_5");
    const std::string before = Stored("A6", 1, "Col_5");
    Type("77");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Shown(a6, 1, "Col_5"), Shown(a6, 1, "Col_5"));
    EXPECT_EQ(a6->Model().KeyedRow(), -1);
    Type("88");
    Press(Qt::Key_Return);
    EXPECT_EQ(a6->Model().KeyedRow(), 0);
    Press(Qt::Key_Escape);
    EXPECT_EQ(a6->Model().KeyedRow(), -1);
    Press(Qt::Key_Escape);
    Press(Qt::Key_Escape);
    EXPECT_TRUE(a6->isVisible());
    EXPECT_EQ(Stored("A6", 1, "Col_5"), before);
}

TEST_F(SheetKeys, TabBehindTheLastCellGoesToTheButtons) {
    auto* a = Sheet("edit", "A");
    a->Grid().GoTo(a->Model().index(a->Model().rowCount() - 1, a->Form().ColumnOf("Col_1")));
    Press(Qt::Key_Tab);
    EXPECT_NE(qobject_cast<QPushButton*>(QApplication::focusWidget()), nullptr);
}

TEST_F(SheetKeys, TheKeysOfTheWindowWorkFromItsButtonsAndItsFindField) {
    auto* a = Sheet("edit", "A");
    Button(a, "cmdNext")->setFocus();
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtFind");
    const double before = SavedZoom();
    Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_LT(SavedZoom(), before);
    Button(a, "cmdNext")->setFocus();
    Press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(FindOpenForm("edit", "A"), nullptr);
}

TEST_F(SheetKeys, EnterBehindTheLastCellStoresTheRowAndStays) {
    auto* a = Sheet("edit", "A");
    const int last = a->Model().rowCount() - 1;
    const double line = a->Model().Line(last).ToDouble();
    Enter(a, line, "Col_1", "4711");
    EXPECT_EQ(Stored("A", line, "Col_1"), "4711");
    for (int more = 0; more < 2; ++more) {
        Press(Qt::Key_Return);
        EXPECT_EQ(a->Grid().currentIndex().row(), last);
        EXPECT_EQ(QApplication::focusWidget(), &a->Grid()) << "and no button is pressed";
    }
    EXPECT_EQ(FindOpenForm("view", "A"), nullptr);
    EXPECT_EQ(Status(a), "Last cell: Tab goes to the buttons");
    Press(Qt::Key_Up);
    EXPECT_EQ(Status(a), "");
}

TEST_F(SheetKeys, BehindTheLastCellOfALineTheStatusLineNamesTheKeyThatAddsOne) {
    auto* a6 = Sheet("edit", "A6");
    a6->Grid().GoTo(a6->Model().index(a6->Model().rowCount() - 1, a6->Form().ColumnOf("Col_8")));
    Press(Qt::Key_Return);
    EXPECT_TRUE(Status(a6).starts_with("Last cell: Alt+A adds a line")) << Status(a6);
    EXPECT_TRUE(Button(a6, "cmdAdd")->text().startsWith("&A"));
}

TEST_F(SheetKeys, AnEditorWithoutLinesSaysHowTheFirstOneIsMade) {
    gDB.Execute("DELETE FROM A6 WHERE LineNum < 100;");
    EXPECT_EQ(Status(Sheet("edit", "A6")), "No lines yet: Alt+A adds the first");
    EXPECT_EQ(Status(Sheet("view", "A6")), "");
}

TEST_F(SheetKeys, ShiftEnterAheadOfTheFirstCellStays) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Current(a), "1 Col_1");
    EXPECT_EQ(QApplication::focusWidget(), &a->Grid());
}

TEST_F(SheetKeys, EnterWalksTheRowsOfAView) {
    auto* a = Sheet("view", "A");
    At(a, 1, "Col_1");
    Press(Qt::Key_Return);
    EXPECT_EQ(Current(a), "2 Col_1");
    Press(Qt::Key_Return, Qt::ShiftModifier);
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Current(a), "1 Col_1");
    At(a, 100, "Col_1");
    Press(Qt::Key_Return);
    EXPECT_EQ(Current(a), "100 Col_1");
    EXPECT_EQ(QApplication::focusWidget(), &a->Grid());
}

TEST_F(SheetKeys, DeleteKeysABlankWhichIsZeroInANumber) {
    auto* a = Sheet("edit", "A");
    Enter(a, 1, "Col_1", "55");
    At(a, 1, "Col_1");
    Press(Qt::Key_Delete);
    Press(Qt::Key_Down);
    EXPECT_EQ(Stored("A", 1, "Col_1"), "0");
}

TEST_F(SheetKeys, HomeEndAndCtrlHomeMove) {
    auto* a6 = Sheet("edit", "A6");
    At(a6, 2, "Col_3");
    Press(Qt::Key_End);
    EXPECT_EQ(Current(a6), "2 Col_8");
    Press(Qt::Key_Home);
    EXPECT_EQ(Current(a6), "2 LineNum");
    Press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(a6->Grid().currentIndex().row(), a6->Model().rowCount() - 1);
    Press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(Current(a6), "1 LineNum");
}

TEST_F(SheetKeys, CtrlArrowGoesToTheEndOfABlock) {
    gDB.Execute("UPDATE A SET Col_1 = Null WHERE LineNum = 5;");
    gDB.Execute("UPDATE A SET Col_1 = 1 WHERE LineNum < 5 Or LineNum = 6;");
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    Press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Current(a), "4.01 Col_1");
    Press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Current(a), "6 Col_1");
}

TEST_F(SheetKeys, ABlockIsCopiedPlainAndWithHeadings) {
    auto* a = Sheet("edit", "A");
    Enter(a, 1, "Col_1", "1234");
    Enter(a, 2, "Col_1", "-5");
    At(a, 1, "CCName");
    Press(Qt::Key_Right, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(S(QApplication::clipboard()->text()), "CRC-B&F\t1234\nCRC-ME\t-5\n");
    Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(S(QApplication::clipboard()->text()),
              "Description\tExpenses per Home Office Books\nCRC-B&F\t1234\nCRC-ME\t-5\n");
}

TEST_F(SheetKeys, TheStatusLineAddsUpTheSelection) {
    auto* a = Sheet("edit", "A");
    Enter(a, 1, "Col_1", "100");
    Enter(a, 2, "Col_1", "-40");
    At(a, 1, "Col_1");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Status(a), "Sum 60   Count 2   Average 30");
}

TEST_F(SheetKeys, ALargeBlockIsAddedUpInSlices) {
    RunBatch(gDB, [] {
        gDB.Execute("DELETE FROM A6 WHERE LineNum < 100;");
        for (int line = 1; line <= 4000; ++line)
            gDB.Execute("INSERT INTO A6 (LineNum,Col_5) VALUES (?,1);",
                        {Currency(1) + Currency::FromUnits(200 * line)});
    });
    auto* a6 = Sheet("edit", "A6");
    At(a6, 1.02, "Col_5");
    Press(Qt::Key_A, Qt::ControlModifier);
    ASSERT_TRUE(WaitFor([&] { return Status(a6).find("Sum ") != std::string::npos; }));
    // 4,000 amounts of 1; the line numbers beside them are no amounts.
    EXPECT_EQ(Status(a6), "Sum 4,000   Count 4000   Average 1");
}

TEST_F(SheetKeys, WhatIsTypedIntoALockedCellDoesNotMoveTheCursor) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "CCName");
    Type("Legal");
    EXPECT_EQ(Current(a), "1 CCName");
}

TEST_F(SheetKeys, CtrlDFillsDown) {
    auto* a = Sheet("edit", "A");
    Enter(a, 5, "Col_1", "9");
    At(a, 5, "Col_1");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(Stored("A", 6, "Col_1"), "9");
    EXPECT_EQ(Stored("A", 8, "Col_1"), "9");
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(SheetKeys, CtrlFFindsInTheWindowAndEscapeLeavesTheBar) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("interest");
    Press(Qt::Key_Return);
    EXPECT_NE(Shown(a, NumOr(a->Model().Value(a->Grid().currentIndex().row(), 0)), "CCName")
                  .find("Interest"),
              std::string::npos);
    Press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &a->Grid());
    EXPECT_TRUE(a->isVisible());
}

TEST_F(SheetKeys, FindTakesAnAmountAsItStandsOnAPage) {
    RunBatch(gDB, [] { gDB.Execute("UPDATE A SET Col_1 = -481251 WHERE LineNum = 9;"); });
    auto* a = Sheet("edit", "A");
    for (const char* amount : {"481251", "481,251", "$481,251.00", "(481,251)", "-481251"}) {
        At(a, 1, "Col_1");
        Press(Qt::Key_F, Qt::ControlModifier);
        Type(amount);
        Press(Qt::Key_Return);
        EXPECT_EQ(Current(a), "9 Col_1") << amount;
        Press(Qt::Key_Escape);
    }
}

TEST_F(SheetKeys, ZoomIsForAllWindowsAndRemembered) {
    auto* a = Sheet("edit", "A");
    const int plain = a->Grid().verticalHeader()->defaultSectionSize();
    const int width = a->Grid().columnWidth(2);
    for (int i = 0; i < 4; ++i) Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(a->Grid().verticalHeader()->defaultSectionSize(), plain);
    EXPECT_GT(a->Grid().columnWidth(2), width);
    auto* a6 = Sheet("edit", "A6");
    EXPECT_DOUBLE_EQ(a6->Grid().Zoom(), a->Grid().Zoom());
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(a->Grid().columnWidth(2), width);
}

TEST_F(SheetKeys, WidthsSizeAndPlaceAreRemembered) {
    auto* a = Sheet("edit", "A");
    a->Grid().setColumnWidth(2, 222);
    a->resize(700, 321);
    a->move(40, 30);
    const int width = a->Grid().columnWidth(2);
    Click("frmEditA", "cmdClose");
    a = Sheet("edit", "A");
    EXPECT_NEAR(a->Grid().columnWidth(2), width, 1);
    EXPECT_EQ(a->size(), QSize(700, 321));
    EXPECT_EQ(a->pos(), QPoint(40, 30));
}

TEST_F(SheetKeys, LineAndNameStayInSightWhileAmountsScroll) {
    auto* bp1 = Sheet("view", "Bp1");
    bp1->resize(420, 300);
    ASSERT_GT(bp1->Form().FrozenColumns, 0);
    Press(Qt::Key_End);
    const GridPart* frozen = bp1->Grid().Frozen();
    EXPECT_TRUE(WaitFor([&] { return frozen->isVisible(); }));
    EXPECT_FALSE(frozen->isColumnHidden(0));
    const QRect cell = bp1->Grid().visualRect(bp1->Grid().currentIndex());
    EXPECT_GE(cell.left(), frozen->width() - 1);
    EXPECT_EQ(frozen->model(), bp1->Grid().model());
}

TEST_F(SheetKeys, ATextThatItsColumnMayCutShowsWholeUnderThePointer) {
    auto* s1 = Sheet("edit", "S1p1");
    At(s1, 5, "Col_5");
    const QModelIndex cell = s1->Grid().currentIndex();
    EXPECT_EQ(S(cell.data(Qt::ToolTipRole).toString()), Stored("S1p1", 5, "Col_5"));
    EXPECT_NE(Stored("S1p1", 5, "Col_5"), "");
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    EXPECT_EQ(S(a->Grid().currentIndex().data(Qt::ToolTipRole).toString()), "");
}

TEST_F(SheetKeys, ALockedCellTakesNoKeysAndSaysSo) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "CCName");
    Type("x");
    EXPECT_EQ(a->Grid().Editor(), nullptr);
    EXPECT_EQ(Status(a), "Locked cell");
    EXPECT_EQ(S(a->Grid().currentIndex().data(Qt::AccessibleTextRole).toString()),
              "Worksheet A, line 1, Description: CRC-B&F, locked");
}

TEST_F(SheetKeys, TheFrameOfTheCurrentCellStaysInSightWhileItIsKeyed) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    Type("1");
    const QWidget* editor = a->Grid().Editor();
    ASSERT_NE(editor, nullptr);
    const QRect cell = a->Grid().visualRect(a->Grid().currentIndex());
    EXPECT_EQ(editor->geometry(), cell.adjusted(2, 2, -2, -2));
}

TEST_F(SheetKeys, InANarrowWindowTheStatusLineFoldsAndIsWhole) {
    auto* a6 = Sheet("edit", "A6");
    a6->resize(500, 400);
    At(a6, 1, "Col_5");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_NE(Status(a6).find("Average"), std::string::npos);
    const auto* line = a6->findChild<QLabel*>("lblStatus");
    ASSERT_GT(line->fontMetrics().horizontalAdvance(line->text()), line->width());
    EXPECT_TRUE(WaitFor([&] { return line->height() >= line->heightForWidth(line->width()); }));
    EXPECT_GT(line->height(), line->fontMetrics().lineSpacing() * 3 / 2);
}

}  // namespace
}  // namespace zolmara::ui
