// How worksheet windows open, stand beside each other, store and close.

#include <QAction>
#include <QClipboard>
#include <QMenu>
#include <QScreen>
#include <QStyle>
#include <QTableWidget>
#include <algorithm>

#include "SheetTest.h"
#include "structure/EditLines.h"
#include "support/FailingDisk.h"
#include "ui/dialogs/frmViewError.h"

namespace zolmara::ui {
namespace {

class SheetWindow : public SheetTest {
protected:
    SheetWindow() {
        Start();
        Open(MakeSample("Sample.CRF"));
        Boxes.clear();
    }
    std::size_t Windows() const { return WorksheetWindows().size(); }
};

// --- Opening -------------------------------------------------------------------------------

TEST_F(SheetWindow, OpeningTwiceBringsTheFirstForwardAlsoForSharedClasses) {
    auto* a = Sheet("edit", "A");
    auto* b1 = Sheet("edit", "B1p1");
    auto* b2 = Sheet("edit", "B1p2");
    EXPECT_NE(b1, b2);
    EXPECT_EQ(Sheet("edit", "A"), a);
    EXPECT_EQ(Sheet("EDIT", "b1p1"), b1);
    EXPECT_EQ(Windows(), 3U);
}

TEST_F(SheetWindow, EditAndViewStandTogetherToldApartByTheirCaptions) {
    auto* edit = Sheet("edit", "A6");
    auto* view = Sheet("view", "A6");
    EXPECT_NE(edit, view);
    EXPECT_EQ(FindOpenForm("edit", "A6"), edit);
    EXPECT_EQ(FindOpenForm("view", "A6"), view);
    EXPECT_EQ(FindOpenForm("view", "A8"), nullptr);
    EXPECT_TRUE(FormIsOpen("frmEditA6"));
    EXPECT_TRUE(FormIsOpen("FRMVIEWA6"));
    EXPECT_FALSE(FormIsOpen("frmViewA8"));
}

TEST_F(SheetWindow, ASharedWindowIsFoundByTheItemOfItsCaption) {
    Sheet("view", "Cp2");
    EXPECT_TRUE(FormIsOpen("frmViewCp2"));
    EXPECT_FALSE(FormIsOpen("frmViewCp3"));
}

TEST_F(SheetWindow, WhatHasNoEditorOpensItsView) {
    OpenWorksheet("edit", "Cp1");
    EXPECT_NE(FindOpenForm("view", "Cp1"), nullptr);
    OpenWorksheet("edit", "Cp1");
    EXPECT_EQ(Windows(), 1U);
}

TEST_F(SheetWindow, ANewWindowIsAsWideAsItsColumnsAndWithinTheScreen) {
    for (const char* item : {"A", "A6", "Bp1", "S2p1"}) {
        auto* window = Sheet("edit", item);
        const QRect screen = window->screen()->availableGeometry();
        EXPECT_TRUE(screen.contains(QRect(window->pos(), window->size()))) << item;
        EXPECT_GE(window->width(), std::min(window->Grid().ColumnsWidth(), screen.width() - 10))
            << item;
        const int title = window->style()->pixelMetric(QStyle::PM_TitleBarHeight);
        EXPECT_LE(window->y() + title + window->height(), screen.height()) << item;
    }
}

TEST_F(SheetWindow, AWindowThatStandsBeyondTheScreenComesBack) {
    auto* a = Sheet("edit", "A");
    a->move(-50, -20);
    Sheet("edit", "A");
    EXPECT_EQ(a->pos(), QPoint(0, 0));
    a->move(static_cast<int>(a->screen()->availableGeometry().width() * 0.9), 10);
    Sheet("edit", "A");
    EXPECT_EQ(a->pos(), QPoint(0, 10));
}

TEST_F(SheetWindow, AWindowThatWasLeftOnALargerScreenIsWhollyInSight) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    auto* a = Sheet("edit", "A");
    a->resize(screen.width() / 2, screen.height() / 2);
    a->move(screen.center() + QPoint(60, 60));
    ASSERT_TRUE(a->close());
    a = Sheet("edit", "A");
    EXPECT_LE(a->frameGeometry().right(), screen.right());
    EXPECT_LE(a->frameGeometry().bottom(), screen.bottom());
}

// --- Next and Previous ---------------------------------------------------------------------

TEST_F(SheetWindow, NextAndPreviousWalkTheWorksheetsByName) {
    auto* a = Sheet("edit", "A");
    EXPECT_EQ(S(Tooltip(a, "cmdNext")), "Open A-6 For Edit");
    EXPECT_FALSE(Button(a, "cmdPrevious")->isEnabled());
    Button(a, "cmdNext")->click();
    EXPECT_NE(FindOpenForm("edit", "A6"), nullptr);
    EXPECT_TRUE(a->isVisible());
    auto* last = Sheet("view", "S2p3");
    EXPECT_FALSE(Button(last, "cmdNext")->isEnabled());
}

TEST_F(SheetWindow, NextFromB1Part3JumpsOverWhatHasNoEditor) {
    auto* b = Sheet("edit", "B1p3");
    EXPECT_EQ(S(Tooltip(b, "cmdNext")), "Open C-1  Part-1 For Edit");
    auto* view = Sheet("view", "B1p3");
    EXPECT_EQ(S(Tooltip(view, "cmdNext")), "Open C  Part-1 For View");
}

// --- Storing and following -----------------------------------------------------------------

TEST_F(SheetWindow, AViewFollowsEachStoredRowAndTheSubmissionFalls) {
    auto* view = Sheet("view", "A6");
    auto* edit = Sheet("edit", "A6");
    host->EnableMenu("mnuReportSubmit", true);
    Enter(edit, 1, "Col_5", "4711");
    EXPECT_NE(Stored("A6", 1, "Col_5"), "4711") << "the row is still being keyed";
    EXPECT_TRUE(Enabled("mnuReportSubmit"));
    Press(Qt::Key_Home, Qt::ControlModifier);
    Press(Qt::Key_Down);
    EXPECT_EQ(Stored("A6", 1, "Col_5"), "4711");
    EXPECT_EQ(Shown(view, 1, "Col_5"), "4,711");
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
}

TEST_F(SheetWindow, LeavingTheWindowStoresTheRow) {
    auto* other = Sheet("view", "A");
    auto* edit = Sheet("edit", "A6");
    Enter(edit, 1, "Col_5", "815");
    Activate(other);
    EXPECT_EQ(Stored("A6", 1, "Col_5"), "815");
}

TEST_F(SheetWindow, ClosingStoresWhatIsBeingTyped) {
    auto* edit = Sheet("edit", "A6");
    At(edit, 1, "Col_5");
    Type("816");
    edit->close();
    EXPECT_EQ(Stored("A6", 1, "Col_5"), "816");
    EXPECT_EQ(Windows(), 0U);
}

TEST_F(SheetWindow, TwoEditorsOfDependentWorksheetsFollowEachOther) {
    auto* b = Sheet("edit", "Bp1");
    auto* s2 = Sheet("edit", "S2p1");
    At(s2, 1, "Col_1");
    Type("Renamed");
    ASSERT_NE(s2->Grid().Editor(), nullptr);
    EXPECT_EQ(S(qobject_cast<QLineEdit*>(s2->Grid().Editor())->text()), "Renamed");
    Type(" Hospital");
    Press(Qt::Key_Return);
    EXPECT_EQ(Current(s2), "1 Col_2");
    EXPECT_EQ(s2->Model().KeyedRow(), 0);
    Press(Qt::Key_Down);
    EXPECT_EQ(Shown(b, 1, "Description"), "Renamed Hospital");
    EXPECT_EQ(Stored("E1p1", 1, "Description"), "Renamed Hospital");
}

TEST_F(SheetWindow, ATableThatChangesShapeUnderAWindow) {
    auto* view = Sheet("view", "B1p1");
    const std::size_t columns = view->Form().Columns.size();
    At(view, 1, "CC_1200");
    ASSERT_TRUE(AddLine("CostCenters", Currency(12.01)));
    host->RefreshOpenForms("");
    EXPECT_EQ(view->Form().Columns.size(), columns + 1);
    EXPECT_GE(view->Form().ColumnOf("CC_1201"), 0);
    EXPECT_EQ(Current(view), "1 CC_1200");
    gDB.DeleteTable("B1p1");
    host->RefreshOpenForms("");
    view->Grid().viewport()->repaint();
    EXPECT_TRUE(view->isVisible());
    view->close();
}

TEST_F(SheetWindow, RecalculateEndsInTheViewWithFreshFigures) {
    auto* edit = Sheet("edit", "A");
    At(edit, 1, "Col_1");
    Type("1000");
    Button(edit, "cmdRecalculate")->click();
    EXPECT_EQ(Done(), "Calculated");
    EXPECT_EQ(Stored("A", 1, "Col_1"), "1000");
    auto* view = dynamic_cast<frmWorksheet*>(FindOpenForm("view", "A"));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(Shown(view, 1, "Col_1"), "1,000");
    EXPECT_TRUE(edit->isEnabled());
}

TEST_F(SheetWindow, PrintOfAViewSendsTheWorksheet) {
    auto* view = Sheet("view", "A8");
    Button(view, "cmdPrint")->click();
    EXPECT_EQ(Jobs.size(), 1U);
}

// --- Refusals ------------------------------------------------------------------------------

TEST_F(SheetWindow, ARefusedCellKeepsItsValueAndTheCursor) {
    auto* a = Sheet("edit", "A");
    const std::string before = Stored("A", 1, "Col_1");
    Enter(a, 1, "Col_1", "abc");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Entry Error");
    EXPECT_EQ(Boxes[0].Style, kCritical);
    EXPECT_EQ(Current(a), "1 Col_1");
    EXPECT_EQ(a->Model().KeyedRow(), -1);
    Press(Qt::Key_Down);
    EXPECT_EQ(Stored("A", 1, "Col_1"), before);
}

TEST_F(SheetWindow, ARoundedEntryWarnsAndIsStoredRounded) {
    auto* a = Sheet("edit", "A");
    Enter(a, 1, "Col_1", "-12.5");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Entry Warning");
    EXPECT_EQ(Boxes[0].Style, kInformation);
    EXPECT_EQ(Stored("A", 1, "Col_1"), "-13");
}

TEST_F(SheetWindow, ARefusedRowStaysKeyedUnderTheCursorAndHoldsTheWindow) {
    auto* a6 = Sheet("edit", "A6");
    Button(a6, "cmdAdd")->click();
    const double line = a6->Model().Line(a6->Grid().currentIndex().row()).ToDouble();
    Enter(a6, line, "Col_2", "Z");
    Press(Qt::Key_Up);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Error: Blank EXPLANATION Item");
    EXPECT_GE(a6->Model().KeyedRow(), 0);
    EXPECT_TRUE(WaitFor([&] { return a6->Grid().currentIndex().row() == a6->Model().KeyedRow(); }));
    EXPECT_FALSE(a6->close());
    EXPECT_TRUE(a6->isVisible());
    EXPECT_EQ(Boxes.size(), 2U);
    Press(Qt::Key_Escape);
    EXPECT_TRUE(a6->close());
}

TEST_F(SheetWindow, ABoxThatTakesTheKeysLeavesTheRowAndItsCellAlone) {
    AnswerRealBoxes();
    auto* a7 = Sheet("edit", "A7p1");
    const std::string before = Stored("A7p1", 1, "Col_1");
    At(a7, 1, "Col_1");
    Type("777");
    Press(Qt::Key_Tab);
    ASSERT_EQ(Current(a7), "1 Col_2");
    for (const char* entry : {"abc", "1.5"}) {
        Boxes.clear();
        Activate(a7);
        At(a7, 1, "Col_2");
        Type(entry);
        Press(Qt::Key_Return);
        ASSERT_EQ(Boxes.size(), 1U) << entry;
        EXPECT_EQ(Stored("A7p1", 1, "Col_1"), before) << "the row has not been left";
        EXPECT_EQ(a7->Model().KeyedRow(), 0);
    }
    EXPECT_EQ(Shown(a7, 1, "Col_1"), "777");
    EXPECT_EQ(Shown(a7, 1, "Col_2"), "2");
    Activate(a7);
    Press(Qt::Key_Down);
    EXPECT_EQ(Stored("A7p1", 1, "Col_1"), "777");
    EXPECT_EQ(Stored("A7p1", 1, "Col_2"), "2");
}

TEST_F(SheetWindow, ARowThatIsGivenUpIsTakenBackAndTheNextOneIsStored) {
    auto* a = Sheet("edit", "A");
    Enter(a, 8, "Col_1", "111");
    ASSERT_TRUE(a->CommitGrid());
    auto* a6 = Sheet("edit", "A6");
    Enter(a6, 1, "Col_1", " ");
    Answers = {kOk, kYes};
    main->findChild<QAction*>("tlsUndo")->trigger();
    EXPECT_NE(Stored("A", 8, "Col_1"), "111") << "taken back";
    EXPECT_EQ(a6->Model().KeyedRow(), -1);
    Activate(a6);
    Enter(a6, 1, "Col_1", "Another explanation");
    Boxes.clear();
    EXPECT_TRUE(a6->close());
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
    EXPECT_EQ(Stored("A6", 1, "Col_1"), "Another explanation");
}

TEST_F(SheetWindow, CloseAllFormsTellsOfAWindowThatWouldNotClose) {
    auto* a6 = Sheet("edit", "A6");
    Button(a6, "cmdAdd")->click();
    const double line = a6->Model().Line(a6->Grid().currentIndex().row()).ToDouble();
    Enter(a6, line, "Col_2", "Z");
    Answers = {kOk};
    EXPECT_EQ(host->CloseAllForms(false), 2);
    EXPECT_EQ(Boxes.back().Text, "Unable to close forms: frmEditA6");
}

TEST_F(SheetWindow, LeavingTheProgramStoresOpenRowsFirst) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    Type("31");
    const std::string path = gCRFPath;
    main->close();
    EXPECT_EQ(Ended, 1);
    Database crf = DBEngine::OpenDatabase(path);
    EXPECT_EQ(Text(crf.Scalar("SELECT Col_1 FROM A WHERE LineNum = 1;")), "31");
}

