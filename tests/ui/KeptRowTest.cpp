// A row that waits to be stored: what tells of it, and where it goes when the worksheet changes
// under it.

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>

#include "SheetTest.h"
#include "core/Dialogs.h"
#include "store/session/Session.h"
#include "ui/main/OpenForms.h"

namespace zolmara::ui {
namespace {

class KeptRow : public SheetTest {
protected:
    KeptRow() {
        Start();
        Open(MakeSample("Kept.CRF"));
    }

    /// A new line of A-6 that its rules refuse: a code without an explanation.
    frmWorksheet* Refused() {
        auto* a6 = Sheet("edit", "A6");
        Button(a6, "cmdAdd")->click();
        Enter(a6, a6->Model().Line(a6->Grid().currentIndex().row()).ToDouble(), "Col_2", "Z");
        return a6;
    }

    /// Keys into a cell and stays on its row.
    frmWorksheet* Keyed(const std::string& item, double line, const std::string& field,
                        const std::string& text) {
        auto* sheet = Sheet("edit", item);
        Enter(sheet, line, field, text);
        EXPECT_GE(sheet->Model().KeyedRow(), 0) << "the row has not been left";
        return sheet;
    }

    /// What S-2's buttons do, as another program may do it while the schedule is keyed.
    static void AddComponent(double behind) {
        EXPECT_TRUE(AddFormLine(*DescribeForm(FormMode::Edit, "S2p1"), Currency(behind)).Changed);
    }
    static void DeleteComponent(double line) {
        EXPECT_TRUE(
            DeleteFormLines(*DescribeForm(FormMode::Edit, "S2p1"), Currency(line), {}).Changed);
    }
};

TEST_F(KeptRow, TheBoxOfARefusedRowStandsOverItsWindowAndTheKeysGoWhereTheUserWent) {
    auto* a = Sheet("edit", "A");
    auto* a6 = Refused();
    QWidget* owner = nullptr;
    OnBox = [&] { owner = DialogOwner(); };
    a->activateWindow();
    ASSERT_TRUE(WaitFor([&] { return !Boxes.empty(); }));
    EXPECT_EQ(Boxes[0].Title, "Error: Blank EXPLANATION Item");
    EXPECT_EQ(owner, a6) << "not the window that was gone to";
    EXPECT_TRUE(WaitFor([&] { return QApplication::focusWindow() == a->windowHandle(); }));
    EXPECT_GE(a6->Model().KeyedRow(), 0) << "it can be looked up what the row needs";
    a6->GiveUp();
}

TEST_F(KeptRow, ARefusedRowIsToldOnceAsItsWindowIsLeft) {
    auto* a = Sheet("edit", "A");
    auto* a6 = Refused();
    const double line = a6->Model().Line(a6->Model().KeyedRow()).ToDouble();
    // The end of the box gives the keys back to the worksheet that it stood over.
    AnswerRealBoxes();
    a->activateWindow();
    ASSERT_TRUE(WaitFor([&] { return !Boxes.empty() && a->isActiveWindow(); }));
    Activate(a6);
    Activate(a);
    EXPECT_EQ(Boxes.size(), 1U) << "the user may go to and fro to look something up";
    Activate(a6);
    Enter(a6, line, "Col_1", "Explained");
    EXPECT_GE(a6->Model().KeyedRow(), 0);
    Activate(a);
    EXPECT_EQ(Stored("A6", line, "Col_1"), "Explained");
    EXPECT_EQ(Boxes.size(), 1U);
}

TEST_F(KeptRow, ARefusedRowIsStoredAsItsWindowIsLeftOnceItCanBe) {
    auto* a = Sheet("edit", "A");
    auto* a6 = Refused();
    const double line = a6->Model().Line(a6->Model().KeyedRow()).ToDouble();
    Activate(a);
    ASSERT_EQ(Boxes.size(), 1U);
    gDB.Execute("UPDATE A6 SET Col_1 = 'Explained', Col_2 = 'Z' WHERE LineNum = 1;");
    Activate(a6);
    Activate(a);
    EXPECT_EQ(Stored("A6", line, "Col_2"), "Z") << "line 1 explains the code now";
    EXPECT_LT(a6->Model().KeyedRow(), 0);
    EXPECT_EQ(Boxes.size(), 1U);
}

TEST_F(KeptRow, F10HoldsARefusedRowOnceAndThenOpensTheMenus) {
    auto* a6 = Refused();
    Press(Qt::Key_F10);
    EXPECT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    Press(Qt::Key_F10);
    ASSERT_TRUE(WaitFor([] { return QApplication::activePopupWidget() != nullptr; }))
        << "the statement can be saved elsewhere";
    QApplication::activePopupWidget()->close();
    EXPECT_EQ(Boxes.size(), 1U);
    EXPECT_GE(a6->Model().KeyedRow(), 0);
    a6->GiveUp();
}

TEST_F(KeptRow, TheBoxOfARefusedRowIsSeenWhereItsWindowWasMinimized) {
    auto* a6 = Refused();
    bool minimized = true;
    OnBox = [&] { minimized = DialogOwner() != a6 || a6->isMinimized(); };
    a6->showMinimized();
    a6->CommitGrid();
    ASSERT_FALSE(Boxes.empty());
    EXPECT_FALSE(minimized);
    a6->GiveUp();
}

TEST_F(KeptRow, GoesWithItsComponentWhenALineComesAheadOfIt) {
    auto* b = Keyed("Bp1", 1.01, "CC_100", "4711");
    const std::string name = Stored("Bp1", 1.01, "Description");
    AddComponent(1);
    ASSERT_EQ(Stored("Bp1", 1.02, "Description"), name) << "it is line 1.02 now";
    EXPECT_TRUE(b->CommitGrid());
    EXPECT_EQ(Stored("Bp1", 1.02, "CC_100"), "4711");
    EXPECT_NE(Stored("Bp1", 1.01, "CC_100"), "4711") << "the new component has nothing of it";
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(KeptRow, GoesWithItsComponentWhenAnOpenWindowIsRefreshed) {
    auto* b = Keyed("Bp1", 1.01, "CC_100", "4711");
    AddComponent(1);
    b->SetGrd();
    ASSERT_GE(b->Model().KeyedRow(), 0) << "the cursor has not left it";
    EXPECT_EQ(b->Model().Line(b->Model().KeyedRow()), Currency(1.02));
    EXPECT_EQ(Current(b).substr(0, 5), "1.02 ");
    EXPECT_EQ(Shown(b, 1.02, "CC_100"), "4,711");
    EXPECT_EQ(Shown(b, 1.01, "CC_100"), "");
    EXPECT_TRUE(b->CommitGrid());
    EXPECT_EQ(Stored("Bp1", 1.02, "CC_100"), "4711");
}

TEST_F(KeptRow, IsNotWrittenToAnotherComponentWhenItsOwnIsDeleted) {
    const std::string next = Stored("Bp1", 3, "CC_100");
    const std::string name = Stored("Bp1", 3, "Description");
    auto* b = Keyed("Bp1", 2, "CC_100", "4711");
    DeleteComponent(2);
    ASSERT_EQ(Stored("Bp1", 2, "Description"), name) << "the next one has its line now";
    EXPECT_TRUE(b->CommitGrid());
    EXPECT_EQ(Stored("Bp1", 2, "CC_100"), next);
    EXPECT_LT(b->Model().KeyedRow(), 0);
    ASSERT_TRUE(WaitFor([&] { return !Boxes.empty(); }));
    EXPECT_NE(Boxes[0].Text.find("Line 2 of \"Edit Worksheet Bp1\" is no longer there."),
              std::string::npos)
        << Boxes[0].Text;
    EXPECT_NE(Boxes[0].Text.find("4711"), std::string::npos) << "what was keyed can be keyed again";
}

TEST_F(KeptRow, TheCursorStaysInItsRowWhenLinesHaveComeMeanwhile) {
    auto* b = Keyed("Bp1", 2, "CC_100", "4711");
    const std::string field = b->Model().Column(b->Grid().currentIndex().column()).Field;
    const int width = b->Grid().columnWidth(b->Form().ColumnOf("Description"));
    AddComponent(1);
    EXPECT_TRUE(b->CommitGrid());
    EXPECT_EQ(Current(b), "2 " + field) << "and not in that which has its place now";
    EXPECT_EQ(b->Grid().columnWidth(b->Form().ColumnOf("Description")), width);
}

}  // namespace
}  // namespace zolmara::ui