TEST_F(SheetWindow, ARefusedRowAsksBeforeTheProgramEnds) {
    auto* a6 = Sheet("edit", "A6");
    Button(a6, "cmdAdd")->click();
    const double line = a6->Model().Line(a6->Grid().currentIndex().row()).ToDouble();
    Enter(a6, line, "Col_2", "Z");
    Answers = {kOk, kNo};
    EXPECT_FALSE(main->close());
    EXPECT_EQ(Ended, 0);
    EXPECT_TRUE(CrfIsOpen());
    Answers = {kOk, kYes};
    EXPECT_TRUE(main->close());
    EXPECT_EQ(Ended, 1);
}

TEST_F(SheetWindow, AFileThatAnotherProgramHoldsSaysSoAndTheRowStaysKeyed) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    Type("99");
    Database other = DBEngine::OpenDatabase(gCRFPath);
    RunBatch(other, [&] {
        other.Execute("UPDATE Sp1 SET Col_1 = '7' WHERE LineNum = 2;");
        Press(Qt::Key_Return);
        EXPECT_GE(Boxes.size(), 1U);
        EXPECT_GE(a->Model().KeyedRow(), 0);
        EXPECT_EQ(Shown(a, 1, "Col_1"), "99");
    });
    At(a, 1, "Col_1");
    Press(Qt::Key_Down);
    EXPECT_EQ(Stored("A", 1, "Col_1"), "99");
}

TEST_F(SheetWindow, ADiskThatTakesNoMoreSaysSoAndTheRowStaysKeyed) {
    test::FailingDisk disk;
    Trigger("mnuReportClose");
    Open(MakeSample("Other.CRF"));
    auto* a = Sheet("edit", "A");
    for (const int code : {SQLITE_FULL, SQLITE_READONLY, SQLITE_IOERR_WRITE}) {
        const std::string before = Stored("A", 1, "Col_1");
        const std::string keyed = std::to_string(1000 + code);
        At(a, 1, "Col_1");
        Boxes.clear();
        disk.FailAt(1, code);
        Type(keyed);
        Press(Qt::Key_Return);
        ASSERT_TRUE(disk.Failed()) << code;
        ASSERT_EQ(Boxes.size(), 1U) << code;
        EXPECT_TRUE(Boxes[0].Text.starts_with("Line 1 of A was not saved.  ")) << Boxes[0].Text;
        EXPECT_EQ(S(a->Model().Plain(0, a->Form().ColumnOf("Col_1"))), keyed);
        EXPECT_EQ(a->Model().KeyedRow(), 0);
        EXPECT_TRUE(WaitFor([&] { return a->Grid().currentIndex().row() == 0; }));
        EXPECT_NE(Status(a).find("Row not stored yet"), std::string::npos);
        EXPECT_EQ(Stored("A", 1, "Col_1"), before);
        disk.Work();
        Press(Qt::Key_Down);
        EXPECT_EQ(Stored("A", 1, "Col_1"), keyed);
    }
    EXPECT_TRUE(a->close());
    Trigger("mnuReportClose");
    EXPECT_FALSE(CrfIsOpen()) << "the disk goes before the test does";
}

// --- The desktop's session ends ------------------------------------------------------------

TEST_F(SheetWindow, TheEndOfTheSessionStoresOpenRows) {
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    Type("47");
    EXPECT_TRUE(SessionMayEnd(true));
    EXPECT_EQ(Stored("A", 1, "Col_1"), "47");
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(SheetWindow, ARefusedRowAsksBeforeTheSessionEnds) {
    auto* a6 = Sheet("edit", "A6");
    Button(a6, "cmdAdd")->click();
    Enter(a6, a6->Model().Line(a6->Grid().currentIndex().row()).ToDouble(), "Col_2", "Z");
    Answers = {kOk, kNo};
    EXPECT_FALSE(SessionMayEnd(true));
    EXPECT_GE(a6->Model().KeyedRow(), 0);
    Answers = {kOk, kYes};
    EXPECT_TRUE(SessionMayEnd(true));
    EXPECT_EQ(Boxes.back().Text,
              "A row of \"Edit Worksheet A6\" has not been stored.  Leave it and lose what was "
              "keyed?");
}

TEST_F(SheetWindow, ASessionThatMayNotAskEndsAndStoresWhatItCan) {
    auto* a6 = Sheet("edit", "A6");
    Button(a6, "cmdAdd")->click();
    Enter(a6, a6->Model().Line(a6->Grid().currentIndex().row()).ToDouble(), "Col_2", "Z");
    auto* a = Sheet("edit", "A");
    At(a, 1, "Col_1");
    Type("48");
    Boxes.clear();
    EXPECT_TRUE(SessionMayEnd(false));
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(Stored("A", 1, "Col_1"), "48");
    EXPECT_GE(a6->Model().KeyedRow(), 0);
}

// --- Lines ---------------------------------------------------------------------------------

TEST_F(SheetWindow, AddMakesTheNewLineCurrentAndDeleteTakesIt) {
    auto* a8 = Sheet("edit", "A8");
    const int rows = a8->Model().rowCount();
    a8->Grid().GoTo(a8->Model().index(rows - 1, 1));
    Answers = {kYes};
    Button(a8, "cmdAdd")->click();
    EXPECT_EQ(a8->Model().rowCount(), rows + 1);
    EXPECT_EQ(a8->Grid().currentIndex().row(), rows);
    Button(a8, "cmdDelete")->click();
    EXPECT_EQ(a8->Model().rowCount(), rows);
    EXPECT_EQ(Current(a8), "20 Col_1") << "the cursor stays in a column that can be keyed";
}

TEST_F(SheetWindow, DeleteOnA6WantsASelectedLine) {
    auto* a6 = Sheet("edit", "A6");
    At(a6, 1, "Col_1");
    Button(a6, "cmdDelete")->click();
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Error: No line Selected to Delete");
    const int rows = a6->Model().rowCount();
    a6->Grid().selectRow(0);
    Button(a6, "cmdDelete")->click();
    EXPECT_EQ(a6->Model().rowCount(), rows - 1);
}

TEST_F(SheetWindow, ASchedulesLinesComeFromS2) {
    auto* b = Sheet("edit", "B1p2");
    Button(b, "cmdAdd")->click();
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text, "Adding/Deleting lines is done from S2p2");
    EXPECT_NE(FindOpenForm("edit", "S2p2"), nullptr);
}

TEST_F(SheetWindow, CostCentersAreEditedWithNoOtherWorksheetOpen) {
    Sheet("edit", "A6");
    Answers = {kCancel};
    OpenWorksheet("edit", "CCs");
    EXPECT_EQ(FindOpenForm("edit", "CCs"), nullptr);
    Answers = {kOk};
    OpenWorksheet("edit", "CCs");
    EXPECT_NE(FindOpenForm("edit", "CCs"), nullptr);
    EXPECT_EQ(FindOpenForm("edit", "A6"), nullptr);
    EXPECT_FALSE(Enabled("mnuEditOpen"));
    EXPECT_FALSE(Enabled("mnuViewOpen"));
}

TEST_F(SheetWindow, AFormIsBlockedWhileALineIsAdded) {
    auto* ccs = Sheet("edit", "CCs");
    At(ccs, 30, "CCName");
    bool enabled = true;
    OnBox = [&] { enabled = ccs->isEnabled(); };
    Answers = {kNo};
    Button(ccs, "cmdAdd")->click();
    OnBox = {};
    EXPECT_FALSE(enabled) << "while the question stood";
    EXPECT_TRUE(ccs->isEnabled());
    EXPECT_EQ(Current(ccs), "30.01 CCName");
    EXPECT_EQ(ccs->focusWidget(), &ccs->Grid());
    Type("Contracting");
    Press(Qt::Key_Return);
    ASSERT_TRUE(ccs->CommitGrid());
    EXPECT_EQ(Stored("CostCenters", 30.01, "CCName"), "Contracting") << "keys go on in the grid";
}

TEST_F(SheetWindow, ACostCenterIsAddedNamedAndDeletedInItsWindow) {
    auto* ccs = Sheet("edit", "CCs");
    At(ccs, 12, "CCName");
    Button(ccs, "cmdAdd")->click();
    EXPECT_EQ(Current(ccs), "12.01 CCName");
    EXPECT_FALSE(ccs->close());
    EXPECT_EQ(Boxes.back().Text, "All Cost Center names must be completed");
    Enter(ccs, 12.01, "CCName", "Legal");
    Press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(Stored("CostCenters", 12.01, "CCName"), "Legal");
    EXPECT_EQ(Stored("A", 12.01, "CCName"), "Legal");
    At(ccs, 12.01, "CCName");
    Button(ccs, "cmdDelete")->click();
    EXPECT_EQ(Stored("CostCenters", 12.01, "CCName"), "");
    EXPECT_TRUE(ccs->close());
}

TEST_F(SheetWindow, SpWithAnswersThatDisagreeStaysOpen) {
    auto* sp1 = Sheet("edit", "Sp1");
    Enter(sp1, 1, "Col_1", "y");
    Press(Qt::Key_Down);
    EXPECT_EQ(Stored("Sp1", 1, "Col_1"), "Yes");
    EXPECT_FALSE(sp1->close());
    EXPECT_EQ(Boxes.back().Text,
              "If line 1, is Y (amended cost report), then line 2, must be greater than zero, and "
              "vice versa.");
    Enter(sp1, 2, "Col_1", "3");
    EXPECT_TRUE(sp1->close());
}

// --- Lists ---------------------------------------------------------------------------------

TEST_F(SheetWindow, AListIsOpenedByKeyAndItsEntryIsKeyed) {
    auto* s2 = Sheet("edit", "S2p1");
    At(s2, 1, "Col_3");
    Press(Qt::Key_Down, Qt::AltModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(S(menu->objectName()), "ButtonListOM");
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(Shown(s2, 1, "Col_3"), "Managed");
    Press(Qt::Key_Down);
    EXPECT_EQ(Stored("S2p1", 1, "Col_3"), "Managed");
}

// Locked for typing: what would begin an entry opens the list, and nothing is typed.
TEST_F(SheetWindow, ABasisOfTheCapitalCentersIsPickedAndNotTyped) {
    auto* ccs = Sheet("edit", "CCs");
    At(ccs, 1, "StatLabel1");
    Type("x");
    EXPECT_EQ(ccs->Grid().Editor(), nullptr);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(S(menu->objectName()), "ButtonListCodes");
    QStringList entries;
    for (const QAction* entry : menu->actions()) entries << entry->text();
    EXPECT_EQ(S(entries.join("|")), "1 - Square Feet|2 - Dollar Value|3 - Other");
    menu->setActiveAction(menu->actions().back());
    QTest::keyClick(menu, Qt::Key_Return);
    Press(Qt::Key_Down);
    EXPECT_EQ(Stored("CostCenters", 1, "StatLabel1"), "Other");
    EXPECT_EQ(Stored("CostCenters", 1, "StatLabel2"), "");
    EXPECT_EQ(Stored("CostCenters", 1, "StatCode"), "3");
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
}

TEST_F(SheetWindow, AListIsOpenedByAClickOnItsButton) {
    auto* s2 = Sheet("edit", "S2p1");
    At(s2, 1, "Col_8");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(s2, 120'000));
    const QRect cell = s2->Grid().visualRect(s2->Grid().currentIndex());
    QTest::mouseClick(s2->Grid().viewport(), Qt::LeftButton, {},
                      QPoint(cell.right() - 6, cell.center().y()));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(S(menu->objectName()), "ButtonListYN");
    menu->close();
}

TEST_F(SheetWindow, ClosingTheCrfClosesItsWorksheetsFirst) {
    Sheet("edit", "A");
    Sheet("view", "Cp1");
    Answers = {kOk};
    Trigger("mnuReportClose");
    EXPECT_EQ(BoxTexts().size(), 1u) << "the question whether they may close";
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(Windows(), 0u);
}

// --- Findings ------------------------------------------------------------------------------

TEST_F(SheetWindow, F8WalksTheFindings) {
    Trigger("mnuReportCalculate");
    Trigger("mnuViewCloseAll");
    gDB.Execute("DELETE FROM Error;");
    for (const char* message : {"Worksheet A-8: line 2 column 3 must", "Nothing here",
                                "Worksheet A-6: line 1 column 5 must"})
        gDB.Execute(
            "INSERT INTO Error ([Level], Code, Message) VALUES ('Potential Error', '1', ?);",
            {message});
    Trigger("mnuReportUtilitiesLog");
    auto* findings = dynamic_cast<frmViewError*>(FindForm("frmViewError"));
    ASSERT_NE(findings, nullptr);
    findings->Select(0);
    emit findings->findChild<QTableWidget*>("grd")->itemActivated(
        findings->findChild<QTableWidget*>("grd")->item(0, 0));
    auto* a8 = dynamic_cast<frmWorksheet*>(FindOpenForm("edit", "A8"));
    ASSERT_NE(a8, nullptr);
    EXPECT_EQ(Current(a8), "2 Col_3");
    Activate(a8);
    Press(Qt::Key_F8);
    auto* a6 = dynamic_cast<frmWorksheet*>(FindOpenForm("edit", "A6"));
    ASSERT_NE(a6, nullptr);
    EXPECT_EQ(Current(a6), "1 Col_5");
    // A renamed component refreshes every window; the list stays at the finding in hand.
    EXPECT_EQ(findings->Selected(), 2);
    host->RefreshOpenForms("");
    EXPECT_EQ(findings->Selected(), 2);
    gDB.Execute("DELETE FROM Error WHERE Message = 'Nothing here';");
    host->RefreshOpenForms("");
    EXPECT_EQ(findings->Selected(), 0) << "it is no longer in its place";
}

TEST_F(SheetWindow, TheLastEntriesAreBroughtForwardWhereTheyAreOpen) {
    Trigger("mnuReportCalculate");
    Trigger("mnuReportUtilitiesLog");
    QWidget* const findings = FindForm("frmViewError");
    ASSERT_NE(findings, nullptr);
    findings->showMinimized();
    Trigger("mnuReportUtilitiesLog");
    EXPECT_FALSE(findings->isMinimized());
    EXPECT_EQ(FindForm("frmViewError"), findings);
}

}  // namespace
}  // namespace zolmara::ui
